# Copies libraries of this system and their licences into the folder being installed, and has the
# programs look for them there.
cmake_minimum_required(VERSION 3.25)
find_program(PATCHELF patchelf REQUIRED)
find_program(READELF readelf REQUIRED)
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})

# What any desktop has: OpenGL, X11, GTK, PulseAudio's and ALSA's libraries, and those of the
# language. All else that is linked is brought, and what that needs in turn: GLU does not start
# without libOpenGL, which leads to the system's libGLdispatch, nor cubeb without sndio's and JACK's,
# whether or not there is such a server.
set(system
    libEGL libGL libGLdispatch libX11 libXext libXi libXrandr libasound libgdk-3 libglib-2.0
    libgobject-2.0 libgtk-3 libpng16 libpulse libc libgcc_s libm libmvec libstdc++
    ld-linux-.*)
list(TRANSFORM system REPLACE "\\+" "\\\\+")
list(JOIN system "|" system)
list(TRANSFORM programs PREPEND ${folder}/ OUTPUT_VARIABLE files)
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${files} RESOLVED_DEPENDENCIES_VAR bundled
    PRE_EXCLUDE_REGEXES "^(${system})\\.so")
foreach(found IN LISTS bundled)
    # Its name is what the program asks for: a zip may be unpacked where there are no links.
    cmake_path(GET found FILENAME library)
    file(REAL_PATH ${found} real)
    file(INSTALL ${real} DESTINATION ${CMAKE_INSTALL_PREFIX}/lib TYPE PROGRAM RENAME ${library})
    string(REGEX REPLACE "^/usr" "" path ${real}) # known with or without
    execute_process(COMMAND dpkg-query --search "*${path}"
        OUTPUT_VARIABLE owner COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "[:,].*" "" package "${owner}")
    file(INSTALL /usr/share/doc/${package}/copyright
        DESTINATION ${CMAKE_INSTALL_PREFIX}/licences RENAME ${package}.txt)
endforeach()

# What the newest functions that are called came with.
file(GLOB libraries ${folder}/lib/*)
execute_process(COMMAND ${READELF} --version-info --wide ${files} ${libraries}
    OUTPUT_VARIABLE versions COMMAND_ERROR_IS_FATAL ANY)
foreach(name IN ITEMS GLIBC GLIBCXX)
    string(REGEX MATCHALL "${name}_[0-9.]+" found "${versions}")
    list(SORT found COMPARE NATURAL ORDER DESCENDING)
    list(GET found 0 ${name})
    string(REPLACE "${name}_" "" ${name} ${${name}})
endforeach()
configure_file(${nfo} ${folder}/skovra.nfo @ONLY)

# The old kind of run path: it also holds for what the libraries need.
foreach(program IN LISTS programs)
    execute_process(
        COMMAND ${PATCHELF} --force-rpath --set-rpath $ORIGIN/lib ${folder}/${program}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
