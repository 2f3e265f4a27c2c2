# Copies libraries of this system and their licences into the folder being installed, and points the
# programs' run paths there.
cmake_minimum_required(VERSION 3.25)
find_program(PATCHELF patchelf REQUIRED)
find_program(READELF readelf REQUIRED)
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})

# Part of any desktop: OpenGL, X11, GTK, PulseAudio's and ALSA's libraries, and those of the
# language. All other libraries are bundled, with their dependencies: GLU does not load without
# libOpenGL, which uses the system's libGLdispatch, nor cubeb without sndio's and JACK's libraries,
# whether or not those servers exist.
set(system
    libEGL libGL libGLdispatch libX11 libXext libXi libXrandr libasound libgdk-3 libglib-2.0
    libgobject-2.0 libgtk-3 libpng16 libpulse libc libgcc_s libm libmvec libstdc++
    libz ld-linux-.*)
list(TRANSFORM system REPLACE "\\+" "\\\\+")
list(JOIN system "|" system)
list(TRANSFORM programs PREPEND ${folder}/ OUTPUT_VARIABLE files)
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${files} RESOLVED_DEPENDENCIES_VAR bundled
    PRE_EXCLUDE_REGEXES "^(${system})\\.so")
foreach(found IN LISTS bundled)
    # Under the name that the program loads: a zip may be unpacked where links are not supported.
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

# The versions that introduced the newest functions called.
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

# DT_RPATH, not DT_RUNPATH: it also applies to the libraries' own dependencies.
foreach(program IN LISTS programs)
    execute_process(
        COMMAND ${PATCHELF} --force-rpath --set-rpath $ORIGIN/lib ${folder}/${program}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
