# Completes the site beside the programs: pages that name what to load, and how large it is.
cmake_minimum_required(VERSION 3.25)

set(POLICY "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; \
img-src 'self'; connect-src 'self'; base-uri 'none'; form-action 'none'")

file(MAKE_DIRECTORY ${SITE}/resources)

# preload(FILE ATTRIBUTES): a line of PRELOADS; page.js loads those with their size.
macro(preload file attributes)
    file(SIZE ${SITE}/${file} bytes)
    string(APPEND PRELOADS
        "<link rel=\"preload\" href=\"${file}\" as=\"fetch\" crossorigin data-bytes=\"${bytes}\"${attributes}>\n")
endmacro()

# write_page(PAGE PROGRAM RESOURCE...)
function(write_page page program)
    set(PRELOADS "<link rel=\"preload\" href=\"${program}.js\" as=\"script\">\n")
    preload(${program}.wasm "")
    foreach(path IN LISTS ARGN)
        file(COPY ${path} DESTINATION ${SITE}/resources)
        cmake_path(GET path FILENAME resource)
        preload(resources/${resource} " data-resource=\"${resource}\"")
    endforeach()
    string(STRIP "${PRELOADS}" PRELOADS)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${page}.in ${SITE}/${page} @ONLY)
endfunction()

file(COPY_FILE ${ICON} ${SITE}/icon.png)
foreach(file IN ITEMS exhibits.js page.js style.css)
    file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/${file} ${SITE}/${file})
endforeach()
# The programs contain parts of these packages, whose licences ask to be there.
file(READ ${LICENCE} licences)
foreach(package IN ITEMS emscripten libkissfft-dev libglut-dev)
    file(READ /usr/share/doc/${package}/copyright copyright)
    string(APPEND licences "\n\n${package}\n\n${copyright}")
endforeach()
file(WRITE ${SITE}/licences.txt "${licences}")

write_page(index.html skovra ${RESOURCES})
list(FILTER RESOURCES INCLUDE REGEX "/(skovr|texture)\\.png$")
write_page(gallery.html gallery ${RESOURCES})
if(NOT EXISTS ${SITE}/downloads.json)
    file(WRITE ${SITE}/downloads.json "[]\n")
endif()
