# The engine for programs outside this tree, found by find_package(Skovra).
# Installed when asked for by name: `cmake --install build/release --component dev`.
include(CMakePackageConfigHelpers)
set(dev COMPONENT dev EXCLUDE_FROM_ALL)
set(dev_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/Skovra)
set(dev_headers ${CMAKE_INSTALL_INCLUDEDIR}/skovra)

# What Skovra::live is made of; CMake says if one is missing.
set(services Carbon CoreFoundation FMOD glpng objc)
list(TRANSFORM services REPLACE "(.+)" "platform_\\1_api" OUTPUT_VARIABLE service_apis)
install(TARGETS skovra_engine EXPORT SkovraTargets
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/skovra ${dev}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS ${service_apis} EXPORT SkovraTargets
    INCLUDES DESTINATION ${dev_headers}/platform)
install(TARGETS
        skovra_live skovra_live_platform pipewire_headers
        platform_Carbon_alerts platform_Carbon_cursor platform_CoreFoundation platform_FMOD
        platform_FMOD_decoder platform_FMOD_decoder_api platform_FMOD_mix platform_FMOD_mp3
        platform_FMOD_music
        platform_FMOD_output platform_FMOD_output_api platform_FMOD_timeline platform_GLUT
        platform_OpenGL platform_Room platform_RoomAtStart platform_StandardStreams platform_glpng
        platform_objc
    EXPORT SkovraTargets
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/skovra ${dev})
set_target_properties(skovra_engine PROPERTIES EXPORT_NAME engine)
set_target_properties(skovra_live PROPERTIES EXPORT_NAME live)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/engine/ DESTINATION ${dev_headers} ${dev}
    FILES_MATCHING PATTERN *.h)
foreach(service IN LISTS services)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/platform/${service}/include/
        DESTINATION ${dev_headers}/platform ${dev})
endforeach()

install(EXPORT SkovraTargets NAMESPACE Skovra:: DESTINATION ${dev_cmake} ${dev})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/SkovraConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
        SkovraConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/SkovraConfigVersion.cmake
        ${PROJECT_SOURCE_DIR}/cmake/AddResources.cmake
    DESTINATION ${dev_cmake} ${dev})
