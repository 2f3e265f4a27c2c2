// The show's own objects, drawing into a real context with music as scripted.
#include "Show.h"

#include "FrameLoop.h"
#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "Display.h"
#include "FmodEngine.h"

#include "Glut.h"

#include <filesystem>
#include <iostream>

namespace gltest {

namespace {

std::filesystem::path ResourceFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "resources";
}

} // namespace

Show::Show(int wantedWidth, int wantedHeight)
    : screenWidth(wantedWidth), screenHeight(wantedHeight),
      standardOutput(std::cout.rdbuf(trace.rdbuf())) {
    std::filesystem::remove_all(ResourceFolder());
    std::filesystem::create_directories(ResourceFolder());
    if (demo == nullptr) {                // like the show's, it lives as long as the process
        AddResource("synchtune.mp3", {}); // nobody looks into it
        demo = new engine::DemoEngine("Pictures");
        demo->SetFmod(new engine::FmodEngine("synchtune"));
    }
    doubles::fmod = {};
    doubles::glut = {};
    StartAgain();
}

Show::~Show() {
    delete kasse;
    kasse = nullptr;
    std::cout.rdbuf(standardOutput);
}

void Show::StartAgain() {
    delete kasse;
    kasse = nullptr;
    rotate = 0;
    globalAngle = 0;
    loaded = 0;
    context.reset();
    context.emplace(screenWidth, screenHeight);
    engine::ReSizeGLScene(screenWidth, screenHeight);
}

void Show::AddPicture(const std::string& name, const PngFile& file) {
    AddResource(name + ".png", Encode(file));
}

void Show::AddResource(const std::string& fileName, const Bytes& bytes) {
    WriteFile(ResourceFolder() / fileName, bytes);
}

Picture Show::DrawFrame() {
    DrawGLScene();
    return ReadDrawn(width, height);
}

Show::Place Show::OnScreen(double x, double y, double z) {
    // 45 degrees from the screen's lower to its upper edge; cot(45 / 2 degrees) = 1 + sqrt(2).
    const double pixelsPerUnit = height / 2.0 * 2.4142135623730951 / -z;
    return {width / 2.0 + x * pixelsPerUnit, height / 2.0 - y * pixelsPerUnit};
}

} // namespace gltest
