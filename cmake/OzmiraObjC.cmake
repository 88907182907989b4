# Finds what compiles Objective-C on Linux: clang, GNUstep's Foundation and GCC's Objective-C runtime. Appends the
# names of what is missing to OZMIRA_API_MISSING. If nothing is, defines
#
# ozmira_objc   the flags, headers and libraries that every Objective-C file needs

# GCC's Objective-C++ supports neither @autoreleasepool nor nullability.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_C_COMPILER_ID STREQUAL "Clang")
  set(ozmira_clang "${CMAKE_C_COMPILER}") # sanitizers need one compiler for all files
  set(ozmira_clangxx "${CMAKE_CXX_COMPILER}")
endif()
find_program(CMAKE_OBJC_COMPILER NAMES ${ozmira_clang} clang clang-14 DOC "Objective-C compiler: clang")
find_program(CMAKE_OBJCXX_COMPILER NAMES ${ozmira_clangxx} clang++ clang++-14 DOC "Objective-C++ compiler: clang")
if(NOT CMAKE_OBJC_COMPILER OR NOT CMAKE_OBJCXX_COMPILER)
  list(APPEND OZMIRA_API_MISSING clang)
endif()

find_path(OZMIRA_GNUSTEP_INCLUDE_DIR Foundation/Foundation.h PATHS /usr/include/GNUstep NO_DEFAULT_PATH)
find_library(OZMIRA_GNUSTEP_BASE_LIBRARY gnustep-base)
if(NOT OZMIRA_GNUSTEP_INCLUDE_DIR OR NOT OZMIRA_GNUSTEP_BASE_LIBRARY)
  list(APPEND OZMIRA_API_MISSING "GNUstep Base (libgnustep-base-dev)")
endif()

# The runtime and its headers are among GCC's own files; the newest version is used.
file(GLOB ozmira_gcc_dirs "/usr/lib/gcc/*/*")
list(SORT ozmira_gcc_dirs COMPARE NATURAL ORDER DESCENDING)
find_path(OZMIRA_OBJC_INCLUDE_DIR objc/objc.h PATHS ${ozmira_gcc_dirs} PATH_SUFFIXES include NO_DEFAULT_PATH)
find_library(OZMIRA_OBJC_LIBRARY objc PATHS ${ozmira_gcc_dirs})
if(NOT OZMIRA_OBJC_INCLUDE_DIR OR NOT OZMIRA_OBJC_LIBRARY)
  list(APPEND OZMIRA_API_MISSING "GCC's Objective-C runtime (libobjc-*-dev)")
endif()

find_path(OZMIRA_SPNG_INCLUDE_DIR spng.h)
find_library(OZMIRA_SPNG_LIBRARY spng)
if(NOT OZMIRA_SPNG_INCLUDE_DIR OR NOT OZMIRA_SPNG_LIBRARY)
  list(APPEND OZMIRA_API_MISSING "libspng (libspng-dev)")
endif()

if(OZMIRA_API_MISSING)
  return()
endif()

foreach(language OBJC OBJCXX)
  enable_language(${language})
endforeach()
find_package(Threads REQUIRED)

add_library(ozmira_objc INTERFACE)
# The headers of platform/ come first, because their <Foundation/Foundation.h> wraps GNUstep's.
target_include_directories(ozmira_objc SYSTEM INTERFACE
  "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform/include>")
target_compile_definitions(ozmira_objc INTERFACE
  GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
set(ozmira_objc_options
  -fobjc-runtime=gcc -fobjc-exceptions -fexceptions -fblocks -fconstant-string-class=NSConstantString
  # Otherwise a property without accessors would only fail at run time.
  -Werror=objc-property-implementation
  "SHELL:-idirafter ${OZMIRA_GNUSTEP_INCLUDE_DIR}" "SHELL:-idirafter ${OZMIRA_OBJC_INCLUDE_DIR}")
target_compile_options(ozmira_objc INTERFACE "$<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:${ozmira_objc_options}>")
target_link_libraries(ozmira_objc INTERFACE
  "${OZMIRA_GNUSTEP_BASE_LIBRARY}" "${OZMIRA_OBJC_LIBRARY}" Threads::Threads)
