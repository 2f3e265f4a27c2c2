#include "FfmpegArguments.h"

#include "VirtualTime.h"

namespace record {

namespace {

using Arguments = std::vector<std::string>;

void Append(Arguments& arguments, const Arguments& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
}

Arguments PictureInput(const VideoFormat& format, int descriptor) {
    const std::string size = std::to_string(format.width) + "x" + std::to_string(format.height);
    return {"-f",
            "rawvideo",
            "-pixel_format",
            "rgb0",
            "-video_size",
            size,
            "-framerate",
            std::to_string(1000 / picturePeriodMs),
            "-i",
            "pipe:" + std::to_string(descriptor)};
}

Arguments SoundInput(int descriptor) {
    return {"-f",  "f32le", "-ar", std::to_string(sound::outputRateHz),
            "-ac", "2",     "-i",  "pipe:" + std::to_string(descriptor)};
}

Arguments Colours() {
    // OpenGL's lowest row comes first. By default the scaler would use the colours of an
    // older standard than the one that the file declares.
    const std::string flags = "accurate_rnd+full_chroma_int+full_chroma_inp";
    const std::string scale = "scale=out_color_matrix=bt709:out_range=tv:flags=" + flags;
    // From ffmpeg 7 on the encoder declares the colours of the frames, not those of its options.
    const std::string named =
        "setparams=range=tv:color_primaries=bt709:color_trc=bt709:colorspace=bt709";
    return {"-vf",
            "vflip," + scale + ",format=yuv420p," + named,
            "-colorspace",
            "bt709",
            "-color_range",
            "tv",
            "-color_trc",
            "bt709",
            "-color_primaries",
            "bt709"};
}

Arguments H264() {
    return {"-c:v", "libx264",    "-preset", "superfast", "-crf",
            "18",   "-profile:v", "high",    "-g",        "40"};
}

Arguments Vp9() {
    return {"-c:v", "libvpx-vp9", "-crf", "20", "-b:v", "0",       "-deadline",
            "good", "-cpu-used",  "4",    "-g", "40",   "-row-mt", "1"};
}

Arguments CodecsAndContainer(const std::string& extension) {
    Arguments all = extension == "webm" ? Vp9() : H264();
    if (extension == "mp4") {
        Append(all, {"-c:a", "aac", "-b:a", "320k", "-movflags", "+faststart", "-f", "mp4"});
    } else if (extension == "mkv") {
        Append(all, {"-c:a", "flac", "-sample_fmt", "s32", "-bits_per_raw_sample", "24"});
        Append(all, {"-f", "matroska"});
    } else {
        // Not Opus: ffmpeg 5 forgets its lead-in, and the sound is 7 ms early.
        Append(all, {"-c:a", "libvorbis", "-q:a", "8", "-f", "webm"});
    }
    return all;
}

} // namespace

std::vector<std::string> FfmpegArguments(const VideoFormat& format, int pictures, int sound,
                                         const std::string& path) {
    Arguments all = {"ffmpeg", "-hide_banner", "-nostdin", "-loglevel", "error", "-xerror", "-y"};
    // It opens its inputs in turn. If it probed far into one, it would wait for data that follows
    // only after data of the other, which it does not read yet.
    const Arguments atFirstSight = {"-probesize", "32", "-analyzeduration", "0"};
    Append(all, atFirstSight);
    Append(all, PictureInput(format, pictures));
    Append(all, atFirstSight);
    Append(all, SoundInput(sound));
    Append(all, {"-map", "0:v", "-map", "1:a"});
    Append(all, Colours());
    Append(all, CodecsAndContainer(format.extension));
    all.push_back("file:" + path);
    return all;
}

} // namespace record
