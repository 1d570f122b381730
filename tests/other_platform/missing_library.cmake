# Configures with a platform directory that lacks one library, for each of them; then, in the same
# build folder, with a complete one.
set(libraries TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider)
file(REMOVE_RECURSE ${WORK})

# configure_without(LIBRARY): sets result and output.
function(configure_without library)
  set(folder ${WORK}/without_${library})
  file(MAKE_DIRECTORY ${folder})
  foreach(name IN LISTS libraries)
    if(NOT name STREQUAL library)
      file(CREATE_LINK ${PLATFORM}/lib${name}.so ${folder}/lib${name}.so SYMBOLIC)
    endif()
  endforeach()
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G ${GENERATOR}
      -DTAVO_PLATFORM_DIR=${folder} -DTAVO_BUILD_TOOLS=OFF -DTAVO_BUILD_TESTS=OFF
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  string(REGEX REPLACE "[ \n]+" " " output "${output}") # messages are wrapped
  set(result ${result} PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

foreach(library IN LISTS libraries)
  configure_without(${library})
  if(result EQUAL 0 OR NOT output MATCHES "without_${library} holds no lib${library}\\.so")
    message(FATAL_ERROR "Without lib${library}.so: result ${result}\n${output}")
  endif()
endforeach()
configure_without(none)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "With all of them: result ${result}\n${output}")
endif()
