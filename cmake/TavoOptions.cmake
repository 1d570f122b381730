# Compiler settings shared by every target of this tree: link tavo_options (and tavo_hardening for
# installed files). Warnings are errors in our presets only, so that a package builds with another
# compiler. The runtime's headers are system headers.
set(TAVO_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize=")
option(TAVO_COVERAGE "Instrument for coverage" OFF)

add_library(tavo_options INTERFACE)
target_compile_options(tavo_options INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wsign-conversion
  $<$<BOOL:${TAVO_WERROR}>:-Werror>
  # GCC 12 reports overlapping copies inside std::string where there are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast>
  -fno-math-errno)

# The code runs on every x86-64. But GCC's generic tuning clears blocks of a few hundred bytes, such
# as trace frames, with a string instruction whose startup costs more than the work.
include(CheckCXXCompilerFlag)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  check_cxx_compiler_flag(-mtune=skylake TAVO_HAS_TUNE)
  if(TAVO_HAS_TUNE)
    target_compile_options(tavo_options INTERFACE -mtune=skylake)
  endif()
endif()

if(TAVO_LINKER)
  target_link_options(tavo_options INTERFACE -fuse-ld=${TAVO_LINKER})
endif()
# ccache sees through precompiled headers only with this.
target_compile_options(tavo_options INTERFACE
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<COMPILE_LANGUAGE:CXX>>:-fpch-preprocess>)

if(TAVO_SANITIZE)
  target_compile_options(tavo_options INTERFACE
    -fsanitize=${TAVO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tavo_options INTERFACE -fsanitize=${TAVO_SANITIZE})
endif()
if(TAVO_COVERAGE)
  target_compile_options(tavo_options INTERFACE --coverage -fprofile-abs-path)
  target_link_options(tavo_options INTERFACE --coverage)
endif()

# Hardening of installed files: read-only relocations, no lazy binding, no executable stack; large
# frames touch every page of the stack, and functions mark where indirect calls may land.
add_library(tavo_hardening INTERFACE)
set(CMAKE_REQUIRED_FLAGS -Werror) # clang only warns of a flag of another machine
foreach(flag -fstack-clash-protection -fcf-protection=full -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "TAVO_HAS${flag}" has_flag)
  check_cxx_compiler_flag(${flag} ${has_flag}) # the last two are each of one kind of machine
  if(${has_flag})
    target_compile_options(tavo_hardening INTERFACE ${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)
if(NOT TAVO_SANITIZE AND NOT TAVO_COVERAGE)
  target_compile_options(tavo_hardening INTERFACE
    -fstack-protector-strong
    $<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
endif()
target_link_options(tavo_hardening INTERFACE
  -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack -Wl,-z,text -Wl,--as-needed)

find_library(ANTLR3C_LIBRARY antlr3c REQUIRED)
find_path(ANTLR3C_INCLUDE_DIR antlr3.h REQUIRED)
add_library(antlr3c UNKNOWN IMPORTED)
set_target_properties(antlr3c PROPERTIES
  IMPORTED_LOCATION ${ANTLR3C_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${ANTLR3C_INCLUDE_DIR})

# tavo_set_run_path(TARGET PATH): the same run path in the build folder and where it is installed.
# Two different ones would be made equally long with empty elements, which name the current folder.
function(tavo_set_run_path target path)
  if(NOT TAVO_FOR_PACKAGES)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${path}" BUILD_WITH_INSTALL_RPATH ON)
  endif()
endfunction()
