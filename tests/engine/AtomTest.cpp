// The atom: its nucleus, its ring and each electron of it.
#include "Atom.h"

#include "Effects.h"
#include "Fixture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace {

using doubles::Count;
using doubles::EffectsOf;
using doubles::Lines;
using doubles::Only;

class AtomTest : public doubles::Fixture {
protected:
    /// Fields that all differ.
    static engine::Atom MakeAtom(std::uint32_t electrons) {
        engine::Atom atom = {};
        atom.electrons = electrons;
        atom.x = 1;
        atom.y = 2;
        atom.z = 3;
        atom.angle = 30;
        atom.distance = 100;
        atom.spare = 77;
        atom.radius = 12.5F;
        return atom;
    }

    static std::string AtomsOf(unsigned long electrons) {
        return EffectsOf([&] { engine::Atoms(1, 2, 3, electrons, 45); });
    }
};

TEST_F(AtomTest, HasItsFieldsInOrder) {
    const engine::Atom atom = {};
    EXPECT_TRUE(doubles::AreInOrder({&atom.electrons, &atom.x, &atom.y, &atom.z, &atom.angle,
                                     &atom.distance, &atom.spare, &atom.radius}));
    EXPECT_TRUE((std::is_same_v<decltype(atom.electrons), std::uint32_t>));
    EXPECT_TRUE(std::is_trivially_default_constructible_v<engine::Atom>);
}

TEST_F(AtomTest, ElectronIsALineAndASphereTurnedAboutY) {
    EXPECT_EQ(EffectsOf([] { engine::Electron(100, 12.5F, 30); }),
              Lines({
                  "glPushMatrix()",
                  "glPushMatrix()",
                  "glColor3f(0, 0, 1)",
                  "glRotatef(30, 0, 1, 0)",
                  "glBegin(GL_LINES)",
                  "glVertex3f(0, 0, 0)",
                  "glVertex3f(0, 0, 88.5)", // one past the sphere's surface
                  "glEnd()",
                  "glPopMatrix()",
                  "glRotatef(30, 0, 1, 0)",
                  "glTranslatef(0, 0, 100)",
                  "glColor3ub(100, 100, 0)",
                  "glutSolidSphere(12.5, 15, 20)",
                  "glPopMatrix()",
              }));
}

TEST_F(AtomTest, DrawElectronIsTheSameWhateverTheFields) {
    engine::Atom atom = MakeAtom(5);
    EXPECT_EQ(EffectsOf([&] { atom.DrawElectron(70, 8, 15); }),
              EffectsOf([] { engine::Electron(70, 8, 15); }));
}

TEST_F(AtomTest, LineIsMeasuredInSinglePrecision) {
    // 16777217, and so the sum, is between two floats; in double precision 16777218 would be left.
    EXPECT_EQ(Only("glVertex3f(0, 0, 1", EffectsOf([] { engine::Electron(16777218, 1, 0); })),
              Lines({"glVertex3f(0, 0, 16777216)"}));
}

TEST_F(AtomTest, LineEndsBehindTheNucleusWhenTheSphereIsLarger) {
    EXPECT_EQ(Only("glVertex3f(0, 0, -", EffectsOf([] { engine::Electron(10, 20, 0); })),
              Lines({"glVertex3f(0, 0, -9)"}));
}

TEST_F(AtomTest, SphereHasTheRadiusAsItIsInSinglePrecision) {
    EXPECT_EQ(Only("glut", EffectsOf([] { engine::Electron(1, 0.1F, 0); })),
              Lines({"glutSolidSphere(0.10000000149011612, 15, 20)"}));
}

TEST_F(AtomTest, DrawsNucleusAndElectronsFromItsFields) {
    engine::Atom atom = MakeAtom(2);
    const std::string electron = EffectsOf([] { engine::Electron(100, 12.5F, 30); });
    EXPECT_EQ(EffectsOf([&] { atom.Draw(); }), Lines({
                                                   "glPushMatrix()",
                                                   "glTranslatef(1, 2, 3)",
                                                   "glColor3f(1, 0, 0)",
                                                   "glutSolidSphere(40, 30, 40)",
                                               }) + "glRotatef(180, 0, 0, 1)\n" +
                                                   electron + "glRotatef(180, 0, 0, 1)\n" +
                                                   electron + "glPopMatrix()\n");
}

TEST_F(AtomTest, AtomsHaveElectronsOfRadius20At200) {
    const std::string electron = EffectsOf([] { engine::Electron(200, 20, 45); });
    EXPECT_EQ(AtomsOf(1), Lines({
                              "glPushMatrix()", "glTranslatef(1, 2, 3)", "glColor3f(1, 0, 0)",
                              "glutSolidSphere(40, 30, 40)",
                              "glRotatef(360, 0, 0, 1)", // a whole turn for the only one
                          }) + electron +
                              "glPopMatrix()\n");
}

TEST_F(AtomTest, WithoutElectronsIsItsNucleus) {
    engine::Atom atom = MakeAtom(0);
    const std::string nucleus = Lines({
        "glPushMatrix()",
        "glTranslatef(1, 2, 3)",
        "glColor3f(1, 0, 0)",
        "glutSolidSphere(40, 30, 40)",
        "glPopMatrix()",
    });
    EXPECT_EQ(EffectsOf([&] { atom.Draw(); }), nucleus);
    EXPECT_EQ(AtomsOf(0), nucleus);
}

TEST_F(AtomTest, StepIsInWholeDegrees) {
    const std::string seven = AtomsOf(7);
    EXPECT_EQ(Count("glRotatef(51, 0, 0, 1)", seven), 7); // not 51.43
    EXPECT_EQ(Count("glutSolidSphere(20, 15, 20)", seven), 7);
    const std::string twelve = AtomsOf(12);
    EXPECT_EQ(Count("glRotatef(30, 0, 0, 1)", twelve), 12);
    EXPECT_EQ(Count("glutSolidSphere(20, 15, 20)", twelve), 12);
}

TEST_F(AtomTest, StepIsAtLeastADegreeUpTo360Electrons) {
    EXPECT_EQ(Count("glRotatef(1, 0, 0, 1)", AtomsOf(181)), 181);
    EXPECT_EQ(Count("glRotatef(1, 0, 0, 1)", AtomsOf(360)), 360);
}

TEST_F(AtomTest, MoreThan360ElectronsCoincide) {
    const std::string effects = AtomsOf(361);
    EXPECT_EQ(Count("glRotatef(0, 0, 0, 1)", effects), 361);
    EXPECT_EQ(Count("glutSolidSphere(20, 15, 20)", effects), 361);
    EXPECT_EQ(Only("glRotatef(1", effects), "");
}

TEST_F(AtomTest, LeavesTheColourDarkYellowOrWithoutElectronsRed) {
    EXPECT_TRUE(Only("glColor3", AtomsOf(1)).ends_with("\nglColor3ub(100, 100, 0)\n"));
    EXPECT_TRUE(Only("glColor3", AtomsOf(7)).ends_with("\nglColor3ub(100, 100, 0)\n"));
    EXPECT_EQ(Only("glColor3", AtomsOf(0)), "glColor3f(1, 0, 0)\n");
}

} // namespace
