# Build options, and the compiler flags that all targets of the project share.

option(BUILD_SHARED_LIBS
  "Build the C++ libraries as shared ones; the object layer, which replaces parts of GNUstep, stays static" OFF)
# A build for another machine makes the libraries alone, unless more is asked for.
set(ozmira_is_main_build "${PROJECT_IS_TOP_LEVEL}")
if(CMAKE_CROSSCOMPILING)
  set(ozmira_is_main_build OFF)
endif()
option(OZMIRA_BUILD_TOOL "Build the command-line tool" "${ozmira_is_main_build}")
cmake_dependent_option(OZMIRA_BUILD_CONFORM
  "Build the library that checks and rewrites drawings (needs Expat and Clipper); the tool needs it"
  "${ozmira_is_main_build}" "NOT OZMIRA_BUILD_TOOL" ON)
option(OZMIRA_BUILD_EXAMPLES "Build the example programs" "${ozmira_is_main_build}")
option(OZMIRA_BUILD_TESTS "Build the tests (needs GoogleTest)" OFF)
option(OZMIRA_BUILD_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" OFF)
option(OZMIRA_BUILD_FUZZERS "Build the fuzzers (needs clang)" OFF)
option(OZMIRA_INSTALL "Install headers, libraries and the tool" "${ozmira_is_main_build}")
cmake_dependent_option(OZMIRA_PACKAGE "Let CPack make Debian packages of what is installed" OFF
  "OZMIRA_INSTALL;OZMIRA_BUILD_TOOL;NOT APPLE" OFF)
set(OZMIRA_ZSH_COMPLETION_DIR "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" CACHE STRING
  "Where the completion for zsh is installed")
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
# Libraries and plug-ins export only what OzmiraExport.h marks.
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
foreach(language C CXX OBJC OBJCXX)
  set(CMAKE_${language}_VISIBILITY_PRESET hidden)
endforeach()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Every target of the project links this PRIVATE, so that its users do not get these flags.
add_library(ozmira_options INTERFACE)
target_compile_options(ozmira_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
  # Without fused multiply-add, all machines compute the same doubles.
  -ffp-contract=off
  # Otherwise it is chance whether short loops straddle two cache lines, which costs 7 % of parsing time.
  -falign-loops=32)
if(BUILD_SHARED_LIBS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Otherwise inline functions of the standard library keep the loader from ever unloading a library.
  target_compile_options(ozmira_options INTERFACE -fno-gnu-unique)
endif()
if(BUILD_SHARED_LIBS)
  target_compile_definitions(ozmira_options INTERFACE OZMIRA_SHARED)
endif()
if(OZMIRA_WERROR)
  target_compile_options(ozmira_options INTERFACE -Werror)
endif()

if(OZMIRA_SANITIZE)
  # Clang builds the object layer, and the sanitizer runtimes of two compilers do not mix.
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "OZMIRA_SANITIZE needs clang: pass -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang")
  endif()
  add_compile_options(-fsanitize=${OZMIRA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=${OZMIRA_SANITIZE})
endif()

if(OZMIRA_BUILD_FUZZERS)
  # Lets fuzzers see which branches an input takes in the libraries.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
