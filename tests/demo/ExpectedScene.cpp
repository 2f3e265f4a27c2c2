#include "ExpectedScene.h"

#include "Box.h"

#include "Effects.h"

#include <cstddef>

using doubles::Text;

namespace {

std::string Translate(float x, float y) {
    return "glTranslatef(" + Text(x) + ", " + Text(y) + ", 0)";
}

/// The bands @p from to @p to added up and divided by one less than their number.
float Average(const doubles::Spectrum& spectrum, std::size_t from, std::size_t to) {
    float sum = 0;
    for (std::size_t band = from; band <= to; ++band) {
        sum += spectrum[band];
    }
    return sum / static_cast<float>(to - from);
}

std::string SquareLines(float width, float height) {
    return doubles::Lines({
        "glBegin(GL_QUADS)",
        "glTexCoord2f(1, 0)",
        "glVertex3f(" + Text(width) + ", " + Text(height) + ", 0)",
        "glTexCoord2f(0, 0)",
        "glVertex3f(0, " + Text(height) + ", 0)",
        "glTexCoord2f(0, 1)",
        "glVertex3f(0, 0, 0)",
        "glTexCoord2f(1, 1)",
        "glVertex3f(" + Text(width) + ", 0, 0)",
        "glEnd()",
    });
}

std::string PictureLines(unsigned int texture) {
    return doubles::Lines({
               "glColor3f(1, 1, 1)",
               "glEnable(GL_TEXTURE_2D)",
               "FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)",
               "glBindTexture(GL_TEXTURE_2D, " + Text(texture) + ")",
               "glTranslatef(-250, -250, -1000)",
           }) +
           SquareLines(2000, 1500) +
           doubles::Lines({
               "glTranslatef(250, 250, 1000)",
               "glColor3f(1, 0, 0)",
           });
}

std::string BarLines(const doubles::Spectrum& spectrum) {
    std::string lines;
    for (std::size_t band = 1; band <= 509; band += 2) {
        const auto i = static_cast<float>(band);
        lines += "glColor3f(" + Text(i / 250) + ", " + Text(2 * i / 250) + ", " +
                 Text(0.5F * i / 250) + ")\n";
        lines += SquareLines(4.7F, Average(spectrum, band, band + 1) * 4000);
        lines += "glTranslatef(4.7, 0, 0)\n";
    }
    return lines;
}

} // namespace

std::string Lines(const ExpectedScene& scene) {
    const auto level = [&](std::size_t from, std::size_t to) {
        return Average(scene.spectrum, from, to);
    };
    return doubles::Lines({
               "FMOD::System::update()",
               "glColor3f(1, 0, 0)",
               "glPushMatrix()",
               "glTranslatef(-720, -540, 0)",
               "glScalef(1.3, 1, 1)",
               "FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)",
           }) +
           (scene.picture ? PictureLines(*scene.picture) : "") +
           doubles::Lines({"glDisable(GL_TEXTURE_2D)"}) + BarLines(scene.spectrum) +
           doubles::Lines({
               "glPopMatrix()",

               "glEnable(GL_TEXTURE_2D)",
               "glPushMatrix()",
               "glColor3f(1, 1, 1)",
               "glTranslatef(-300, 0, 0)",
               Translate(level(11, 13) * 250, level(10, 12) * 240),
               "glRotatef(" + Text(scene.rotate[0]) + ", 1, 0, 0.1)",
               "glPopMatrix()",

               "glPushMatrix()",
               "glTranslatef(-150, 0, 0)",
               Translate(level(9, 11) * 500, level(11, 14) * 500),
               "glRotatef(" + Text(scene.rotate[1]) + ", 0, 1, 0.1)",
               "glPopMatrix()",

               "glMatrixMode(GL_TEXTURE)",
               "glLoadIdentity()",
               Translate(scene.globalAngle, 0),
               "glMatrixMode(GL_MODELVIEW)",

               "glTranslatef(150, 0, 0)",
               Translate(level(8, 9) * 500, level(10, 15) * 500),
               "glRotatef(" + Text(scene.rotate[2]) + ", 0, 1, 0)",
               "glScalef(0.2, 0.4, 0.3)",
           }) +
           doubles::EffectsOf([] { engine::Box().DrawBox(); }) +
           doubles::Lines({"glColor3f(0, 0, 0)"});
}

std::string FrameLines(const ExpectedScene& scene) {
    return doubles::Lines({
               R"(FMOD::Channel::isPlaying())",
               R"(print "1")",
               R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
               R"(FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE))",
               R"(glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT))",
               R"(glMatrixMode(GL_MODELVIEW))",
               R"(glLoadIdentity())",
               R"(glEnable(GL_BLEND))",
               R"(glEnable(GL_TEXTURE_2D))",
               R"(glTranslatef(0, 0, -1100))",
               R"(FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE))",
               R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
               R"(glPushMatrix())",
               R"(glTranslatef(0, 0, -200))",
           }) +
           Lines(scene) + doubles::Lines({"glPopMatrix()", "glutSwapBuffers()"});
}

doubles::Spectrum QuadraticSpectrum() {
    doubles::Spectrum spectrum;
    for (std::size_t band = 0; band < spectrum.size(); ++band) {
        spectrum[band] = static_cast<float>(band * band) / 65536.0F;
    }
    return spectrum;
}
