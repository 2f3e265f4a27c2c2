# Repacks a zip with its files in name order, whatever the order of the file system.
set(ENV{TZ} UTC) # a zip knows local time only
file(GLOB_RECURSE files LIST_DIRECTORIES false
    RELATIVE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/.. ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*)
list(JOIN files "\n" lines)
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/files "${lines}\n")
execute_process(
    COMMAND ${CMAKE_COMMAND} -E tar c ${CPACK_PACKAGE_FILES} --format=zip
        --files-from=${CPACK_TEMPORARY_DIRECTORY}/files
    WORKING_DIRECTORY ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/..
    COMMAND_ERROR_IS_FATAL ANY)
