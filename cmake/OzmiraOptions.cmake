# What can be switched, and the compiler flags that every target of the project shares.

option(OZMIRA_BUILD_TOOL "Build the command-line tool" "${PROJECT_IS_TOP_LEVEL}")
cmake_dependent_option(OZMIRA_BUILD_CONFORM
  "Build the library that checks and rewrites drawings (needs Expat and Clipper); the tool needs it"
  "${PROJECT_IS_TOP_LEVEL}" "NOT OZMIRA_BUILD_TOOL" ON)
option(OZMIRA_BUILD_EXAMPLES "Build the example programs" "${PROJECT_IS_TOP_LEVEL}")
option(OZMIRA_BUILD_TESTS "Build the tests (needs GoogleTest)" OFF)
option(OZMIRA_BUILD_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" OFF)
option(OZMIRA_BUILD_FUZZERS "Build the fuzzers (needs clang)" OFF)
option(OZMIRA_INSTALL "Install headers, libraries and the tool" "${PROJECT_IS_TOP_LEVEL}")
option(OZMIRA_WERROR "Treat warnings as errors" OFF)
set(OZMIRA_API AUTO CACHE STRING "Build the Objective-C object layer: AUTO, ON or OFF")
set_property(CACHE OZMIRA_API PROPERTY STRINGS AUTO ON OFF)
set(OZMIRA_SANITIZE "" CACHE STRING "Sanitizers for every target, for example address,undefined or thread")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Linked PRIVATE by every target of the project, never by those who use it.
add_library(ozmira_options INTERFACE)
target_compile_options(ozmira_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
  # Without fused multiply-add every machine computes the same doubles.
  -ffp-contract=off
  # Else chance decides whether short loops straddle two lines of the instruction cache, for 7 % of parsing.
  -falign-loops=32)
if(OZMIRA_WERROR)
  target_compile_options(ozmira_options INTERFACE -Werror)
endif()

if(OZMIRA_SANITIZE)
  # The Objective-C layer is built by clang, and the runtimes of two compilers do not mix.
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "OZMIRA_SANITIZE needs clang: pass -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang")
  endif()
  add_compile_options(-fsanitize=${OZMIRA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${OZMIRA_SANITIZE})
endif()

if(OZMIRA_BUILD_FUZZERS)
  # Fuzzers see which branches of the libraries an input takes.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
