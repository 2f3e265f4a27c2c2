#include "WebCanvas.h"

#include "BrowserPicture.h"
#include "Current.h"
#include "Frame.h"

#include <cstddef>

// Of webgl.js, which reads DrawState and Vertex by their layout.
extern "C" {
void SkovraGlClear(GLbitfield buffers, float red, float green, float blue, float alpha,
                   float depth);
void SkovraGlDraw(const opengl::DrawState* state, const opengl::Vertex* vertices, int count);
unsigned int SkovraGlLargestTextureSide();
int SkovraGlUploadPicture(GLuint texture, const char* path, unsigned int width,
                          unsigned int height);
}

namespace opengl {

static_assert(sizeof(Vertex) == 44);
static_assert(offsetof(Vertex, colour) == 16);
static_assert(offsetof(Vertex, texture) == 32);
static_assert(sizeof(DrawState) == 60);
static_assert(offsetof(DrawState, texture) == 0);
static_assert(offsetof(DrawState, sampling) == 4);
static_assert(offsetof(DrawState, blendSource) == 20);
static_assert(offsetof(DrawState, blendDestination) == 24);
static_assert(offsetof(DrawState, depthFunction) == 28);
static_assert(offsetof(DrawState, alphaFunction) == 32);
static_assert(offsetof(DrawState, alphaReference) == 36);
static_assert(offsetof(DrawState, depthTest) == 40);
static_assert(offsetof(DrawState, viewport) == 44);

void WebCanvas::Clear(const ClearValues& values) {
    if (values.buffers == (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)) {
        steps.clear();
        allVertices.clear();
    }
    steps.push_back({.clear = values, .state = {}, .vertices = 0});
}

void WebCanvas::Draw(const DrawState& state, std::span<const Vertex> vertices) {
    steps.push_back({.clear = {}, .state = state, .vertices = vertices.size()});
    allVertices.insert(allVertices.end(), vertices.begin(), vertices.end());
}

void WebCanvas::Show() {
    const Vertex* first = allVertices.data();
    for (const Step& step : steps) {
        if (step.vertices == 0) {
            const Colour& colour = step.clear.colour;
            SkovraGlClear(step.clear.buffers, colour[0], colour[1], colour[2], colour[3],
                          step.clear.depth);
        } else {
            SkovraGlDraw(&step.state, first, static_cast<int>(step.vertices));
            first += step.vertices;
        }
    }
    steps.clear();
    allVertices.clear();
}

static WebCanvas& PageCanvas() {
    static WebCanvas canvas;
    return canvas;
}

FixedFunction& Current() {
    static FixedFunction context(PageCanvas());
    return context;
}

unsigned int LargestTextureSide() {
    return SkovraGlLargestTextureSide();
}

bool UploadBrowserPicture(const char* path, unsigned int width, unsigned int height) {
    if (SkovraGlUploadPicture(Current().BoundTexture(), path, width, height) == 0) {
        return false;
    }
    Current().SetTextureHasImage();
    return true;
}

} // namespace opengl

void SkovraGlFinishFrame() {
    opengl::Current().FinishFrame();
    opengl::PageCanvas().Show();
}
