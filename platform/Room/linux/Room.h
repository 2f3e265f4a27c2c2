// What the system's limits leave to this process.
#pragma once

/// What a part of the program may take. Libraries that get less end the process, so that it must be
/// known before they are called.
struct Room {
    int threads;
    int descriptors;
    int mebibytes; ///< of address space
};

constexpr Room operator+(const Room& one, const Room& other) {
    return {one.threads + other.threads, one.descriptors + other.descriptors,
            one.mebibytes + other.mebibytes};
}

/// For the whole program but its sound device: boxes, display, decoder, and Mesa's software
/// renderer, which hangs if it gets fewer threads than it has processors.
Room RoomForShow() noexcept;

/// For a sound device, from the attempt to open it on.
inline constexpr Room roomForDevice{8, 32, 512};

/// What there is too little of, in words for the viewer; null: there is all of @p wanted. Any
/// thread. Threads can be counted only by starting them: for less than a millisecond there are none
/// for others.
const char* MissingFrom(const Room& wanted) noexcept;
