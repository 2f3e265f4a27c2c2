// Small valid inputs to begin with: fuzz_seeds FOLDER makes FOLDER/TARGET/*.
#include "Mp3Files.h"
#include "Operation.h"
#include "PngChunks.h"
#include "Tone.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

using files::Bytes;

/// Writes to one folder files named 0, 1, 2, ...
class Numbered {
public:
    explicit Numbered(const std::string& path) : folder(path) {
        std::filesystem::create_directories(folder);
    }

    std::string NextPath() { return folder + "/" + std::to_string(number++); }
    void Write(const Bytes& bytes) { files::WriteAll(NextPath(), bytes); }

private:
    std::string folder;
    int number = 0;
};

// Not compressed: a byte changed in it is a byte changed in the picture.
static gltest::PngFile Picture(int colourType, int depth, unsigned int rowBytes) {
    gltest::PngFile file{.width = 9, .height = 7, .colourType = colourType, .depth = depth};
    file.compression = 0;
    file.rows = files::Noise(std::size_t{7} * rowBytes);
    if (colourType == PNG_COLOR_TYPE_PALETTE) {
        file.palette = {{10, 20, 30}, {200, 100, 50}, {0, 255, 0}, {90, 90, 90}};
        file.paletteAlpha = {0, 128};
    }
    return file;
}

static void MakePictures(Numbered seeds) {
    for (gltest::PngFile file :
         {Picture(PNG_COLOR_TYPE_RGB, 8, 27), Picture(PNG_COLOR_TYPE_RGB, 16, 54),
          Picture(PNG_COLOR_TYPE_RGB_ALPHA, 8, 36), Picture(PNG_COLOR_TYPE_RGB_ALPHA, 16, 72),
          Picture(PNG_COLOR_TYPE_GRAY, 1, 2), Picture(PNG_COLOR_TYPE_GRAY, 4, 5),
          Picture(PNG_COLOR_TYPE_GRAY_ALPHA, 8, 18), Picture(PNG_COLOR_TYPE_PALETTE, 2, 3)}) {
        seeds.Write(Encode(file));
        file.interlaced = true;
        seeds.Write(Encode(file));
        if ((file.colourType & (PNG_COLOR_MASK_ALPHA | PNG_COLOR_MASK_PALETTE)) == 0) {
            file.transparent = png_color_16{0, 1, 2, 3, 1};
            seeds.Write(Encode(file));
        }
    }
    const Bytes colour = Encode(Picture(PNG_COLOR_TYPE_RGB_ALPHA, 8, 36));
    seeds.Write(gltest::WithClaimedSize(colour, 8192, 8192)); // as large as may be
    seeds.Write(gltest::WithClaimedSize(colour, 8448, 8192));
    for (const char* name : {"tEXt", "zTXt", "iTXt", "iCCP", "sPLT", "eXIf", "pCAL", "ABCD"}) {
        for (const int place : {1, 2}) {
            auto chunks = gltest::ChunksOf(colour);
            chunks.insert(chunks.begin() + place, {.name = name, .data = {'x', 0, 0, '1', 0}});
            seeds.Write(FileOf(chunks));
        }
    }
}

static Bytes Encoded(const std::vector<float>& frames, const std::vector<std::string>& options) {
    const files::Folder folder;
    files::EncodeMp3(folder.Path("music"), frames, 44100, options);
    return files::ReadAll(folder.Path("music"));
}

static void MakeMusic(Numbered seeds) {
    const auto brief = tone::Sine(44100.0, 440.0, 1000.0, 0.4, 9000);
    const auto loud = tone::Sine(44100.0, 3000.0, 200.0, 1.0, 60000);
    const Bytes constant = Encoded(brief, {"-b", "64"});
    const Bytes slow = Encoded(brief, {"--resample", "8", "-b", "8"});
    seeds.Write(constant);
    seeds.Write(slow);
    seeds.Write(Encoded(brief, {"-V", "4"}));
    seeds.Write(Encoded(brief, {"--freeformat", "-b", "80"}));
    seeds.Write(Encoded(brief, {"-b", "32", "-m", "m"}));
    seeds.Write(Encoded(brief, {"--resample", "22.05", "-V", "6"}));
    seeds.Write(Encoded(brief, {"--resample", "48", "-b", "48"}));
    seeds.Write(Encoded(loud, {"-b", "32"}));
    seeds.Write(files::Joined({files::Tag(300, 300), constant}));
    seeds.Write(files::Joined({constant, files::Noise(500), slow}));
    seeds.Write(files::Joined({files::First(constant, 1500), files::Tag(300, 300), slow}));
    seeds.Write(files::Joined({{0, 0, 0, 8, 'f', 'r', 'e', 'e'}, constant}));
    seeds.Write(files::Joined({slow, Bytes(9000, 0), slow}));
    seeds.Write(files::LayerTwo());
}

static void MakeOperations(Numbered seeds) {
    using namespace fuzz;
    const Bytes plays = {openDevice, 101, passTime, 60, play, 1, passTime, 200};
    seeds.Write(plays);
    seeds.Write(files::Joined({plays,
                               {askSpectrum, 20, setPaused, 2, passTime, 50, setPaused, 0, update,
                                0, setVolume, 90, setMute, 2, passTime, 90}}));
    seeds.Write(
        files::Joined({plays, {failDevice, 0, passTime, 90, openDevice, 99, passTime, 200}}));
    seeds.Write(files::Joined({plays,
                               {hangDevice, 200, passTime, 255, passTime, 255, passTime, 255,
                                misreport, 40, suspend, 60, passTime, 250}}));
    seeds.Write(files::Joined({plays,
                               {play, 18, passTime, 140, releaseSound, 0, underrun, 1, passTime,
                                255, restart, 0, play, 0}}));
    // A graph whose cycles and way to the listener change, and a server that repeats itself.
    seeds.Write({openGraph, 101, passTime,   60, play,     1,  passTime,  200, openGraph, 230,
                 passTime,  255, hangDevice, 4,  passTime, 90, misreport, 160, passTime,  255});
    seeds.Write(files::Joined({plays, {repeatPosition, 255, passTime, 255, passTime, 255}}));
    seeds.Write({openGraph, 101, interrupt, 1, passTime, 60, play,       1,
                 passTime,  200, interrupt, 4, passTime, 90, openDevice, 101,
                 passTime,  60,  interrupt, 0, passTime, 90});
    // To the end of the music, and from its beginning.
    Bytes whole = plays;
    for (int i = 0; i < 5; ++i) {
        whole.insert(whole.end(), {passTime, 255});
    }
    seeds.Write(files::Joined({whole, plays}));
}

static void MakeNames(Numbered seeds) {
    seeds.Write({0, 's', 'k', 'o', 'v', 'r', 0, 'p', 'n', 'g'});
    seeds.Write({1, 's', 'y', 'n', 'c', 'h', 't', 'u', 'n', 'e', 0, 'm', 'p', '3'});
    seeds.Write({1, 0xC3, 0xB8, 0, 'm', 'p', '3'});
    seeds.Write({0, 0xBF, 0xBE, '/', '.', '.', 0, 'x'});
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: fuzz_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::string root = argv[1];
    MakePictures(Numbered(root + "/fuzz_png"));
    MakeMusic(Numbered(root + "/fuzz_sound_file"));
    MakeOperations(Numbered(root + "/fuzz_sound_operations"));
    MakeNames(Numbered(root + "/fuzz_names"));
    return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
