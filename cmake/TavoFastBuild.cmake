# What makes building faster where it is installed: ccache, and mold or lld as the linker. Whoever sets
# CMAKE_CXX_COMPILER_LAUNCHER or TAVO_LINKER decides otherwise; an empty TAVO_LINKER is the compiler's.
find_program(TAVO_CCACHE ccache)
if(TAVO_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER AND NOT DEFINED CMAKE_C_COMPILER_LAUNCHER)
  # Precompiled headers are cached only if ccache may trust what they were made from; with a base
  # folder, another clone finds what this one compiled.
  set(launcher env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${TAVO_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
endif()

if(NOT DEFINED TAVO_LINKER)
  set(found "")
  foreach(linker mold lld)
    if(found)
      break()
    endif()
    find_program(TAVO_LINKER_${linker} NAMES ${linker} ld.${linker})
    if(TAVO_LINKER_${linker})
      include(CheckCXXSourceCompiles)
      set(CMAKE_REQUIRED_LINK_OPTIONS -fuse-ld=${linker})
      check_cxx_source_compiles("int main() { return 0; }" TAVO_LINKS_WITH_${linker})
      unset(CMAKE_REQUIRED_LINK_OPTIONS)
      if(TAVO_LINKS_WITH_${linker})
        set(found ${linker})
      endif()
    endif()
  endforeach()
  set(TAVO_LINKER "${found}" CACHE STRING "Linker, as for -fuse-ld=; empty takes the compiler's own")
endif()
