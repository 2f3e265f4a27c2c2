// A nucleus with a ring of electrons, each joined to it by a line.
#pragma once

#include <cstdint>

namespace engine {

/// An atom drawn from its fields, which are not initialised.
/// Drawing needs GLUT and a current OpenGL context; it leaves the current matrix as it was and the
/// current colour changed.
class Atom {
public:
    /// Draws nucleus and electrons. Electron k (from 0) stands at (k + 1) * (360 / `electrons`)
    /// degrees, the quotient rounded down: seven electrons do not close the ring.
    void Draw();

    /// Draws one electron of radius @p r, @p d from the origin, turned by @p a degrees about y.
    void DrawElectron(float d, float r, float a);

    std::uint32_t electrons;
    float x; ///< centre of the nucleus, in model units
    float y;
    float z;
    float angle;    ///< tilt of every electron about y, in degrees
    float distance; ///< of each electron from the nucleus
    float spare;    ///< not used
    float radius;   ///< of each electron
};

/// Draws one electron, as Atom::DrawElectron.
void Electron(float distance, float radius, float angle);

/// Draws an atom as Atom::Draw, its electrons of radius 20 at a distance of 200.
void Atoms(float x, float y, float z, unsigned long electrons, float angle);

} // namespace engine
