# skovra_add_resources(TARGET FILE...): has the files in resources/ beside that program, where the
# engine finds them by name; relative paths count from the caller's folder.
function(skovra_add_resources target)
    set(paths)
    foreach(path IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH path NORMALIZE)
        list(APPEND paths ${path})
    endforeach()
    set(folder $<TARGET_FILE_DIR:${target}>/resources)
    # In every build, for a file may have changed, or have been removed there.
    add_custom_target(${target}_resources
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${paths} ${folder}
        VERBATIM)
    add_dependencies(${target} ${target}_resources)
endfunction()
