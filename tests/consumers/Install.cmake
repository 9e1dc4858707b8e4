# Installs a build into an empty prefix, and a copy of that elsewhere.
#
#   cmake -DBUILD=... -DPREFIX=... [-DMOVED=...] -P Install.cmake
file(REMOVE_RECURSE ${PREFIX})
execute_process(
    COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
    COMMAND_ERROR_IS_FATAL ANY)
if(MOVED)
    file(REMOVE_RECURSE ${MOVED})
    file(COPY ${PREFIX}/ DESTINATION ${MOVED})
endif()
