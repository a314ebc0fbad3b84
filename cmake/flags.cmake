# Flags every target of the project is built with, carried by one interface target.
# Floating-point contraction is off: a result must not depend on the compiler's choice of fused operations.
add_library(quillane_flags INTERFACE)
target_include_directories(quillane_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(MSVC)
  target_compile_options(quillane_flags INTERFACE /W4 /utf-8 /fp:precise)
  if(QUILLANE_WERROR)
    target_compile_options(quillane_flags INTERFACE /WX)
  endif()
else()
  target_compile_options(quillane_flags INTERFACE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Clang warns of double{x} too, which is how a promotion that is meant is written here.
    target_compile_options(quillane_flags INTERFACE -Wdouble-promotion)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 takes std::string's operator+ of a literal for an overlapping copy.
    target_compile_options(quillane_flags INTERFACE -Wno-restrict)
  endif()
  if(QUILLANE_WERROR)
    target_compile_options(quillane_flags INTERFACE -Werror)
  endif()
  if(QUILLANE_SANITIZE)
    target_compile_options(quillane_flags INTERFACE
      -fsanitize=${QUILLANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(quillane_flags INTERFACE -fsanitize=${QUILLANE_SANITIZE})
  endif()
endif()

# One library of one folder of src/: quillane_library(name SOURCES... DEPENDS targets...).
function(quillane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC quillane_flags ${ARG_DEPENDS})
endfunction()

# One GoogleTest program: quillane_test(name SOURCES... DEPENDS targets...).
function(quillane_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE QUILLANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  if(NOT CMAKE_CROSSCOMPILING)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600
      ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0")
  endif()
endfunction()
