# Toolchain file: builds for arm64 with Debian's cross compiler, against packages that were unpacked
# into TAVO_SYSROOT, and runs programs with qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(TAVO_SYSROOT "" CACHE PATH "Unpacked packages of the target")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAVO_SYSROOT)

set(CMAKE_FIND_ROOT_PATH ${TAVO_SYSROOT} /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(target_libraries ${TAVO_SYSROOT}/usr/lib/aarch64-linux-gnu)
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-Wl,-rpath-link,${target_libraries}")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR
    qemu-aarch64-static -L /usr/aarch64-linux-gnu -E LD_LIBRARY_PATH=${target_libraries})
