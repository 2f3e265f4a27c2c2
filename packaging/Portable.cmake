# One folder that runs from where it is unpacked, with the libraries that a desktop may lack.
# Installed when asked for by name: `cmake --install build/release --component portable`.
set(portable COMPONENT portable EXCLUDE_FROM_ALL)

install(TARGETS ${programs} DESTINATION . ${portable})
install(FILES ${skovra_resource_files} DESTINATION resources ${portable})

# Bundle.cmake fills in the versions required.
set(GLIBC @GLIBC@)
set(GLIBCXX @GLIBCXX@)
configure_file(skovra.nfo.in skovra.nfo @ONLY)
configure_file(FILE_ID.DIZ.in FILE_ID.DIZ @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/FILE_ID.DIZ DESTINATION . ${portable})

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION licences RENAME skovra.txt ${portable})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/LICENSES.md)
file(READ ${PROJECT_SOURCE_DIR}/LICENSES.md licences)
string(REPLACE "](LICENSE)" "](skovra.txt)" licences "${licences}")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/LICENSES.md "${licences}")
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/LICENSES.md DESTINATION licences ${portable})
# Those that the libraries' own texts refer to.
foreach(licence IN ITEMS GPL-3 LGPL-2.1)
    install(FILES /usr/share/common-licenses/${licence}
        DESTINATION licences RENAME ${licence}.txt ${portable})
endforeach()
install(CODE "set(programs \"${programs}\")\nset(nfo \"${CMAKE_CURRENT_BINARY_DIR}/skovra.nfo\")" ${portable})
install(SCRIPT Bundle.cmake ${portable})

set(CPACK_PORTABLE_FILE_NAME skovra-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
