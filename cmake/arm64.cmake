# Toolchain file: cross-compiles for 64-bit ARM with Debian's arm64 libraries (multiarch). Compiled programs run in an
# emulator. The Qt tools are those of the build machine.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(PKG_CONFIG_EXECUTABLE /usr/bin/aarch64-linux-gnu-pkg-config)
find_program(CMAKE_CROSSCOMPILING_EMULATOR NAMES qemu-aarch64-static qemu-aarch64 REQUIRED)
