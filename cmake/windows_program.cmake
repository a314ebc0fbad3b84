# Gives a program for Windows its icon, manifest and version: quillane_windows_program(target description).
function(quillane_windows_program program program_description)
  set(resources ${PROJECT_BINARY_DIR}/resources/${program}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
  target_sources(${program} PRIVATE ${resources})
  set_property(SOURCE ${resources} TARGET_DIRECTORY ${program} APPEND PROPERTY OBJECT_DEPENDS
    ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
endfunction()
