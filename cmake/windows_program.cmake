# Gives a program for Windows its icon, manifest and version: quillane_windows_program(target description).
function(quillane_windows_program program program_description)
  set(resources ${PROJECT_BINARY_DIR}/resources/${program}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
  # Compiled apart, because the resource compiler chokes on the program's definitions.
  add_library(${program}_resources OBJECT ${resources})
  target_sources(${program} PRIVATE $<TARGET_OBJECTS:${program}_resources>)
  set_property(SOURCE ${resources} APPEND PROPERTY OBJECT_DEPENDS
    ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
endfunction()
