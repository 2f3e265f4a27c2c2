# For 64-bit ARM, on another Linux PC: Debian's cross compiler, and Debian's libraries of that
# architecture in build/systems/arm64/, where script/lib/arm64-system puts them.
set(system ${CMAKE_CURRENT_LIST_DIR}/../build/systems/arm64)
cmake_path(NORMAL_PATH system)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_SYSROOT ${system})

set(CMAKE_FIND_ROOT_PATH ${system})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${system})
set(ENV{PKG_CONFIG_LIBDIR}
    ${system}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${system}/usr/share/pkgconfig)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static -L ${system})

# dpkg-shlibdeps searches these, too, for libraries and the packages that own them.
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${system}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE} ${system}/lib/${CMAKE_LIBRARY_ARCHITECTURE})
