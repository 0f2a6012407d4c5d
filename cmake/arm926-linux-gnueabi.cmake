# Cross toolchain for the handheld: ARM926EJ-S (ARMv5TE), no FPU, Linux, EABI soft-float.
#
#   cmake -S . -B build/arm926 -DCMAKE_TOOLCHAIN_FILE=cmake/arm926-linux-gnueabi.cmake
#
# Uses Debian's arm-linux-gnueabi cross compiler (package g++-arm-linux-gnueabi). Target programs
# (unit tests, test discovery) run on the build machine through qemu-arm emulating an ARM926.
#
# Cache variables:
#   VELLACORE_ARM_TRIPLE     compiler prefix, default arm-linux-gnueabi
#   VELLACORE_ARMEL_SYSROOT  optional directory holding extra armel libraries in Debian layout
#                            (usr/lib/arm-linux-gnueabi, usr/include, ...), e.g. unpacked with
#                            dpkg -x; searched by find_* and by the emulated dynamic linker.
#   VELLACORE_QEMU           the emulator, default qemu-arm from PATH
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(VELLACORE_ARM_TRIPLE arm-linux-gnueabi CACHE STRING "Cross compiler prefix")
set(VELLACORE_ARMEL_SYSROOT "" CACHE PATH "Extra armel libraries (Debian layout); empty for none")
# try_compile projects read this file again; hand them the same choices.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELLACORE_ARM_TRIPLE VELLACORE_ARMEL_SYSROOT)

set(CMAKE_C_COMPILER ${VELLACORE_ARM_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${VELLACORE_ARM_TRIPLE}-g++)

# Debian's armel compiler already defaults to ARMv5TE soft-float; spelled out so that the build
# does not depend on the defaults of whichever compiler is found.
set(VELLACORE_ARM_FLAGS "-march=armv5te -mtune=arm926ej-s -mfloat-abi=soft -marm")
set(CMAKE_C_FLAGS_INIT "${VELLACORE_ARM_FLAGS}")
set(CMAKE_CXX_FLAGS_INIT "${VELLACORE_ARM_FLAGS}")

# Debian's multiarch layout: find_library looks in <root>/usr/lib/arm-linux-gnueabi and
# <root>/lib/arm-linux-gnueabi of every root below.
set(CMAKE_LIBRARY_ARCHITECTURE ${VELLACORE_ARM_TRIPLE})
set(VELLACORE_ARM_RUNTIME /usr/${VELLACORE_ARM_TRIPLE})
set(CMAKE_FIND_ROOT_PATH ${VELLACORE_ARM_RUNTIME})
if(VELLACORE_ARMEL_SYSROOT)
    list(APPEND CMAKE_FIND_ROOT_PATH ${VELLACORE_ARMEL_SYSROOT})
    # PulseAudio (under SDL) keeps its private library in a folder that only its RUNPATH names,
    # and neither the cross linker nor the emulator follow that into the sysroot.
    set(VELLACORE_ARMEL_LIBDIRS
        "${VELLACORE_ARMEL_SYSROOT}/usr/lib/${VELLACORE_ARM_TRIPLE}:${VELLACORE_ARMEL_SYSROOT}/lib/${VELLACORE_ARM_TRIPLE}:${VELLACORE_ARMEL_SYSROOT}/usr/lib/${VELLACORE_ARM_TRIPLE}/pulseaudio")
    # The linker follows the libraries' own dependencies (libpng16 -> libz) through these.
    set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${VELLACORE_ARMEL_LIBDIRS}")
    set(CMAKE_SHARED_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# -cpu arm926 makes any instruction newer than ARMv5TE fault instead of running silently.
# -L points the emulated dynamic linker at the armel C and C++ runtimes.
find_program(VELLACORE_QEMU NAMES qemu-arm qemu-arm-static)
if(NOT VELLACORE_QEMU)
    set(VELLACORE_QEMU qemu-arm)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR ${VELLACORE_QEMU} -cpu arm926 -L ${VELLACORE_ARM_RUNTIME})
if(VELLACORE_ARMEL_LIBDIRS)
    list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -E LD_LIBRARY_PATH=${VELLACORE_ARMEL_LIBDIRS})
endif()
