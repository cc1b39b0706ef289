# SPDX-License-Identifier: MIT
# stowpocket_install_entry(TEMPLATE FOLDER NAME): installs a menu entry that names the program, where @EXEC@ stands, by
# the path that it gets. That is known only when installing, whose prefix may be another than the configured one.
function(stowpocket_install_entry template folder name)
    set(entry ${CMAKE_CURRENT_BINARY_DIR}/${template}.filled/${name})
    install(CODE "
        get_filename_component(EXEC \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/stowpocket\" ABSOLUTE)
        # Each reader has quoting rules of its own. A name that needs any is left to the search path.
        if(NOT EXEC MATCHES \"^[A-Za-z0-9_./+-]+$\")
            set(EXEC stowpocket)
        endif()
        configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/${template}\" \"${entry}\" @ONLY)")
    install(FILES ${entry} DESTINATION ${folder})
endfunction()
