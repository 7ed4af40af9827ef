# Run by CPack on the installed tree before it is packed: Debian keeps manual pages and changelogs
# compressed.
file(GLOB_RECURSE texts ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.1 ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/changelog)
execute_process(COMMAND gzip -9 --no-name ${texts} INPUT_FILE /dev/null COMMAND_ERROR_IS_FATAL ANY)
