# Installs BUILD_DIR into a new prefix, moves the installed tree and builds the examples against it, both with CMake's
# find_package and with pkg-config.
set(prefix "${WORK_DIR}/moved")
set(examples "${SOURCE_DIR}/examples")
set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(result)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "failed with ${result}: ${command}")
  endif()
endfunction()

function(check_hello program)
  run(${CMAKE_COMMAND} -D "PROGRAM=${program}" -P "${examples}/check_hello.cmake")
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/installed")
file(RENAME "${WORK_DIR}/installed" "${prefix}")

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/package/consumer" -B "${WORK_DIR}/cmake"
  -D "CMAKE_PREFIX_PATH=${prefix}" -D "EXAMPLES=${examples}" -D "OZMIRA_VERSION=${VERSION}"
  -D "CMAKE_CXX_COMPILER=${COMPILER}" -D "CMAKE_CXX_FLAGS=${flags}"
  -D "CMAKE_OBJCXX_COMPILER=${OBJCXX_COMPILER}" -D "CMAKE_OBJCXX_FLAGS=${flags}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/cmake")
check_hello("${WORK_DIR}/cmake/hello")
function(check_conform program)
  run(${CMAKE_COMMAND} -D "PROGRAM=${program}" -P "${examples}/check_conform.cmake")
endfunction()
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
  execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs "ozmira = ${VERSION}" OUTPUT_VARIABLE arguments
    COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(arguments UNIX_COMMAND "${arguments}")
  run("${COMPILER}" -std=c++20 ${flags} "${examples}/hello.cpp" -o "${WORK_DIR}/hello" ${arguments})
  check_hello("${WORK_DIR}/hello")
  if(CONFORM)
    execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs "ozmira-conform >= 1.0" OUTPUT_VARIABLE arguments
      COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(arguments UNIX_COMMAND "${arguments}")
    run("${COMPILER}" -std=c++20 ${flags} "${examples}/conform.cpp" -o "${WORK_DIR}/conform" ${arguments})
    check_conform("${WORK_DIR}/conform")
  endif()
endif()

if(TOOL)
  run("${prefix}/${TOOL}" --version)
endif()
