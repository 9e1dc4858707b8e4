# Installs kesview: the program, the reader that it starts, the module that draws and the schemas
# of its answers. Each finds the others and the library from where it stands, under any prefix.

# kesview_find_library_from(target folder): the installed target, in the folder, loads the
# library's installed file.
function(kesview_find_library_from target folder)
    file(RELATIVE_PATH wayToLibrary "${folder}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${wayToLibrary}")
endfunction()

kesview_find_library_from(kesview "${CMAKE_INSTALL_FULL_BINDIR}")
install(TARGETS kesview COMPONENT kesview)
install(TARGETS kesview_reader
    DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/kesview COMPONENT kesview)
install(TARGETS kesview_vtk
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/kesview COMPONENT kesview)
install(DIRECTORY commands/schemas
    DESTINATION ${CMAKE_INSTALL_DATADIR}/kesview COMPONENT kesview)
