# tavo_front_platform(target): the intercepting platform becomes part of the executable, which
# exports its symbols so that the dynamic linker finds them first.
function(tavo_front_platform target)
  target_link_libraries(${target} PRIVATE tavo_fronting_platform ${CMAKE_DL_LIBS})
  # The real platform is needed, although no symbol is left for it to resolve.
  target_link_libraries(${target} PRIVATE
    -Wl,--no-as-needed TAVOOSLibUnix TAVODataCnvLib TAVOErrorHandler)
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
endfunction()
