// GLUT's sphere.
#include <GL/gl.h>
#include <GL/glut.h>

#include <cmath>
#include <numbers>

namespace {

/// Points of a ball of radius 1, numbered by rings from the north pole and by meridians.
class Globe {
public:
    Globe(int newMeridians, int newRings) : meridians(newMeridians), rings(newRings) {}

    void Draw(double radius) const {
        for (int ring = 0; ring < rings; ++ring) {
            glBegin(GL_TRIANGLE_STRIP);
            for (int meridian = 0; meridian <= meridians; ++meridian) {
                PlacePoint(radius, ring + 1, meridian);
                PlacePoint(radius, ring, meridian);
            }
            glEnd();
        }
    }

private:
    void PlacePoint(double radius, int ring, int meridian) const {
        const double polar = std::numbers::pi * ring / rings;
        // The last one is the first again, to the bit.
        const double round = 2 * std::numbers::pi * (meridian % meridians) / meridians;
        const bool isPole = ring == 0 || ring == rings;
        const double distance = isPole ? 0 : std::sin(polar); // from the axis
        const double x = std::cos(round) * distance;
        const double y = -std::sin(round) * distance;
        const double z = std::cos(polar);
        glNormal3f(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
        glVertex3f(static_cast<float>(x * radius), static_cast<float>(y * radius),
                   static_cast<float>(z * radius));
    }

    int meridians;
    int rings;
};

} // namespace

void glutSolidSphere(double radius, GLint slices, GLint stacks) {
    if (slices < 1 || stacks < 2) {
        return;
    }
    glPushAttrib(GL_CURRENT_BIT); // lines that are drawn next have the normal set before
    Globe(slices, stacks).Draw(radius);
    glPopAttrib();
}
