# tavo_front_platform(target): the platform that stands in front of the embedded one becomes part of
# the executable, which exports its symbols so that the dynamic linker finds them first.
function(tavo_front_platform target)
  target_link_libraries(${target} PRIVATE tavo_fronting_platform ${CMAKE_DL_LIBS})
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
endfunction()
