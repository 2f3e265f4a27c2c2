// The same calls to the system's OpenGL and to the fixed-function pipeline.
#pragma once

#include "RecordingCanvas.h"

#include "FixedFunction.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <array>

namespace gltest {

/// Needs a current context of OpenGL.
class Both {
public:
    RecordingCanvas canvas;
    opengl::FixedFunction ours{canvas};

    void Begin(GLenum mode) {
        glBegin(mode);
        ours.Begin(mode);
    }

    void End() {
        glEnd();
        ours.End();
    }

    void Vertex(float x, float y, float z) {
        glVertex3f(x, y, z);
        ours.PlaceVertex(x, y, z);
    }

    void Normal(float x, float y, float z) {
        glNormal3f(x, y, z);
        ours.SetNormal(x, y, z);
    }

    void TexCoord(float s, float t) {
        glTexCoord2f(s, t);
        ours.SetTexCoord(s, t);
    }

    void Color(float red, float green, float blue) {
        glColor3f(red, green, blue);
        ours.SetColor(red, green, blue);
    }

    void MatrixMode(GLenum mode) {
        glMatrixMode(mode);
        ours.MatrixMode(mode);
    }

    void LoadIdentity() {
        glLoadIdentity();
        ours.LoadIdentity();
    }

    void PushMatrix() {
        glPushMatrix();
        ours.PushMatrix();
    }

    void PopMatrix() {
        glPopMatrix();
        ours.PopMatrix();
    }

    void PushAttrib(GLbitfield groups) {
        glPushAttrib(groups);
        ours.PushAttrib(groups);
    }

    void PopAttrib() {
        glPopAttrib();
        ours.PopAttrib();
    }

    void Translate(float x, float y, float z) {
        glTranslatef(x, y, z);
        ours.MultiplyMatrix(opengl::Translation(x, y, z));
    }

    void Rotate(float degrees, float x, float y, float z) {
        glRotatef(degrees, x, y, z);
        ours.MultiplyMatrix(opengl::Rotation(degrees, x, y, z));
    }

    void Scale(float x, float y, float z) {
        glScalef(x, y, z);
        ours.MultiplyMatrix(opengl::Scaling(x, y, z));
    }

    void Perspective(double fieldOfViewDegrees, double aspect, double near, double far) {
        gluPerspective(fieldOfViewDegrees, aspect, near, far);
        ours.MultiplyMatrix(opengl::Perspective(fieldOfViewDegrees, aspect, near, far));
    }

    void LookAt(const std::array<double, 3>& eye, const std::array<double, 3>& center,
                const std::array<double, 3>& up) {
        gluLookAt(eye[0], eye[1], eye[2], center[0], center[1], center[2], up[0], up[1], up[2]);
        ours.MultiplyMatrix(opengl::View(eye, center, up));
    }

    void Enable(GLenum capability) {
        glEnable(capability);
        ours.Enable(capability);
    }

    void Disable(GLenum capability) {
        glDisable(capability);
        ours.Disable(capability);
    }

    void Viewport(GLint x, GLint y, GLsizei width, GLsizei height) {
        glViewport(x, y, width, height);
        ours.SetViewport(x, y, width, height);
    }

    void LineWidth(float width) {
        glLineWidth(width);
        ours.LineWidth(width);
    }

    void PointSize(float size) {
        glPointSize(size);
        ours.PointSize(size);
    }

    void BlendFunc(GLenum source, GLenum destination) {
        glBlendFunc(source, destination);
        ours.BlendFunc(source, destination);
    }

    void DepthFunc(GLenum function) {
        glDepthFunc(function);
        ours.DepthFunc(function);
    }

    void AlphaFunc(GLenum function, float reference) {
        glAlphaFunc(function, reference);
        ours.AlphaFunc(function, reference);
    }

    void Hint(GLenum target, GLenum mode) {
        glHint(target, mode);
        ours.Hint(target, mode);
    }

    void Clear(GLbitfield buffers) {
        glClear(buffers);
        ours.Clear(buffers);
    }

    void BindTexture(GLenum target, GLuint name) {
        glBindTexture(target, name);
        ours.BindTexture(target, name);
    }

    void TexParameter(GLenum target, GLenum parameter, GLint value) {
        glTexParameteri(target, parameter, value);
        ours.TexParameter(target, parameter, value);
    }

    void LightModel(GLenum parameter, const float* values) {
        glLightModelfv(parameter, values);
        ours.LightModel(parameter, values);
    }

    void Light(GLenum light, GLenum parameter, float value) {
        glLightf(light, parameter, value);
        ours.SetLight(light, parameter, &value, 1);
    }

    void Light(GLenum light, GLenum parameter, const float* values) {
        glLightfv(light, parameter, values);
        ours.SetLight(light, parameter, values, 4);
    }

    void Material(GLenum face, GLenum parameter, float value) {
        glMaterialf(face, parameter, value);
        ours.SetMaterial(face, parameter, &value, 1);
    }

    void Material(GLenum face, GLenum parameter, const float* values) {
        glMaterialfv(face, parameter, values);
        ours.SetMaterial(face, parameter, values, 4);
    }

    void ColorMaterial(GLenum face, GLenum mode) {
        glColorMaterial(face, mode);
        ours.ColorMaterial(face, mode);
    }

    void TexGen(GLenum coordinate, GLenum parameter, GLint mode) {
        glTexGeni(coordinate, parameter, mode);
        ours.TexGen(coordinate, parameter, mode);
    }
};

} // namespace gltest
