# The Debian packages, made by `cpack -G DEB` of a build that was configured with
# KESVIZCORE_DEBIAN_PACKAGES; scripts/package does both. They are the installed components:
#
#   libkesvizcore<major of the soname>   Runtime
#   libkesvizcore-dev                    Development
#   libkesvizcore-doc                    Documentation
#   kesview                              kesview, where it is built

set(release 1)
set(version ${PROJECT_VERSION}-${release})
get_target_property(soversion KesVizCore SOVERSION)
set(packageOfRuntime libkesvizcore${soversion})
set(packageOfDevelopment libkesvizcore-dev)
set(packageOfDocumentation libkesvizcore-doc)
set(packageOfkesview kesview)

set(CPACK_COMPONENTS_ALL Runtime Development Documentation)
if(KESVIZCORE_BUILD_HOST)
    list(APPEND CPACK_COMPONENTS_ALL kesview)
endif()

# What stands in /usr/share/doc of every package. The changes are those of the project; what
# Debian wants to know of the packaging itself says no more than that.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(packagingFolder ${PROJECT_BINARY_DIR}/packaging)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${packagingFolder}/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${packagingFolder}/changelog COPYONLY)
execute_process(
    COMMAND gzip -9nf ${packagingFolder}/changelog.Debian ${packagingFolder}/changelog
    COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    install(
        FILES
            packaging/copyright
            ${packagingFolder}/changelog.Debian.gz
            ${packagingFolder}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${packageOf${component}}
        COMPONENT ${component})
    string(TOUPPER ${component} COMPONENT)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${packageOf${component}})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libkesvizcore)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # the first line of each description below
set(CPACK_PACKAGE_CONTACT "KesVizCore developers")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE kesvizcore)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# Before 1.0 the next version may break what was built with this one, under the same file name.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The trigger updates the loader's cache. CPack would add scripts that do so again, were it not
# told of others, which do not exist; it warns of them and goes on.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    "${CMAKE_CURRENT_LIST_DIR}/triggers;none/postinst;none/postrm")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "visualization core for mechanical CAD data
Keeps what a CAD viewer shows: scenes built by nested calls, a scene graph
addressed by paths, a data model of tessellated geometry, views and PMI, and
identifiers that lead from a picked pixel to a face of the model and back.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${packageOfRuntime} (= ${version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS ${packageOfDocumentation})
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "visualization core for mechanical CAD data: headers
Headers of KesVizCore, and what CMake and pkg-config need to find it.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION "visualization core for mechanical CAD data: documentation
The guide to writing a host for KesVizCore, its data model and its PMI, and
the manual of kesview.")

# The library of the same release. What is no library that kesview links: the driver by which it
# draws without a display, and fonts that have the signs of PMI.
set(CPACK_DEBIAN_KESVIEW_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_KESVIEW_PACKAGE_DEPENDS
    "${packageOfRuntime} (= ${version}), libegl-mesa0, libgl1-mesa-dri, fonts-osifont, fonts-symbola")
set(CPACK_DEBIAN_KESVIEW_DESCRIPTION "CAD files described and drawn on the command line
Reads STEP, IGES, BREP and STL files, says what they hold, draws them without
a display, tells what a pixel shows, and shows the PMI.")

include(CPack)
