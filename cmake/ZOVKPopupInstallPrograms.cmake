# Installs a program's manual page and its completions for shells.
find_program(GZIP_PROGRAM gzip REQUIRED)

# zovkpopup_compressed(INPUT OUTPUT): a file as Debian wants texts, the same for every build.
function(zovkpopup_compressed input output)
  cmake_path(GET output PARENT_PATH folder)
  file(MAKE_DIRECTORY ${folder})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${input})
  execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${input} OUTPUT_FILE ${output}
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(zovkpopup_install_manual component page)
  cmake_path(GET page FILENAME name)
  set(compressed ${PROJECT_BINARY_DIR}/installed/${name}.gz)
  zovkpopup_compressed(${PROJECT_SOURCE_DIR}/${page} ${compressed})
  install(FILES ${compressed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

function(zovkpopup_install_completion component folder program)
  set(scripts ${PROJECT_SOURCE_DIR}/${folder})
  install(FILES ${scripts}/${program}.bash RENAME ${program} COMPONENT ${component}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${scripts}/_${program} COMPONENT ${component}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES ${scripts}/${program}.fish COMPONENT ${component}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endfunction()
