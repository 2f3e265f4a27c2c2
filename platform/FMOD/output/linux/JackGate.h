// Keeps cubeb from calling JACK where another backend is asked for.
#pragma once

namespace sound {

/// While one exists, JACK has no server for this thread. cubeb tries its other backends if the one
/// asked for cannot be opened; but JACK's library waits forever if another process was killed while
/// it held one of its locks. (For a cubeb that is linked with that library, as Debian's is; one
/// that loads it by name passes the gate by.)
class JackGate {
public:
    JackGate() noexcept;
    JackGate(const JackGate&) = delete;
    JackGate& operator=(const JackGate&) = delete;
    ~JackGate();
};

} // namespace sound
