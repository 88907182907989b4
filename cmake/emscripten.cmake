# Toolchain file: compiles to WebAssembly with Debian's Emscripten. Libraries come from npm/dependencies alone.
execute_process(COMMAND em-config EMSCRIPTEN_ROOT OUTPUT_VARIABLE emscripten_root OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
include("${emscripten_root}/cmake/Modules/Platform/Emscripten.cmake")
list(APPEND CMAKE_FIND_ROOT_PATH "${CMAKE_PREFIX_PATH}")
set(ENV{PKG_CONFIG_LIBDIR} "${CMAKE_PREFIX_PATH}/lib/pkgconfig")
