// Writes down each time that the show shows the mouse cursor, in the file that CURSOR_LOG names, if
// any.
#include <Carbon/Carbon.h>

#include <cstdio>
#include <cstdlib>

// The names that the linker's --wrap gives to ShowCursor and to its stand-in.
extern "C" OSStatus __real_ShowCursor();
extern "C" OSStatus __wrap_ShowCursor();

OSStatus __wrap_ShowCursor() {
    const char* path = std::getenv("CURSOR_LOG");
    if (std::FILE* log = path != nullptr ? std::fopen(path, "a") : nullptr; log != nullptr) {
        std::fputs("shown\n", log);
        std::fclose(log);
    }
    return __real_ShowCursor();
}
