# Where a Linux desktop looks for a program and what belongs to it.

install(TARGETS ${programs} DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${skovra_resource_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/skovra)

install(FILES skovra.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
configure_file(example.halvmork.skovra.metainfo.xml.in example.halvmork.skovra.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/example.halvmork.skovra.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES icons/skovra.svg DESTINATION ${icons}/scalable/apps)
foreach(size IN ITEMS 48 64 128 256)
    install(FILES icons/skovra-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME skovra.png)
endforeach()

# Builds everything that is installed.
add_custom_target(installed)
add_dependencies(installed ${programs})

# install_compressed(FILE DESTINATION NAME): as NAME.gz, without a name or a time inside.
find_program(GZIP_PROGRAM gzip REQUIRED)
function(install_compressed file destination name)
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${GZIP_PROGRAM} -9nc ${file} > ${compressed}
        DEPENDS ${file} VERBATIM)
    add_custom_target(compressed-${name} ALL DEPENDS ${compressed})
    add_dependencies(installed compressed-${name})
    install(FILES ${compressed} DESTINATION ${destination})
endfunction()

foreach(page IN ITEMS skovra.6 skovra-gallery.6 skovra-record.1)
    configure_file(man/${page}.in man/${page} @ONLY)
    string(REGEX MATCH "[0-9]$" section ${page})
    install_compressed(${CMAKE_CURRENT_BINARY_DIR}/man/${page}
        ${CMAKE_INSTALL_MANDIR}/man${section} ${page})
endforeach()

# The .deb is for the system that it is built on, which its version names: Debian's own would be 1.1.0-1.
cmake_host_system_information(RESULT system QUERY DISTRIB_ID)
cmake_host_system_information(RESULT system_version QUERY DISTRIB_VERSION_ID)
cmake_host_system_information(RESULT suite QUERY DISTRIB_VERSION_CODENAME)
if(system STREQUAL "debian")
    set(revision 1~deb${system_version}u1)
else()
    set(revision 1~${system}${system_version})
endif()
execute_process(
    COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --rfc-email --date=${SKOVRA_RELEASE_DATE}
    OUTPUT_VARIABLE release_time OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(debian/changelog.in changelog @ONLY)
install_compressed(${CMAKE_CURRENT_BINARY_DIR}/changelog ${CMAKE_INSTALL_DOCDIR} changelog.Debian)
install(FILES debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ffmpeg, libpipewire-0.3-0t64 | libpipewire-0.3-0")
set(CPACK_PACKAGE_DESCRIPTION
"One piece of music and OpenGL scenes in sync with it, in a window or full
screen, for thirty-three seconds. Without a sound device it plays
silently, without a graphics card it renders on the CPU.
.
The package includes skovra-record, which makes a video of the show, and
skovra-gallery, which shows what the show's engine can draw.")
