# What `cmake --install` puts where, in the components Runtime, Development and Documentation;
# host/Install.cmake adds kesview. Nothing installed names the folders of source and build.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS KesVizCore EXPORT KesVizCoreTargets
    RUNTIME COMPONENT Runtime
    LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE COMPONENT Development
    FILE_SET HEADERS COMPONENT Development)

# find_package(KesVizCore)
set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/KesVizCore)
configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/KesVizCoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KesVizCoreConfig.cmake
    INSTALL_DESTINATION ${packageFolder}
    NO_SET_AND_CHECK_MACRO)
# Before 1.0 each minor version may break hosts.
set(compatibleVersions SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(compatibleVersions SameMinorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KesVizCoreConfigVersion.cmake
    COMPATIBILITY ${compatibleVersions})
install(EXPORT KesVizCoreTargets
    NAMESPACE KesVizCore:: DESTINATION ${packageFolder} COMPONENT Development)
install(
    FILES
        ${PROJECT_BINARY_DIR}/KesVizCoreConfig.cmake
        ${PROJECT_BINARY_DIR}/KesVizCoreConfigVersion.cmake
    DESTINATION ${packageFolder} COMPONENT Development)

# kesvizcore_seen_from_prefix(out folder): a folder below the prefix by way of it, so that the
# tree may be moved; any other as it is.
function(kesvizcore_seen_from_prefix out folder)
    cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX "${folder}" NORMALIZE below)
    if(below)
        file(RELATIVE_PATH way "${CMAKE_INSTALL_PREFIX}" "${folder}")
        set(${out} "\${prefix}/${way}" PARENT_SCOPE)
    else()
        set(${out} "${folder}" PARENT_SCOPE)
    endif()
endfunction()

# pkg-config KesVizCore
kesvizcore_seen_from_prefix(pcLibraryFolder "${CMAKE_INSTALL_FULL_LIBDIR}")
kesvizcore_seen_from_prefix(pcIncludeFolder "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
set(pcPrefix "${CMAKE_INSTALL_PREFIX}")
if(pcLibraryFolder MATCHES "^\\\${prefix}")
    file(RELATIVE_PATH wayToPrefix
        "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
    string(REGEX REPLACE "/$" "" wayToPrefix "${wayToPrefix}")
    set(pcPrefix "\${pcfiledir}/${wayToPrefix}")
endif()
set(pcDefinitions)
set(pcPrivateLibraries)
if(NOT BUILD_SHARED_LIBS)
    set(pcDefinitions " -DKESVIZCORE_STATIC")
    list(TRANSFORM CMAKE_CXX_IMPLICIT_LINK_LIBRARIES PREPEND -l OUTPUT_VARIABLE implicitLibraries)
    list(FILTER implicitLibraries INCLUDE REGEX "^-l(stdc\\+\\+|c\\+\\+|m)$")
    list(JOIN implicitLibraries " " pcPrivateLibraries)
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/KesVizCore.pc.in ${PROJECT_BINARY_DIR}/KesVizCore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/KesVizCore.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

# Documentation to read
install(FILES README.md CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation)
install(DIRECTORY docs
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg")
