# The differences between the packages; CPack reads this file once for each.
if(CPACK_GENERATOR STREQUAL "ZIP")
    string(REPLACE ";ALL;" ";portable;" CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_INSTALL_CMAKE_PROJECTS}")
    set(CPACK_PACKAGING_INSTALL_PREFIX "")
    set(CPACK_PACKAGE_FILE_NAME ${CPACK_PORTABLE_FILE_NAME})
    set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/Sorted.cmake)
else()
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_RELEASE_EPOCH}) # the time of all that is packed
