# KesVizCore.pc names the right folders wherever the library's are: below the prefix, given
# relative to it or absolute, they move with the tree; elsewhere they are named as they are.
#
#   cmake -DSOURCE=... -DCOMPILER=... -DFOLDER=... -P CheckPkgConfigFolders.cmake
file(REMOVE_RECURSE ${FOLDER})

# check(libraryFolder installedTo expectedLibraries expectedHeaders): the file that is made for the
# first, put into the second, leads to the others.
function(check libraryFolder installedTo expectedLibraries expectedHeaders)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE} -B ${FOLDER}/build
            -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_INSTALL_PREFIX=${FOLDER}/prefix
            -DCMAKE_INSTALL_LIBDIR=${libraryFolder}
            -DKESVIZCORE_BUILD_TESTS=OFF -DKESVIZCORE_BUILD_EXAMPLES=OFF
            -DKESVIZCORE_BUILD_BENCHMARKS=OFF -DKESVIZCORE_BUILD_HOST=OFF
            -DKESVIZCORE_BUILD_DOCS=OFF
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${FOLDER}/build/KesVizCore.pc DESTINATION ${installedTo}/pkgconfig)
    file(MAKE_DIRECTORY ${expectedLibraries} ${expectedHeaders})
    set(ENV{PKG_CONFIG_PATH} ${installedTo}/pkgconfig)
    foreach(question libdir includedir)
        execute_process(COMMAND pkg-config --variable=${question} KesVizCore
            OUTPUT_VARIABLE ${question} OUTPUT_STRIP_TRAILING_WHITESPACE
            COMMAND_ERROR_IS_FATAL ANY)
        file(REAL_PATH ${${question}} ${question})
    endforeach()
    if(NOT libdir STREQUAL expectedLibraries OR NOT includedir STREQUAL expectedHeaders)
        message(FATAL_ERROR "For ${libraryFolder} the folders are ${libdir} and ${includedir}.")
    endif()
endfunction()

set(prefix ${FOLDER}/prefix)
set(moved ${FOLDER}/moved)
set(apart ${FOLDER}/apart)
check(lib ${prefix}/lib ${prefix}/lib ${prefix}/include)
check(lib ${moved}/lib ${moved}/lib ${moved}/include)
check(${prefix}/deep/lib ${moved}/deep/lib ${moved}/deep/lib ${moved}/include)
check(${apart}/lib ${apart}/lib ${apart}/lib ${prefix}/include)
