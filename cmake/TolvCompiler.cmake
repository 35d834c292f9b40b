# Compiler settings of everything in this project. All of them are scoped to its directories, so that
# nothing leaks into a project that adds this one as a subdirectory.
include(CheckCXXCompilerFlag)
include(CheckIPOSupported)
include(CheckLinkerFlag)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# The libraries export only what is marked for export.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# How to build is for the top-level project to say: where the output goes, which warnings are wanted,
# and whether a compiler cache is used.
if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    # All programs in one folder and all libraries in another: scripts need not know the source layout.
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
    add_compile_options(-Wall -Wextra -Wpedantic -Wconversion)
    find_program(TOLV_CCACHE ccache)
    mark_as_advanced(TOLV_CCACHE)
    if(TOLV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${TOLV_CCACHE}")
    endif()
endif()
if(TOLV_WERROR)
    add_compile_options(-Werror)
endif()

if(NOT TOLV_SIMD)
    # The sources then choose the code for processors without vector instructions.
    add_compile_definitions(TOLV_NO_SIMD)
    add_compile_options(-U__SSE2__ -fno-tree-vectorize)
endif()

if(TOLV_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "TOLV_FUZZ needs clang, the compiler is ${CMAKE_CXX_COMPILER_ID}")
    endif()
    set(TOLV_SANITIZE "address,undefined")
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(TOLV_SANITIZE)
    add_compile_options(
        -fsanitize=${TOLV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TOLV_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The instrumentation makes g++ suspect uninitialized memory in <regex>.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()

# A symbol with "unique" binding keeps its library loaded until the process ends: dlclose() would not
# unload it.
check_cxx_compiler_flag(-fno-gnu-unique TOLV_HAVE_NO_GNU_UNIQUE)
check_ipo_supported(RESULT TOLV_HAVE_IPO OUTPUT tolv_ipo_output LANGUAGES CXX)
check_cxx_compiler_flag(-fno-semantic-interposition TOLV_HAVE_NO_SEMANTIC_INTERPOSITION)
# Stores half of the relocations in a tenth of the bytes; needs the C library of Debian 12.
check_linker_flag(CXX LINKER:-z,pack-relative-relocs TOLV_HAVE_PACKED_RELOCATIONS)
