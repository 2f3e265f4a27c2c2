// OpenGL's and GLU's functions by their own names, for the current context.
#include "Current.h"

#include <GL/gl.h>
#include <GL/glu.h>

using opengl::Current;

extern "C" {

GLenum glGetError() {
    return Current().GetError();
}

void glBegin(GLenum mode) {
    Current().Begin(mode);
}

void glEnd() {
    Current().End();
}

void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    Current().PlaceVertex(x, y, z);
}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    Current().SetNormal(x, y, z);
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    Current().SetTexCoord(s, t);
}

void glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    Current().SetColor(red, green, blue);
}

void glColor3ub(GLubyte red, GLubyte green, GLubyte blue) {
    Current().SetColor(static_cast<float>(red) / 255, static_cast<float>(green) / 255,
                       static_cast<float>(blue) / 255);
}

void glPushAttrib(GLbitfield groups) {
    Current().PushAttrib(groups);
}

void glPopAttrib() {
    Current().PopAttrib();
}

void glMatrixMode(GLenum mode) {
    Current().MatrixMode(mode);
}

void glLoadIdentity() {
    Current().LoadIdentity();
}

void glPushMatrix() {
    Current().PushMatrix();
}

void glPopMatrix() {
    Current().PopMatrix();
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    Current().MultiplyMatrix(opengl::Translation(x, y, z));
}

void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z) {
    Current().MultiplyMatrix(opengl::Rotation(degrees, x, y, z));
}

void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    Current().MultiplyMatrix(opengl::Scaling(x, y, z));
}

void glEnable(GLenum capability) {
    Current().Enable(capability);
}

void glDisable(GLenum capability) {
    Current().Disable(capability);
}

GLboolean glIsEnabled(GLenum capability) {
    return Current().IsEnabled(capability);
}

void glBlendFunc(GLenum source, GLenum destination) {
    Current().BlendFunc(source, destination);
}

void glDepthFunc(GLenum function) {
    Current().DepthFunc(function);
}

void glAlphaFunc(GLenum function, GLclampf reference) {
    Current().AlphaFunc(function, reference);
}

void glHint(GLenum target, GLenum mode) {
    Current().Hint(target, mode);
}

void glLineWidth(GLfloat width) {
    Current().LineWidth(width);
}

void glPointSize(GLfloat size) {
    Current().PointSize(size);
}

void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    Current().SetViewport(x, y, width, height);
}

void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    Current().ClearColor(red, green, blue, alpha);
}

void glClearDepth(GLclampd depth) {
    Current().ClearDepth(depth);
}

void glClear(GLbitfield buffers) {
    Current().Clear(buffers);
}

void glLightModelfv(GLenum parameter, const GLfloat* values) {
    Current().LightModel(parameter, values);
}

void glLightf(GLenum light, GLenum parameter, GLfloat value) {
    Current().SetLight(light, parameter, &value, 1);
}

void glLightfv(GLenum light, GLenum parameter, const GLfloat* values) {
    Current().SetLight(light, parameter, values, 4);
}

void glMateriali(GLenum face, GLenum parameter, GLint value) {
    const auto converted = static_cast<float>(value);
    Current().SetMaterial(face, parameter, &converted, 1);
}

void glMaterialfv(GLenum face, GLenum parameter, const GLfloat* values) {
    Current().SetMaterial(face, parameter, values, 4);
}

void glColorMaterial(GLenum face, GLenum mode) {
    Current().ColorMaterial(face, mode);
}

void glTexGeni(GLenum coordinate, GLenum parameter, GLint mode) {
    Current().TexGen(coordinate, parameter, mode);
}

void glGenTextures(GLsizei count, GLuint* names) {
    Current().GenTextures(count, names);
}

void glBindTexture(GLenum target, GLuint name) {
    Current().BindTexture(target, name);
}

void glTexParameteri(GLenum target, GLenum parameter, GLint value) {
    Current().TexParameter(target, parameter, value);
}

void gluPerspective(GLdouble fieldOfViewDegrees, GLdouble aspect, GLdouble near, GLdouble far) {
    Current().MultiplyMatrix(opengl::Perspective(fieldOfViewDegrees, aspect, near, far));
}

void gluLookAt(GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY,
               GLdouble centerZ, GLdouble upX, GLdouble upY, GLdouble upZ) {
    Current().MultiplyMatrix(
        opengl::View({eyeX, eyeY, eyeZ}, {centerX, centerY, centerZ}, {upX, upY, upZ}));
}

} // extern "C"
