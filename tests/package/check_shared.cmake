# Builds and installs shared libraries, builds the examples against them, and looks at what they export.
include("${CMAKE_CURRENT_LIST_DIR}/run.cmake")

# exports NAME PATTERN: every symbol that the library exports, with C++ names demangled, has to match.
function(exports name pattern)
  string(REGEX MATCH "^[0-9]+" major "${VERSION}")
  set(library "${WORK_DIR}/installed/${LIBDIR}/libozmira_${name}.so.${major}")
  execute_process(COMMAND "${NM}" -DC --defined-only "${library}" OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
  # What templates of the standard library leave behind is weak or unique.
  string(REGEX MATCHALL "[0-9a-f]+ [TDRB] [^\n]+" symbols "${lines}")
  list(LENGTH symbols count)
  if(count EQUAL 0)
    message(FATAL_ERROR "${library} exports nothing")
  endif()
  foreach(symbol IN LISTS symbols)
    if(NOT symbol MATCHES "^[0-9a-f]+ [TDRB] ${pattern}")
      message(FATAL_ERROR "${library} must not export ${symbol}")
    endif()
  endforeach()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}/installed" "${WORK_DIR}/consumer")
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
  -D CMAKE_BUILD_TYPE=Release -D BUILD_SHARED_LIBS=ON -D OZMIRA_API=OFF
  -D OZMIRA_BUILD_TOOL=OFF -D OZMIRA_BUILD_CONFORM=OFF -D OZMIRA_BUILD_EXAMPLES=OFF
  -D "CMAKE_CXX_COMPILER=${COMPILER}" -D "CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build" -j 2)
run(${CMAKE_COMMAND} --install "${WORK_DIR}/build" --prefix "${WORK_DIR}/installed")
exports(core "(ozm::|Ozmira)")
exports(render "ozm::")
exports(coregraphics "(CG|CF|kCG|kCF|OZMSetDrawingInterrupt|OZMTrimDrawingMemory)")

run(${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/package/consumer" -B "${WORK_DIR}/consumer" -G "${GENERATOR}"
  -D "CMAKE_PREFIX_PATH=${WORK_DIR}/installed" -D "EXAMPLES=${SOURCE_DIR}/examples" -D "OZMIRA_VERSION=${VERSION}"
  -D "UNLOADING=${SOURCE_DIR}/tests/faults" -D "CMAKE_CXX_COMPILER=${COMPILER}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")
run(${CMAKE_COMMAND} -D "PROGRAM=${WORK_DIR}/consumer/hello" -P "${SOURCE_DIR}/examples/check_hello.cmake")
run("${WORK_DIR}/consumer/unload" --gtest_brief=1)
