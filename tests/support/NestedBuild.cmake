# tavo_nested_build(NAME FOLDER F [TARGETS ...] [LABELS ...] [OPTIONS ...] [SOURCE S]): two tests,
# NAME_configure and NAME_build, that build the tree once more in a folder of its own. Tests that need
# it have FIXTURES_REQUIRED NAME_built. OPTIONS are those of the build, beside compiler and generator.
# They are slow.
function(tavo_nested_build name)
  cmake_parse_arguments(arg "" "FOLDER;SOURCE" "TARGETS;LABELS;OPTIONS" ${ARGN})
  if(NOT arg_SOURCE)
    set(arg_SOURCE ${PROJECT_SOURCE_DIR})
  endif()
  add_test(NAME ${name}_configure COMMAND ${CMAKE_COMMAND}
    -S ${arg_SOURCE} -B ${arg_FOLDER} -G ${CMAKE_GENERATOR}
    -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} -DCMAKE_C_COMPILER=${CMAKE_C_COMPILER}
    -DTAVO_WERROR=${TAVO_WERROR} ${arg_OPTIONS})
  add_test(NAME ${name}_build COMMAND ${CMAKE_COMMAND} --build ${arg_FOLDER} --target ${arg_TARGETS})
  set_tests_properties(${name}_configure PROPERTIES FIXTURES_SETUP ${name}_configured TIMEOUT 300)
  set_tests_properties(${name}_build PROPERTIES
    FIXTURES_REQUIRED ${name}_configured FIXTURES_SETUP ${name}_built PROCESSORS 2 TIMEOUT 1200)
  set_tests_properties(${name}_configure ${name}_build PROPERTIES LABELS "${arg_LABELS};slow")
endfunction()
