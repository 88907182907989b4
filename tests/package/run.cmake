# Runs a command, whose failure is fatal.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(result)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "failed with ${result}: ${command}")
  endif()
endfunction()
