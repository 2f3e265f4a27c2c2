// Faults for the kept pictures to find: the show drawn wrong in the way that FAULT names.
#include <GL/gl.h>

#include <cstdlib>
#include <string_view>

// The names that the linker's --wrap gives to OpenGL's operations and to their stand-ins.
extern "C" {
void __real_glBindTexture(GLenum target, GLuint texture);
void __real_glColor3f(GLfloat red, GLfloat green, GLfloat blue);
void __real_glTexCoord2f(GLfloat s, GLfloat t);
void __wrap_glBindTexture(GLenum target, GLuint texture);
void __wrap_glColor3f(GLfloat red, GLfloat green, GLfloat blue);
void __wrap_glTexCoord2f(GLfloat s, GLfloat t);
}

namespace {

bool Is(std::string_view fault) {
    const char* wanted = std::getenv("FAULT");
    return wanted != nullptr && fault == wanted;
}

constexpr float redOfEleventhBar = 21.0F / 250.0F;
constexpr GLuint titlePicture = 2; // loaded second
constexpr GLuint creditsPicture = 3;

} // namespace

void __wrap_glBindTexture(GLenum target, GLuint texture) {
    static const bool wrong = Is("picture");
    // While it is loaded the texture is the last there is: only what is bound later is wrong.
    static int creditsBound = 0;
    creditsBound += texture == creditsPicture ? 1 : 0;
    const bool swap = wrong && texture == creditsPicture && creditsBound > 1;
    __real_glBindTexture(target, swap ? titlePicture : texture);
}

void __wrap_glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    static const bool wrong = Is("bar");
    if (wrong && red == redOfEleventhBar) {
        __real_glColor3f(0.0F, 0.0F, 1.0F);
    } else {
        __real_glColor3f(red, green, blue);
    }
}

void __wrap_glTexCoord2f(GLfloat s, GLfloat t) {
    static const bool wrong = Is("upside-down");
    __real_glTexCoord2f(s, wrong ? 1.0F - t : t);
}
