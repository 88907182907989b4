# Compresses manual pages and changelogs of the packages that CPack is about to make, as Debian wants them, without a
# name and a time in them, so that equal builds make equal packages.
file(GLOB_RECURSE pages
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*.1" "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/changelog")
execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
