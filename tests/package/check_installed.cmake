# Installs BUILD_DIR into a new prefix, moves the installed tree and checks it there.
set(prefix "${WORK_DIR}/moved")
file(REMOVE_RECURSE "${WORK_DIR}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/installed"
  COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${WORK_DIR}/installed" "${prefix}")
include("${CMAKE_CURRENT_LIST_DIR}/check_prefix.cmake")
