// Program: whether the show's pictures can scroll round and stand behind the bars.
// Argument: the folder of the pictures. Status 1 when a figure is out of its bounds.
#include "Verdicts.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <numeric>
#include <stdexcept>
#include <vector>

using content::Verdicts;

namespace {

struct Picture {
    std::size_t width;
    std::size_t height;
    std::vector<unsigned char> bytes; ///< red, green, blue; rows from the top

    const unsigned char* At(std::size_t x, std::size_t y) const {
        return &bytes[3 * (y * width + x)];
    }
};

Picture Read(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGB;
    Picture picture{image.width, image.height, std::vector<unsigned char>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    return picture;
}

double Brightness(const unsigned char* pixel) {
    return 0.2126 * pixel[0] + 0.7152 * pixel[1] + 0.0722 * pixel[2];
}

/// How much column @p x differs from the one to its left, the mean of its pixels; round the edge.
double StepToTheLeft(const Picture& picture, std::size_t x) {
    const std::size_t before = (x + picture.width - 1) % picture.width;
    double apart = 0.0;
    for (std::size_t y = 0; y < picture.height; ++y) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            apart += std::abs(picture.At(x, y)[channel] - picture.At(before, y)[channel]);
        }
    }
    return apart / static_cast<double>(3 * picture.height);
}

/// The seam, as a multiple of the largest step among its neighbours: near 1 or less where nothing
/// ends at the edge.
double Seam(const Picture& picture) {
    double neighbours = 0.0;
    for (std::size_t away = 1; away <= 12; ++away) {
        neighbours = std::max({neighbours, StepToTheLeft(picture, away),
                               StepToTheLeft(picture, picture.width - away)});
    }
    return StepToTheLeft(picture, 0) / neighbours;
}

Picture Transposed(const Picture& picture) {
    Picture turned{picture.height, picture.width, {}};
    for (std::size_t x = 0; x < picture.width; ++x) {
        for (std::size_t y = 0; y < picture.height; ++y) {
            turned.bytes.insert(turned.bytes.end(), picture.At(x, y), picture.At(x, y) + 3);
        }
    }
    return turned;
}

/// The part of the lower half, in %, whose pixels are of a kind.
template <typename Kind>
double LowerHalf(const Picture& picture, Kind isOfKind) {
    const std::size_t top = picture.height / 2;
    std::size_t count = 0;
    for (std::size_t y = top; y < picture.height; ++y) {
        for (std::size_t x = 0; x < picture.width; ++x) {
            count += isOfKind(picture.At(x, y)) ? 1U : 0U;
        }
    }
    const std::size_t all = picture.width * (picture.height - top);
    return 100.0 * static_cast<double>(count) / static_cast<double>(all);
}

/// The most that the mean brightness of a column changes in a frame, when the picture has moved on
/// by 0.005 of its width.
double Flicker(const Picture& picture) {
    std::vector<double> columns(picture.width, 0.0);
    for (std::size_t x = 0; x < picture.width; ++x) {
        for (std::size_t y = 0; y < picture.height; ++y) {
            columns[x] += Brightness(picture.At(x, y)) / static_cast<double>(picture.height);
        }
    }
    const auto step =
        static_cast<std::size_t>(std::lround(0.005 * static_cast<double>(picture.width)));
    double most = 0.0;
    for (std::size_t x = 0; x < picture.width; ++x) {
        most = std::max(most, std::abs(columns[x] - columns[(x + step) % picture.width]));
    }
    return most;
}

void CheckPanorama(Verdicts& verdicts, const std::string& folder, const std::string& name) {
    const Picture picture = Read(folder + "/" + name + ".png");
    const auto width = static_cast<double>(picture.width);
    verdicts.Check(name + ", width", width, "px", 2048, 4096);
    verdicts.Check(name + ", width to height", width / static_cast<double>(picture.height), "",
                   1.72, 1.745);
    verdicts.Check(name + ", step over the seam, to the steps beside it", Seam(picture), "", 0,
                   1.5);
    verdicts.Check(
        name + ", green in the lower half",
        LowerHalf(picture,
                  [](const unsigned char* p) { return p[1] > p[0] + 16 && p[1] > p[2] + 16; }),
        "%", 0, 0.1);
    verdicts.Check(name + ", near white in the lower half",
                   LowerHalf(picture, [](const unsigned char* p) { return Brightness(p) > 215; }),
                   "%", 0, 0.3);
    verdicts.Check(name + ", change of a column's brightness in a frame", Flicker(picture), "/255",
                   0, 40);
}

int Main(const std::string& folder) {
    Verdicts verdicts;
    CheckPanorama(verdicts, folder, "skovr");
    CheckPanorama(verdicts, folder, "credits");
    const Picture tile = Read(folder + "/texture.png");
    verdicts.Check("texture, width", static_cast<double>(tile.width), "px", 64, 512);
    verdicts.Check("texture, step over its upright seam", Seam(tile), "", 0, 1.5);
    verdicts.Check("texture, step over its level seam", Seam(Transposed(tile)), "", 0, 1.5);
    double total = 0.0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        const auto type = file.path().extension();
        total += type == ".png" || type == ".mp3" ? static_cast<double>(file.file_size()) : 0.0;
    }
    verdicts.Check("music and pictures together", total / 1e6, "MB", 0, 3.0);
    return verdicts.allPass ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: picture-figures FOLDER\n", stderr);
        return 2;
    }
    try {
        return Main(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "picture-figures: %s\n", error.what());
        return 2;
    }
}
