include(CMakeDependentOption)

# As a subproject, only the libraries are built by default, and nothing is installed.
if(PROJECT_IS_TOP_LEVEL)
    option(BUILD_TESTING "Build the tests" ON)
endif()
cmake_dependent_option(TOLV_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL}
    "BUILD_TESTING OR NOT DEFINED BUILD_TESTING" OFF)
option(TOLV_BUILD_TOOLS "Build the command line tools" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_EXAMPLES "Build the examples" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_BUILD_BENCH "Build the benchmarks" ${PROJECT_IS_TOP_LEVEL})
option(TOLV_INSTALL "Install what is built" ${PROJECT_IS_TOP_LEVEL})

option(TOLV_WERROR "Treat warnings as errors" OFF)
option(TOLV_FUZZ "Instrument everything for libFuzzer (needs clang)" OFF)
# Without libFuzzer the fuzz targets replay stored inputs, which is a test.
cmake_dependent_option(TOLV_BUILD_FUZZ "Build the fuzz targets" ${PROJECT_IS_TOP_LEVEL}
    "TOLV_FUZZ OR TOLV_BUILD_TESTS" OFF)
option(TOLV_SIMD "Use the vector instructions of the processor" ON)
set(TOLV_SANITIZE "" CACHE STRING "Sanitizers for everything, e.g. 'address,undefined' or 'thread'")
