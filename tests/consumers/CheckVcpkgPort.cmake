# Runs the port's portfile with stand-ins for what vcpkg brings: what it configures is configured,
# installing and the fixing of files are noted.
#
#   cmake -DSOURCE=... -DCOMPILER=... -DFOLDER=... -P CheckVcpkgPort.cmake
file(REMOVE_RECURSE ${FOLDER})
set(PORT kesvizcore)
set(CURRENT_PORT_DIR ${SOURCE}/packaging/vcpkg)
set(CURRENT_PACKAGES_DIR ${FOLDER}/packages)
set(calls)

function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
    execute_process(
        COMMAND ${CMAKE_COMMAND} -G Ninja -S ${arg_SOURCE_PATH} -B ${FOLDER}/build
            -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_INSTALL_PREFIX=${CURRENT_PACKAGES_DIR}
            -DBUILD_SHARED_LIBS=OFF ${arg_OPTIONS}
        OUTPUT_QUIET ERROR_VARIABLE warnings COMMAND_ERROR_IS_FATAL ANY)
    if(NOT warnings STREQUAL "")
        message(FATAL_ERROR "Configuring warns:\n${warnings}")
    endif()
endfunction()

function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
    if(arg_UNPARSED_ARGUMENTS OR NOT arg_PACKAGE_NAME STREQUAL "KesVizCore")
        message(FATAL_ERROR "vcpkg_cmake_config_fixup(${ARGN})")
    endif()
    file(READ ${FOLDER}/build/cmake_install.cmake rules)
    string(FIND "${rules}" "/${arg_CONFIG_PATH}\"" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "Nothing is installed in ${arg_CONFIG_PATH}.")
    endif()
endfunction()

foreach(name vcpkg_cmake_install vcpkg_copy_pdbs vcpkg_fixup_pkgconfig)
    cmake_language(EVAL CODE "
        function(${name})
            list(APPEND calls ${name})
            set(calls \${calls} PARENT_SCOPE)
        endfunction()")
endforeach()

include(${CURRENT_PORT_DIR}/portfile.cmake)

if(NOT calls STREQUAL "vcpkg_cmake_install;vcpkg_copy_pdbs;vcpkg_fixup_pkgconfig")
    message(FATAL_ERROR "The portfile calls ${calls}")
endif()
foreach(file copyright usage)
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/share/${PORT}/${file})
        message(FATAL_ERROR "The port installs no ${file}.")
    endif()
endforeach()
