// Whether two pictures of the show are the same to the eye, though not drawn by the same OpenGL.
#include "PictureComparison.h"

#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace recordtest {

namespace {

constexpr int nearEnough = 3;
constexpr double mostFarPixels = 0.005;
constexpr int blurSize = 8;
constexpr double mostBlurred = 16;

std::size_t ByteIndex(const Image& image, int x, int y) {
    return 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                static_cast<std::size_t>(x));
}

int Distance(const Image& one, const Image& other, int x, int y) {
    const std::size_t first = ByteIndex(one, x, y);
    int distance = 0;
    for (std::size_t i = first; i < first + 3; ++i) {
        distance = std::max(distance, std::abs(one.bytes[i] - other.bytes[i]));
    }
    return distance;
}

/// The sums over all rectangles from the picture's corner, of one channel's signed differences.
class Sums {
public:
    Sums(const Image& one, const Image& other, int channel)
        : stride(static_cast<std::size_t>(one.width) + 1),
          sums(stride * (static_cast<std::size_t>(one.height) + 1)) {
        for (int y = 0; y < one.height; ++y) {
            for (int x = 0; x < one.width; ++x) {
                const std::size_t byte = ByteIndex(one, x, y) + static_cast<std::size_t>(channel);
                At(x + 1, y + 1) =
                    one.bytes[byte] - other.bytes[byte] + At(x, y + 1) + At(x + 1, y) - At(x, y);
            }
        }
    }

    double Mean(int left, int top, int right, int bottom) {
        const int sum = At(right, bottom) - At(left, bottom) - At(right, top) + At(left, top);
        return static_cast<double>(sum) / ((right - left) * (bottom - top));
    }

private:
    int& At(int x, int y) {
        return sums[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)];
    }

    std::size_t stride;
    std::vector<int> sums;
};

double BlurredDifference(const Image& one, const Image& other) {
    double largest = 0;
    for (int channel = 0; channel < 3; ++channel) {
        Sums sums(one, other, channel);
        for (int y = 0; y + blurSize <= one.height; ++y) {
            for (int x = 0; x + blurSize <= one.width; ++x) {
                const double mean = sums.Mean(x, y, x + blurSize, y + blurSize);
                largest = std::max(largest, std::abs(mean));
            }
        }
    }
    return largest;
}

double FarPixels(const Image& one, const Image& other) {
    int far = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            far += Distance(one, other, x, y) > nearEnough ? 1 : 0;
        }
    }
    return static_cast<double>(far) / (one.width * one.height);
}

} // namespace

Image ReadPng(const std::string& path) {
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&png, path.c_str()) == 0) {
        throw std::runtime_error(path + ": " + png.message);
    }
    png.format = PNG_FORMAT_RGB;
    Image image = {static_cast<int>(png.width), static_cast<int>(png.height),
                   std::vector<unsigned char>(PNG_IMAGE_SIZE(png))};
    if (png_image_finish_read(&png, nullptr, image.bytes.data(), 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + png.message);
    }
    return image;
}

void WritePng(const Image& image, const std::string& path) {
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.format = PNG_FORMAT_RGB;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    if (png_image_write_to_file(&png, path.c_str(), 0, image.bytes.data(), 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + png.message);
    }
}

Difference Compare(const Image& expected, const Image& actual) {
    if (expected.width != actual.width || expected.height != actual.height) {
        return {.farPixels = 1, .blurred = 255, .complaint = "another size"};
    }
    Difference difference = {FarPixels(expected, actual), BlurredDifference(expected, actual), ""};
    if (difference.farPixels > mostFarPixels || difference.blurred > mostBlurred) {
        std::ostringstream text;
        text << 100 * difference.farPixels << " % of the pixels differ by more than " << nearEnough
             << " (allowed: " << 100 * mostFarPixels << " %), and over " << blurSize << "x"
             << blurSize << " pixels by up to " << difference.blurred
             << " (allowed: " << mostBlurred << ")";
        difference.complaint = text.str();
    }
    return difference;
}

Image ShowDifference(const Image& expected, const Image& actual) {
    if (expected.width != actual.width || expected.height != actual.height) {
        return actual;
    }
    Image all = {expected.width, 3 * expected.height, expected.bytes};
    all.bytes.insert(all.bytes.end(), actual.bytes.begin(), actual.bytes.end());
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const int shade = std::min(255, 8 * Distance(expected, actual, x, y));
            all.bytes.insert(all.bytes.end(), 3, static_cast<unsigned char>(shade));
        }
    }
    return all;
}

} // namespace recordtest
