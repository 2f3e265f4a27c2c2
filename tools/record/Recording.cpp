#include "Recording.h"

#include "PngWriter.h"
#include "VirtualTime.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <stdexcept>

namespace record {

namespace {

/// Runs @p action on the file @p path, whose name it adds to exceptions.
template <typename Action>
void For(const std::string& path, Action action) {
    try {
        action();
    } catch (const std::exception& failure) {
        throw std::runtime_error(path + ": " + failure.what());
    }
}

/// With enough digits that sorting by name is sorting by time.
std::string FrameName(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return std::string(5 - std::min<std::size_t>(5, digits.size()), '0') + digits + ".png";
}

std::int64_t LastMs(const std::vector<Still>& stills) {
    const auto last = std::max_element(stills.begin(), stills.end(),
                                       [](auto& one, auto& other) { return one.ms < other.ms; });
    return last == stills.end() ? 0 : last->ms;
}

} // namespace

Recording::Recording(const Options& wanted)
    : options(wanted),
      picturesWanted(PicturesUntil(WantsWholeShow() ? lastPictureMs : LastMs(options.stills))),
      picture(options.width, options.height) {
    for (const Still& still : options.stills) {
        For(still.path, [&] { stills.emplace_back(still); });
    }
    if (!options.framesFolder.empty()) {
        std::filesystem::create_directories(options.framesFolder);
    }
    if (!options.wav.empty()) {
        For(options.wav, [&] { sound.emplace(options.wav); });
    }
    if (!options.video.empty()) {
        const VideoFormat format = {Extension(options.video), options.width, options.height};
        For(options.video, [&] { video.emplace(options.video, format); });
    }
}

bool Recording::WantsWholeShow() const {
    return !options.video.empty() || !options.framesFolder.empty() || !options.wav.empty();
}

void Recording::AddSound(std::span<const float> samples) {
    if (sound) {
        For(options.wav, [&] { sound->wav.Add(samples); });
    }
    if (video) {
        video->encoder.AddSound(samples);
    }
}

void Recording::AddPicture(std::int64_t ms, const ReadPicture& read) {
    if (ms != picturesAdded * picturePeriodMs) {
        throw std::runtime_error("the show does not draw every " + std::to_string(picturePeriodMs) +
                                 " ms: picture " + std::to_string(picturesAdded) + " came at " +
                                 std::to_string(ms) + " ms");
    }
    if (Wants(ms)) {
        read(picture);
        WriteStills(ms);
        WriteFrame();
        if (video) {
            For(options.video, [&] { video->encoder.AddPicture(picture); });
        }
    }
    ++picturesAdded;
}

bool Recording::Wants(std::int64_t ms) const {
    return video || !options.framesFolder.empty() ||
           std::any_of(stills.begin(), stills.end(),
                       [ms](const PendingStill& pending) { return pending.still.ms == ms; });
}

void Recording::WriteStills(std::int64_t ms) {
    for (PendingStill& pending : stills) {
        if (pending.still.ms == ms) {
            For(pending.still.path, [&] {
                WritePng(picture, pending.file.Path());
                pending.file.Commit();
            });
        }
    }
    stills.remove_if([ms](const PendingStill& pending) { return pending.still.ms == ms; });
}

void Recording::WriteFrame() {
    if (!options.framesFolder.empty()) {
        const std::string path =
            std::filesystem::path(options.framesFolder) / FrameName(picturesAdded);
        For(path, [&] {
            UnfinishedFile file(path);
            WritePng(picture, file.Path());
            file.Commit();
        });
    }
}

bool Recording::HasAll() const {
    return !WantsWholeShow() && stills.empty();
}

void Recording::Finish() {
    if (!stills.empty() || picturesAdded == 0) {
        throw std::runtime_error("the show ended after " + std::to_string(picturesAdded) +
                                 " pictures");
    }
    if (sound) {
        For(options.wav, [this] {
            sound->wav.Finish();
            sound->file.Commit();
        });
    }
    if (video) {
        For(options.video, [this] {
            video->encoder.Finish();
            video->file.Commit();
        });
    }
}

} // namespace record
