// Atoms as they are seen.
#include "Atom.h"
#include "GlutWindow.h"

#include <array>
#include <cmath>

using gltest::At;
using gltest::Picture;
using gltest::Rgba;
using namespace gltest::colours;

namespace {

constexpr Rgba darkYellow = {100, 100, 0};

// Turned by a right angle about y, the electrons stand in the plane of the picture.
constexpr float facing = 90.0F;

class AtomPicture : public gltest::GlutWindow {
protected:
    // The place of an electron at @p degrees about the nucleus, @p distance away.
    static Rgba AtAngle(const Picture& picture, double degrees, double distance) {
        const double angle = degrees * 3.14159265358979 / 180;
        return At(picture, distance * std::cos(angle), distance * std::sin(angle));
    }

    static std::array<float, 16> Matrix() {
        std::array<float, 16> matrix = {};
        glGetFloatv(GL_MODELVIEW_MATRIX, matrix.data());
        return matrix;
    }
};

} // namespace

TEST_F(AtomPicture, HasARedNucleusAndDarkYellowElectronsOnBlueLines) {
    engine::Atom atom = {};
    atom.electrons = 4;
    atom.x = 20;
    atom.y = -10;
    atom.angle = facing;
    atom.distance = 150;
    atom.radius = 25;

    atom.Draw();

    const Picture picture = Drawn();
    EXPECT_EQ(At(picture, 20, -10), red);
    EXPECT_EQ(At(picture, 20 + 37, -10), red);
    EXPECT_EQ(At(picture, 20 + 28, -10 + 34), black);
    for (const auto& [x, y] : {std::pair{150, 0}, {0, 150}, {-150, 0}, {0, -150}}) {
        EXPECT_EQ(At(picture, 20 + x, -10 + y), darkYellow);
        EXPECT_TRUE(IsNear(picture, 20 + x / 2.0, -10 + y / 2.0, blue));
    }
    EXPECT_EQ(At(picture, 20 + 150 + 22, -10), darkYellow);
    EXPECT_EQ(At(picture, 20 + 150 + 28, -10), black);
}

TEST_F(AtomPicture, WithOneElectronHasItWhereAFullTurnLeavesIt) {
    engine::Atoms(0, 0, 0, 1, facing);

    const Picture picture = Drawn();
    EXPECT_EQ(AtAngle(picture, 0, 200), darkYellow);
    for (const int degrees : {30, 51, 90, 180, 270}) {
        EXPECT_EQ(AtAngle(picture, degrees, 200), black);
    }
}

TEST_F(AtomPicture, WithSevenElectronsDoesNotCloseTheRing) {
    engine::Atoms(0, 0, 0, 7, facing);

    const Picture picture = Drawn();
    for (int electron = 1; electron <= 7; ++electron) {
        EXPECT_EQ(AtAngle(picture, electron * 51.0, 200), darkYellow) << electron;
    }
    // The last stands at 357 degrees, 10 units below where it would close the ring.
    EXPECT_EQ(At(picture, 200, 14), black);
    EXPECT_EQ(At(picture, 200, -24), darkYellow);
}

TEST_F(AtomPicture, WithTwelveElectronsHasThemAllRound) {
    engine::Atoms(0, 0, 0, 12, facing);

    const Picture picture = Drawn();
    for (int electron = 1; electron <= 12; ++electron) {
        EXPECT_EQ(AtAngle(picture, electron * 30.0, 200), darkYellow) << electron;
        EXPECT_EQ(AtAngle(picture, electron * 30.0 + 15.0, 200), black) << electron;
    }
}

TEST_F(AtomPicture, WithoutElectronsIsANucleusAndLeavesTheColourRed) {
    engine::Atoms(0, 0, 0, 0, facing);

    std::array<float, 4> colour = {};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(At(Drawn(), 0, 0), red);
    EXPECT_EQ(colour, (std::array<float, 4>{1, 0, 0, 1}));
}

TEST_F(AtomPicture, LeavesTheMatrixAsItWas) {
    glTranslatef(3, 4, 5);
    const auto before = Matrix();

    engine::Atoms(10, 20, 30, 7, 40);

    EXPECT_EQ(Matrix(), before);
}
