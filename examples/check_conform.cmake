# Runs PROGRAM on a drawing that has to be rewritten.
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/arc.svg"
  "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'><path d='M0 0A9 9 0 0 1 9 9z'/></svg>")
execute_process(COMMAND "${PROGRAM}" INPUT_FILE "${CMAKE_CURRENT_BINARY_DIR}/arc.svg" OUTPUT_VARIABLE text
  ERROR_VARIABLE findings COMMAND_ERROR_IS_FATAL ANY)
if(NOT findings MATCHES "^1:[0-9]+: [^\n]*arcs" OR NOT text MATCHES "d=\"M0 0[cCsS]")
  message(FATAL_ERROR "unexpected: ${findings}${text}")
endif()
