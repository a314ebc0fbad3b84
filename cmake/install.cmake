# What `cmake --install` puts where, in three components: the window with what a desktop wants to know
# of it, the command line, and the manual with the examples.
if(WIN32)
  # A folder to unpack: examples beside the programs. scripts/windows.sh adds libraries and manual.
  set(CMAKE_INSTALL_BINDIR .)
  set(quillane_examples_dir examples)
else()
  set(quillane_examples_dir ${CMAKE_INSTALL_DATADIR}/quillane/examples)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
    FILES_MATCHING PATTERN "design.md" EXCLUDE PATTERN "performance.md" EXCLUDE PATTERN "*.md" PATTERN "*.png")
endif()

install(TARGETS quillane COMPONENT window
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  BUNDLE DESTINATION .)
install(TARGETS quillane-batch COMPONENT batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${quillane_examples_dir} COMPONENT doc
  FILES_MATCHING PATTERN "*.model")

# A window program without a console on Windows. Not yet tried: a bundle on macOS with the toolkit's
# libraries beside it.
set_target_properties(quillane PROPERTIES
  WIN32_EXECUTABLE ON
  MACOSX_BUNDLE ON
  MACOSX_BUNDLE_BUNDLE_NAME Quillane
  MACOSX_BUNDLE_GUI_IDENTIFIER org.quillane.quillane
  MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
if(WIN32)
  include(cmake/windows_program.cmake)
  quillane_windows_program(quillane "Stress-driven topology optimization of plates")
  quillane_windows_program(quillane-batch "Stress-driven topology optimization, on the command line")
endif()
if(APPLE)
  qt_generate_deploy_app_script(TARGET quillane FILENAME_VARIABLE quillane_deploy_script)
  install(SCRIPT ${quillane_deploy_script} COMPONENT window)
endif()

if(UNIX AND NOT APPLE)
  set(packaging ${PROJECT_SOURCE_DIR}/packaging)
  install(FILES ${packaging}/linux/quillane.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
  install(FILES ${packaging}/linux/org.quillane.quillane.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT window)
  install(FILES ${packaging}/icons/quillane.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT window)
  foreach(size 16 22 24 32 48 64 128 256 512)
    install(FILES ${packaging}/icons/quillane-${size}.png
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
      RENAME quillane.png COMPONENT window)
  endforeach()

  # Man pages name the folders of this installation. They and the logs are compressed, as is usual.
  set(DOCDIR ${CMAKE_INSTALL_FULL_DOCDIR})
  set(EXAMPLESDIR ${CMAKE_INSTALL_FULL_DATADIR}/quillane/examples)
  set(texts ${PROJECT_BINARY_DIR}/texts)
  configure_file(${packaging}/man/quillane.1 ${texts}/quillane.1 @ONLY)
  configure_file(${packaging}/man/quillane-batch.1 ${texts}/quillane-batch.1 @ONLY)
  configure_file(${packaging}/debian/changelog.in ${texts}/changelog.Debian @ONLY)
  configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${texts}/changelog COPYONLY)
  find_program(QUILLANE_GZIP gzip REQUIRED)
  foreach(text quillane.1 quillane-batch.1 changelog.Debian changelog)
    add_custom_command(OUTPUT ${texts}/${text}.gz DEPENDS ${texts}/${text}
      COMMAND ${QUILLANE_GZIP} -9nkf ${texts}/${text})
    list(APPEND compressed ${texts}/${text}.gz)
  endforeach()
  add_custom_target(texts ALL DEPENDS ${compressed})
  install(FILES ${texts}/quillane.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT window)
  install(FILES ${texts}/quillane-batch.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT batch)
  foreach(package quillane:window quillane-batch:batch quillane-doc:doc)
    string(REPLACE ":" ";" package ${package})
    list(GET package 0 name)
    list(GET package 1 component)
    install(FILES ${texts}/changelog.Debian.gz ${texts}/changelog.gz ${packaging}/debian/copyright
      DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
  endforeach()
endif()
