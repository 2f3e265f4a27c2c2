// The engine object: owns the engine's services and does the engine's part of every frame.
#pragma once

#include <string>

namespace engine {

class FmodEngine;
class LightEngine;
class TextureManager;
class TimeEngine;

/// Has no state and no behaviour; two fields of DemoEngine point to one.
class Placeholder {};

/// One object for the whole run. It and what it owns live until the process ends.
/// Main thread only.
class DemoEngine {
public:
    /// @p newTitle: for the window's title bar, the banner and the alert boxes.
    explicit DemoEngine(std::string newTitle);

    /// Takes the music engine, not owned, and makes the demo clock that follows it. Call once.
    void SetFmod(FmodEngine* musicEngine);

    /// The engine's part of a frame: applies the camera offset to the current matrix, updates the
    /// spectrum and the clock. Needs a current OpenGL context, SetFmod and
    /// FmodEngine::Play: before Play the process ends with status 255.
    void Refresh();

    /// What is drawn from here on reflects the bound texture (sphere mapping): its texture
    /// coordinates come from its normals. DisableSEM ends that. Both need a current OpenGL context.
    /// EnableSEM leaves GL_INVALID_ENUM for glGetError.
    void EnableSEM();
    void DisableSEM();

    float viewExtentX;
    float viewExtentY;
    float cameraX; ///< camera offset in model units, applied by Refresh
    float cameraY;
    float cameraZ;
    Placeholder* placeholderA;
    Placeholder* placeholderB;
    TextureManager* textures;
    FmodEngine* fmod; ///< null until SetFmod
    LightEngine* light;
    float* clearColour; ///< 304 floats, of which the first four are red, green, blue, alpha
    TimeEngine* time;   ///< null until SetFmod
    std::string title;
};

} // namespace engine
