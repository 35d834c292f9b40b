# Cross-compiles for Debian's 32-bit ARM (armhf) and runs the programs under qemu-user. Libraries that the
# cross compiler does not bring are in build/armhf-packages, which `scripts/setup --armhf` fills.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # notes about the ABI of g++ 6

# Of the machine's own packages only headers and CMake files are found, which fit any architecture; its
# libraries lie in a folder with another name.
cmake_path(SET CMAKE_FIND_ROOT_PATH NORMALIZE
    "${CMAKE_CURRENT_LIST_DIR}/../build/armhf-packages")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES
    "${CMAKE_FIND_ROOT_PATH}/usr/include/${CMAKE_LIBRARY_ARCHITECTURE}")

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/qemu-arm -L /usr/arm-linux-gnueabihf)
