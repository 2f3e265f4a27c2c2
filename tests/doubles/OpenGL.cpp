#include "OpenGL.h"

#include "Effects.h"

#include <GL/gl.h>

#include <cstdio>
#include <map>
#include <string>

namespace doubles {

OpenGLState openGL;

namespace {

/// Enumerators that are one of their kind; those of small values are named where they are used.
Word Name(GLenum value) {
    static const std::map<GLenum, const char*> names = {
        {GL_AMBIENT_AND_DIFFUSE, "GL_AMBIENT_AND_DIFFUSE"},
        {GL_BLEND, "GL_BLEND"},
        {GL_COLOR_MATERIAL, "GL_COLOR_MATERIAL"},
        {GL_DEPTH_TEST, "GL_DEPTH_TEST"},
        {GL_DIFFUSE, "GL_DIFFUSE"},
        {GL_FRONT, "GL_FRONT"},
        {GL_GREATER, "GL_GREATER"},
        {GL_LEQUAL, "GL_LEQUAL"},
        {GL_LIGHT0, "GL_LIGHT0"},
        {GL_LIGHT_MODEL_AMBIENT, "GL_LIGHT_MODEL_AMBIENT"},
        {GL_MODELVIEW, "GL_MODELVIEW"},
        {GL_NICEST, "GL_NICEST"},
        {GL_ONE_MINUS_SRC_ALPHA, "GL_ONE_MINUS_SRC_ALPHA"},
        {GL_PERSPECTIVE_CORRECTION_HINT, "GL_PERSPECTIVE_CORRECTION_HINT"},
        {GL_POSITION, "GL_POSITION"},
        {GL_PROJECTION, "GL_PROJECTION"},
        {GL_S, "GL_S"},
        {GL_SHININESS, "GL_SHININESS"},
        {GL_SPECULAR, "GL_SPECULAR"},
        {GL_SPHERE_MAP, "GL_SPHERE_MAP"},
        {GL_SPOT_CUTOFF, "GL_SPOT_CUTOFF"},
        {GL_SRC_ALPHA, "GL_SRC_ALPHA"},
        {GL_T, "GL_T"},
        {GL_TEXTURE, "GL_TEXTURE"},
        {GL_TEXTURE_2D, "GL_TEXTURE_2D"},
        {GL_TEXTURE_GEN_MODE, "GL_TEXTURE_GEN_MODE"},
        {GL_TEXTURE_GEN_S, "GL_TEXTURE_GEN_S"},
        {GL_TEXTURE_GEN_T, "GL_TEXTURE_GEN_T"},
    };
    if (const auto name = names.find(value); name != names.end()) {
        return {name->second};
    }
    char number[16];
    std::snprintf(number, sizeof number, "0x%04X", value);
    return {number};
}

Word Primitive(GLenum value) {
    switch (value) {
    case GL_LINES:
        return {"GL_LINES"};
    case GL_TRIANGLES:
        return {"GL_TRIANGLES"};
    case GL_QUADS:
        return {"GL_QUADS"};
    default:
        return Name(value);
    }
}

Word ClearMask(GLbitfield mask) {
    const bool both = mask == (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    return both ? Word{"GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT"} : Name(mask);
}

Word FourFloats(const GLfloat* values) {
    return {"{" + Text(values[0]) + ", " + Text(values[1]) + ", " + Text(values[2]) + ", " +
            Text(values[3]) + "}"};
}

} // namespace

} // namespace doubles

using namespace doubles;

void glAlphaFunc(GLenum func, GLclampf ref) {
    Record("glAlphaFunc", Name(func), ref);
}

void glBegin(GLenum mode) {
    Record("glBegin", Primitive(mode));
}

void glBindTexture(GLenum target, GLuint texture) {
    Record("glBindTexture", Name(target), texture);
}

void glBlendFunc(GLenum sfactor, GLenum dfactor) {
    Record("glBlendFunc", Name(sfactor), Name(dfactor));
}

void glClear(GLbitfield mask) {
    Record("glClear", ClearMask(mask));
}

void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    Record("glClearColor", red, green, blue, alpha);
}

void glClearDepth(GLclampd depth) {
    Record("glClearDepth", depth);
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    Record("glColor3f", red, green, blue);
}

void glColor3ub(GLubyte red, GLubyte green, GLubyte blue) {
    Record("glColor3ub", int{red}, int{green}, int{blue});
}

void glColorMaterial(GLenum face, GLenum mode) {
    Record("glColorMaterial", Name(face), Name(mode));
}

void glDepthFunc(GLenum func) {
    Record("glDepthFunc", Name(func));
}

void glDisable(GLenum cap) {
    Record("glDisable", Name(cap));
    openGL.enabled.erase(cap);
}

void glEnable(GLenum cap) {
    Record("glEnable", Name(cap));
    openGL.enabled.insert(cap);
}

void glEnd() {
    Record("glEnd");
}

void glHint(GLenum target, GLenum mode) {
    Record("glHint", Name(target), Name(mode));
}

GLboolean glIsEnabled(GLenum cap) {
    Record("glIsEnabled", Name(cap));
    return openGL.enabled.contains(cap) ? GL_TRUE : GL_FALSE;
}

void glLightModelfv(GLenum pname, const GLfloat* params) {
    Record("glLightModelfv", Name(pname), FourFloats(params));
}

void glLightf(GLenum light, GLenum pname, GLfloat param) {
    Record("glLightf", Name(light), Name(pname), param);
}

void glLightfv(GLenum light, GLenum pname, const GLfloat* params) {
    Record("glLightfv", Name(light), Name(pname), FourFloats(params));
}

void glLoadIdentity() {
    Record("glLoadIdentity");
}

void glMaterialfv(GLenum face, GLenum pname, const GLfloat* params) {
    Record("glMaterialfv", Name(face), Name(pname), FourFloats(params));
}

void glMateriali(GLenum face, GLenum pname, GLint param) {
    Record("glMateriali", Name(face), Name(pname), param);
}

void glMatrixMode(GLenum mode) {
    Record("glMatrixMode", Name(mode));
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    Record("glNormal3f", x, y, z);
}

void glPointSize(GLfloat size) {
    Record("glPointSize", size);
}

void glPopMatrix() {
    Record("glPopMatrix");
}

void glPushMatrix() {
    Record("glPushMatrix");
}

void glRotatef(GLfloat angle, GLfloat x, GLfloat y, GLfloat z) {
    Record("glRotatef", angle, x, y, z);
}

void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    Record("glScalef", x, y, z);
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    Record("glTexCoord2f", s, t);
}

void glTexGeni(GLenum coord, GLenum pname, GLint param) {
    if (pname == GL_TEXTURE_GEN_MODE) {
        Record("glTexGeni", Name(coord), Name(pname), Name(static_cast<GLenum>(param)));
    } else {
        Record("glTexGeni", Name(coord), Name(pname), param);
    }
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    Record("glTranslatef", x, y, z);
}

void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    Record("glVertex3f", x, y, z);
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    Record("glViewport", x, y, width, height);
}
