# What gets built. As part of another project only the libraries are wanted by default.
option(TOLV_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_TOOLS "Build the command line tools" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_EXAMPLES "Build the examples" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_BENCH "Build the benchmarks" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_FUZZ "Build the fuzz targets (as replayers unless TOLV_FUZZ is set)"
    ${PROJECT_IS_TOP_LEVEL})

option(TOLV_WERROR "Treat warnings as errors" OFF)
option(TOLV_FUZZ "Instrument everything for libFuzzer (needs clang)" OFF)
option(TOLV_SIMD "Use the vector instructions of the processor" ON)
set(TOLV_SANITIZE "" CACHE STRING "Sanitizers for everything, e.g. 'address,undefined' or 'thread'")
