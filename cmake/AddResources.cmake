# skovra_add_resources(TARGET FILE...): copies the files to resources/ beside the program, where the
# engine finds them by name; paths are relative to the caller's folder.
function(skovra_add_resources target)
    set(paths)
    foreach(path IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH path NORMALIZE)
        list(APPEND paths ${path})
    endforeach()
    set(folder $<TARGET_FILE_DIR:${target}>/resources)
    # In every build: a file may have changed, or its copy been removed.
    add_custom_target(${target}_resources
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${paths} ${folder}
        VERBATIM)
    add_dependencies(${target} ${target}_resources)
endfunction()
