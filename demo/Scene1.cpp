#include "Scene1.h"

#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TextureManager.h"

#include <GL/gl.h>

#include <cstdint>

namespace {

constexpr std::int32_t endOfPicturesMs = 29999;
constexpr std::int32_t endOfTitlePictureMs = 14999;
constexpr int barCount = 255;
constexpr float barWidth = 4.7F;

std::int32_t MusicPositionMs() {
    return static_cast<std::int32_t>(demo->fmod->GetCurTime());
}

void DrawPicture() {
    glColor3f(1.0F, 1.0F, 1.0F);
    glEnable(GL_TEXTURE_2D);
    demo->textures->GetTexture(MusicPositionMs() <= endOfTitlePictureMs ? "skovr" : "credits");
    glTranslatef(-250.0F, -250.0F, -1000.0F);
    DrawSquare(2000.0, 1500.0);
    glTranslatef(250.0F, 250.0F, 1000.0F);
    glColor3f(1.0F, 0.0F, 0.0F);
}

/// Side by side from the origin, from near black through green to white.
void DrawSpectrumBars() {
    glDisable(GL_TEXTURE_2D);
    for (int bar = 0; bar < barCount; ++bar) {
        const auto i = static_cast<float>(2 * bar + 1);
        glColor3f(i / 250.0F, (i + i) / 250.0F, (i * 0.5F) / 250.0F);
        const float level = demo->fmod->GetAverage(static_cast<int>(i), static_cast<int>(i) + 1);
        DrawSquare(4.7, level * 4000.0F);
        glTranslatef(barWidth, 0.0F, 0.0F);
    }
}

void DrawPictureAndBars() {
    glColor3f(1.0F, 0.0F, 0.0F);
    glPushMatrix();
    glTranslatef(-720.0F, -540.0F, 0.0F);
    glScalef(1.3F, 1.0F, 1.0F);
    if (MusicPositionMs() <= endOfPicturesMs) {
        DrawPicture();
    }
    DrawSpectrumBars();
    glPopMatrix();
}

void AdvanceRotation() {
    rotate = static_cast<float>(rotate + 0.1);
}

/// Draws nothing, but rotates the box by two of the three steps that it makes in a frame.
void TransformWithoutDrawing() {
    glEnable(GL_TEXTURE_2D);
    glPushMatrix();
    glColor3f(1.0F, 1.0F, 1.0F);
    glTranslatef(-300.0F, 0.0F, 0.0F);
    float right = demo->fmod->GetAverage(11, 13);
    float up = demo->fmod->GetAverage(10, 12);
    glTranslatef(right * 250.0F, up * 240.0F, 0.0F);
    AdvanceRotation();
    glRotatef(rotate, 1.0F, 0.0F, 0.1F);
    glPopMatrix();

    glPushMatrix();
    glTranslatef(-150.0F, 0.0F, 0.0F);
    right = demo->fmod->GetAverage(9, 11);
    up = demo->fmod->GetAverage(11, 14);
    glTranslatef(right * 500.0F, up * 500.0F, 0.0F);
    AdvanceRotation();
    glRotatef(rotate, 0.0F, 1.0F, 0.1F);
    glPopMatrix();
}

/// Takes effect in the next frame's picture: the texture matrix stays as it is set here.
void ScrollTexture() {
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    globalAngle = static_cast<float>(globalAngle + 0.005);
    glTranslatef(globalAngle, 0.0F, 0.0F);
    glMatrixMode(GL_MODELVIEW);
}

/// Pushed right and up by the low bands.
void DrawTurningBox() {
    glTranslatef(150.0F, 0.0F, 0.0F);
    const float right = demo->fmod->GetAverage(8, 9);
    const float up = demo->fmod->GetAverage(10, 15);
    glTranslatef(right * 500.0F, up * 500.0F, 0.0F);
    AdvanceRotation();
    glRotatef(rotate, 0.0F, 1.0F, 0.0F);
    glScalef(0.2F, 0.4F, 0.3F);
    kasse->ChangeSize(100.0F);
    kasse->DrawBox();
}

} // namespace

void Scene1() {
    demo->fmod->Update();
    DrawPictureAndBars();
    TransformWithoutDrawing();
    ScrollTexture();
    DrawTurningBox();
    glColor3f(0.0F, 0.0F, 0.0F);
}

void DrawSquare(double width, double height) {
    const auto right = static_cast<float>(width);
    const auto top = static_cast<float>(height);
    glBegin(GL_QUADS);
    glTexCoord2f(1.0F, 0.0F);
    glVertex3f(right, top, 0.0F);
    glTexCoord2f(0.0F, 0.0F);
    glVertex3f(0.0F, top, 0.0F);
    glTexCoord2f(0.0F, 1.0F);
    glVertex3f(0.0F, 0.0F, 0.0F);
    glTexCoord2f(1.0F, 1.0F);
    glVertex3f(right, 0.0F, 0.0F);
    glEnd();
}
