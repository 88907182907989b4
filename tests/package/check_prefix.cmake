# Builds the examples against what is installed in `prefix`, both with CMake's find_package and with pkg-config, and runs
# the tool. Reads the variables that CMakeLists.txt passes.
set(examples "${SOURCE_DIR}/examples")
set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()

include("${CMAKE_CURRENT_LIST_DIR}/run.cmake")

function(check_hello program)
  run(${CMAKE_COMMAND} -D "PROGRAM=${program}" -P "${examples}/check_hello.cmake")
endfunction()

function(check_conform program)
  run(${CMAKE_COMMAND} -D "PROGRAM=${program}" -P "${examples}/check_conform.cmake")
endfunction()

# build_with_pkg_config REQUIREMENT SOURCE PROGRAM
function(build_with_pkg_config requirement source program)
  execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs "${requirement}" OUTPUT_VARIABLE arguments
    COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(arguments UNIX_COMMAND "${arguments}")
  run("${COMPILER}" -std=c++20 ${flags} "${source}" -o "${program}" ${arguments})
endfunction()

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/package/consumer" -B "${WORK_DIR}/cmake"
  -D "CMAKE_PREFIX_PATH=${prefix}" -D "EXAMPLES=${examples}" -D "OZMIRA_VERSION=${VERSION}"
  -D "CMAKE_CXX_COMPILER=${COMPILER}" -D "CMAKE_CXX_FLAGS=${flags}"
  -D "CMAKE_OBJCXX_COMPILER=${OBJCXX_COMPILER}" -D "CMAKE_OBJCXX_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/cmake")
check_hello("${WORK_DIR}/cmake/hello")
if(CONFORM)
  check_conform("${WORK_DIR}/cmake/conform_drawing")
endif()
if(OBJECTS)
  file(MAKE_DIRECTORY "${WORK_DIR}/pictures")
  run("${WORK_DIR}/cmake/gallery" "${examples}/svg" "${WORK_DIR}/pictures")
  if(NOT EXISTS "${WORK_DIR}/pictures/badge@2x.png")
    message(FATAL_ERROR "gallery wrote no badge@2x.png")
  endif()
endif()

if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
  build_with_pkg_config("ozmira = ${VERSION}" "${examples}/hello.cpp" "${WORK_DIR}/hello")
  check_hello("${WORK_DIR}/hello")
  if(CONFORM)
    build_with_pkg_config("ozmira-conform >= 1.0" "${examples}/conform.cpp" "${WORK_DIR}/conform")
    check_conform("${WORK_DIR}/conform")
  endif()
endif()

if(TOOL)
  set(ENV{PATH} "${prefix}/${BINDIR}:$ENV{PATH}")
  run(ozmira --version)
  run(ozmira render "${examples}/svg/icon.svg" -o "${WORK_DIR}/icon.png")
  foreach(file IN ITEMS man/man1/ozmira.1 doc/ozmira/differences.md bash-completion/completions/ozmira
      fish/vendor_completions.d/ozmira.fish "zsh/*/_ozmira")
    file(GLOB found "${prefix}/share/${file}" "${prefix}/share/${file}.gz")
    if(NOT found)
      message(FATAL_ERROR "share/${file} is not installed")
    endif()
  endforeach()
  execute_process(COMMAND ozmira --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  if(NOT help MATCHES "share/doc/ozmira/differences.md")
    message(FATAL_ERROR "the help does not name the page of differences:\n${help}")
  endif()
endif()
