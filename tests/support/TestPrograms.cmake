# tavo_add_test_program(NAME LIBRARIES ...): a GoogleTest program that topics add their sources to.
#
# tavo_add_test(NAME SOURCES ... [PROGRAM P] [LIBRARIES ...] [LABELS ...] [DEFINITIONS ...] [OPTIMIZED])
# is one ctest entry with its labels. With PROGRAM, the sources become part of that program and the
# entry runs their tests only; without, it has a program of its own: for what replaces functions of
# the process, such as malloc. Either way build/<preset>/tests/NAME runs it and accepts GoogleTest's
# arguments, and the target NAME builds it. OPTIMIZED is for tests that calculate much.
#
# Tests are compiled without optimization, which they do not need, and with one precompiled header;
# what they test is compiled as the build type says.
set(TAVO_TEST_PROGRAMS_DIR ${PROJECT_BINARY_DIR}/tests)

# The precompiled header belongs to a program, as position-independent code differs in libraries.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp "int main() { return 0; }\n")
add_executable(tavo_test_headers ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp)
target_link_libraries(tavo_test_headers PRIVATE tavo_options GTest::gtest)
target_compile_options(tavo_test_headers PRIVATE -O0)
target_precompile_headers(tavo_test_headers PRIVATE
  <gtest/gtest.h> <algorithm> <array> <cstdint> <cstdlib> <cstring> <cwchar> <filesystem> <functional>
  <map> <memory> <set> <sstream> <string> <thread> <vector>)

function(tavo_add_test_program name)
  cmake_parse_arguments(arg "OPTIMIZED" "" "LIBRARIES" ${ARGN})
  add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/support/test_main.cpp)
  target_link_libraries(${name} PRIVATE tavo_options ${arg_LIBRARIES} GTest::gtest)
  target_include_directories(${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/Src/TAVOParser ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/tests)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${TAVO_TEST_PROGRAMS_DIR})
  if(NOT arg_OPTIMIZED)
    target_compile_options(${name} PRIVATE -O0)
    target_precompile_headers(${name} REUSE_FROM tavo_test_headers)
  endif()
endfunction()

function(tavo_add_test name)
  cmake_parse_arguments(arg "OPTIMIZED" "PROGRAM" "SOURCES;LIBRARIES;LABELS;DEFINITIONS" ${ARGN})
  set(program ${arg_PROGRAM})
  set(from "")
  if(program)
    # Tests are told by the file that they are written in.
    foreach(source IN LISTS arg_SOURCES)
      if(source MATCHES "_test\\.cpp$")
        file(RELATIVE_PATH part ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR}/${source})
        list(APPEND from ${part})
      endif()
    endforeach()
    list(JOIN from "," from)
    set(from --from=${from})
    set(script ${TAVO_TEST_PROGRAMS_DIR}/${name})
    file(CONFIGURE OUTPUT ${script} @ONLY
      CONTENT "#!/bin/sh\nexec \"\${0%/*}/@program@\" '@from@' \"$@\"\n")
    file(CHMOD ${script} PERMISSIONS
      OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    add_custom_target(${name} DEPENDS ${program})
  else()
    set(program ${name})
    set(optimized "")
    if(arg_OPTIMIZED)
      set(optimized OPTIMIZED)
    endif()
    tavo_add_test_program(${name} ${optimized})
  endif()

  list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
  # A helper may serve several topics of one program.
  get_target_property(present ${program} SOURCES)
  list(REMOVE_ITEM arg_SOURCES ${present})
  target_sources(${program} PRIVATE ${arg_SOURCES})
  target_link_libraries(${program} PRIVATE ${arg_LIBRARIES})
  foreach(source IN LISTS arg_SOURCES)
    if(source MATCHES "\\.c$")
      set_source_files_properties(${source} TARGET_DIRECTORY ${program} PROPERTIES
        SKIP_PRECOMPILE_HEADERS ON)
    elseif(arg_DEFINITIONS)
      set_source_files_properties(${source} TARGET_DIRECTORY ${program} PROPERTIES
        COMPILE_DEFINITIONS "${arg_DEFINITIONS}")
    endif()
  endforeach()
  add_test(NAME ${name} COMMAND ${program} ${from})
  set_tests_properties(${name} PROPERTIES LABELS "quick;unit;${arg_LABELS}" TIMEOUT 600)
  set_property(GLOBAL APPEND PROPERTY TAVO_QUICK_TESTS ${program})
  if(NOT "${arg_LABELS}" MATCHES "abi|cli|platform")
    set_property(GLOBAL APPEND PROPERTY TAVO_LIBRARY_TESTS ${program})
  endif()
endfunction()

# tavo_front_platform(PROGRAM): the platform that stands in front of the real one becomes part of
# the program, which exports its symbols so that the dynamic linker finds them first.
function(tavo_front_platform program)
  target_link_libraries(${program} PRIVATE tavo_fronting_platform ${CMAKE_DL_LIBS})
  # The platform that it needs is linked, although nothing is left for it to resolve.
  target_link_libraries(${program} PRIVATE
    -Wl,--no-as-needed TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler)
  set_target_properties(${program} PROPERTIES ENABLE_EXPORTS ON)
endfunction()
