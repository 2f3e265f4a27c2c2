// The output in a page.
#include "Output.h"

#include "PageOutput.h"

#include <emscripten.h>

namespace sound {

struct Output {
    explicit Output(const Source& source) : page(source) {}

    PageOutput page;
};

static Output* playing = nullptr; // the only one, if any

OutputHandle StartOutput(const Source& source) {
    OutputHandle output(new Output(source));
    playing = output.get();
    return output;
}

void StopOutput::operator()(Output* output) const noexcept {
    playing = nullptr;
    delete output;
}

void AwaitDevice(Output& output) noexcept {
    output.page.Await();
}

std::int64_t HeardFrames(Output& output) noexcept {
    return output.page.HeardFrames();
}

} // namespace sound

// Called by output.js.
extern "C" EMSCRIPTEN_KEEPALIVE void SkovraAudioTurn() {
    if (sound::playing != nullptr) {
        sound::playing->page.Turn();
    }
}
