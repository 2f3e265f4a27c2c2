// A page has no threads: decodes while it is read. The decoder has everything ready, or nothing
// yet.
#include "Background.h"

namespace sound {

namespace {

class OnDemand final : public Background {
public:
    explicit OnDemand(Stream& owner) : stream(owner) {}

    void Start() override { Refill(); }
    void Stop() override {}

    void Refill() noexcept override {
        std::size_t before = 0;
        do {
            before = stream.Free();
        } while (stream.Advance() == Stream::Step::Moved && stream.Free() < before);
    }

    void WaitUntilReady(std::size_t, std::chrono::milliseconds) override { Refill(); }

private:
    Stream& stream;
};

} // namespace

std::unique_ptr<Background> Background::Of(Stream& stream) {
    return std::make_unique<OnDemand>(stream);
}

} // namespace sound
