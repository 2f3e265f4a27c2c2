# Copies libraries of this system and their licences into the folder being installed, and has the
# programs look for them there.
cmake_minimum_required(VERSION 3.25)
find_program(PATCHELF patchelf REQUIRED)

# Those linked that a desktop may lack, and what those need in turn: GLU does not start without
# libOpenGL, which leads to the system's libGLdispatch, nor cubeb without sndio's and JACK's,
# whether or not there is such a server. OpenGL, X11, GTK, PulseAudio's and ALSA's are the system's.
set(bundled
    libGLU.so.1
    libOpenGL.so.0
    libXxf86vm.so.1
    libbsd.so.0
    libcubeb.so.0
    libdb-5.3.so
    libglut.so.3.12
    libgomp.so.1
    libjack.so.0
    libkissfft-float.so.131
    libmd.so.0
    libmpg123.so.0
    libsndio.so.7
    libsoxr.so.0
    libspeexdsp.so.1)
foreach(library IN LISTS bundled)
    find_file(found NAMES ${library} PATHS /usr/lib /lib
        PATH_SUFFIXES ${libraryArchitecture} NO_CACHE REQUIRED)
    file(REAL_PATH ${found} real)
    # Its name is what the program asks for: a zip may be unpacked where there are no links.
    file(INSTALL ${real} DESTINATION ${CMAKE_INSTALL_PREFIX}/lib TYPE PROGRAM RENAME ${library})
    execute_process(COMMAND dpkg-query --search ${real}
        OUTPUT_VARIABLE owner COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "[:,].*" "" package "${owner}")
    file(INSTALL /usr/share/doc/${package}/copyright
        DESTINATION ${CMAKE_INSTALL_PREFIX}/licences RENAME ${package}.txt)
    unset(found)
endforeach()

# The old kind of run path: it also holds for what the libraries need.
foreach(program IN LISTS programs)
    execute_process(
        COMMAND ${PATCHELF} --force-rpath --set-rpath $ORIGIN/lib
            $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${program}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
