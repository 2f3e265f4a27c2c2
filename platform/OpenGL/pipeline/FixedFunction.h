// Fixed-function OpenGL, as far as engine, demo and examples call it, above a canvas of triangles.
#pragma once

#include "Canvas.h"
#include "Lighting.h"
#include "Matrix.h"
#include "MatrixStack.h"

#include <GL/gl.h>

#include <array>
#include <map>
#include <vector>

namespace opengl {

/// A context. Each operation is the call of its name, gl or glu before it: the same effects, the
/// same errors, which GetError answers. Values of OpenGL that are not here are refused like such
/// that do not exist: GL_INVALID_ENUM. Draws as few batches as it can: one until textures
/// or state change.
class FixedFunction {
public:
    /// @p canvas outlives this.
    explicit FixedFunction(Canvas& canvas);

    /// Draws what is left of the frame.
    void FinishFrame();

    GLenum GetError();

    void Begin(GLenum mode);
    void End();
    void PlaceVertex(float x, float y, float z);
    void SetNormal(float x, float y, float z);
    void SetTexCoord(float s, float t);
    void SetColor(float red, float green, float blue);

    /// What SetNormal, SetTexCoord and SetColor set: @p groups is GL_CURRENT_BIT.
    void PushAttrib(GLbitfield groups);
    void PopAttrib();

    void MatrixMode(GLenum mode);
    void LoadIdentity();
    void PushMatrix();
    void PopMatrix();

    /// Of glTranslatef, glRotatef, glScalef, gluPerspective, gluLookAt.
    void MultiplyMatrix(const Matrix& matrix);

    void Enable(GLenum capability);
    void Disable(GLenum capability);
    GLboolean IsEnabled(GLenum capability);

    void BlendFunc(GLenum source, GLenum destination);
    void DepthFunc(GLenum function);
    void AlphaFunc(GLenum function, float reference);
    void Hint(GLenum target, GLenum mode);
    void LineWidth(float width);
    void PointSize(float size);
    void SetViewport(GLint x, GLint y, GLsizei width, GLsizei height);

    void ClearColor(float red, float green, float blue, float alpha);
    void ClearDepth(double depth);
    void Clear(GLbitfield buffers);

    void LightModel(GLenum parameter, const float* values);
    /// @p count: how many values there are, 1 for glLightf.
    void SetLight(GLenum light, GLenum parameter, const float* values, int count);
    void SetMaterial(GLenum face, GLenum parameter, const float* values, int count);
    void ColorMaterial(GLenum face, GLenum mode);

    void TexGen(GLenum coordinate, GLenum parameter, GLint mode);
    void GenTextures(GLsizei count, GLuint* names);
    void BindTexture(GLenum target, GLuint name);
    void TexParameter(GLenum target, GLenum parameter, GLint value);

    /// The name of the bound texture, and that it has a picture now.
    GLuint BoundTexture() const { return boundTexture; }
    void SetTextureHasImage();

private:
    struct Texture {
        Sampling sampling;
        bool hasImage = false;
    };

    /// Of the vertices to come.
    struct Attributes {
        Colour colour = {1, 1, 1, 1};
        Vector3 normal = {0, 0, 1};
        std::array<float, 2> texCoord = {0, 0};
    };

    struct GeneratedCoordinate {
        bool enabled = false;
        GLenum mode = GL_EYE_LINEAR;
    };

    void Raise(GLenum newError);
    bool RaiseUnless(bool condition, GLenum newError);
    bool IsOutsideBegin();
    MatrixStack& Stack();
    bool* Capability(GLenum name);
    void SetCapability(GLenum name, bool enabled);
    void FollowColour();
    DrawState StateOfNow() const;
    void PrepareTransforms();
    Vector3 EyeNormal() const;
    Colour ColourOf(const Vector4& eyePosition) const;
    Vector3 TextureOf(const Vector4& position, const Vector4& eyePosition) const;
    void DrawBatch();

    Canvas& canvas;
    GLenum error = GL_NO_ERROR;

    MatrixStack modelView{32};
    MatrixStack projection{32};
    MatrixStack textureMatrices{10};
    GLenum matrixMode = GL_MODELVIEW;

    bool alphaTest = false;
    bool blend = false;
    bool colourMaterial = false;
    bool depthTest = false;
    bool lightingEnabled = false;
    bool normalize = false;
    bool texturing = false;
    std::array<GeneratedCoordinate, 2> generated; // s, t

    GLenum alphaFunction = GL_ALWAYS;
    float alphaReference = 0;
    GLenum blendSource = GL_ONE;
    GLenum blendDestination = GL_ZERO;
    GLenum depthFunction = GL_LESS;
    float lineWidth = 1;
    float pointSize = 1;
    Viewport viewport;
    ClearValues clearValues;

    Lighting lighting;
    GLenum colourMaterialMode = GL_AMBIENT_AND_DIFFUSE;
    bool colourMaterialFront = true;

    std::map<GLuint, Texture> textures = {{0U, Texture{}}};
    GLuint boundTexture = 0;

    Attributes current;
    std::vector<Attributes> savedAttributes;

    // Of the primitives between Begin and End.
    static constexpr GLenum outside = GL_POLYGON + 1;
    GLenum primitive = outside;
    std::vector<Vertex> primitiveVertices;
    DrawState primitiveState;
    Matrix modelViewProjection;
    NormalTransform normalTransform;

    // To be drawn.
    DrawState batchState;
    std::vector<Vertex> batch;
};

} // namespace opengl
