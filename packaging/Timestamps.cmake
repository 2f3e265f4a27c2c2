# Sets the time of every file of a package to SOURCE_DATE_EPOCH.
execute_process(
    COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -exec
        touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
