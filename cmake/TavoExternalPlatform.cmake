# Uses the suite's platform libraries from TAVO_PLATFORM_DIR instead of building the embedded ones.
foreach(name TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider)
  # Not cached, since the directory may have changed.
  set(file ${TAVO_PLATFORM_DIR}/lib${name}.so)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "TAVO_PLATFORM_DIR=${TAVO_PLATFORM_DIR} holds no lib${name}.so")
  endif()
  add_library(${name} SHARED IMPORTED GLOBAL)
  set_target_properties(${name} PROPERTIES IMPORTED_LOCATION ${file} IMPORTED_NO_SONAME ON)
endforeach()
add_library(tavo_platform INTERFACE)
# All five are loaded, even those without called functions.
target_link_libraries(tavo_platform INTERFACE "-Wl,--push-state,--no-as-needed"
  TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler TAVOEnvLib TAVOProvider "-Wl,--pop-state")
target_include_directories(tavo_platform INTERFACE ${PROJECT_SOURCE_DIR}/include)
