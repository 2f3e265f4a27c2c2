// What is left of each limit of the system.
#include "Room.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// For as long as it exists.
class Limit {
public:
    Limit(__rlimit_resource limited, rlim_t value) : resource(limited) {
        getrlimit(resource, &before);
        rlimit lower = before;
        lower.rlim_cur = value;
        EXPECT_EQ(setrlimit(resource, &lower), 0);
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { setrlimit(resource, &before); }

private:
    __rlimit_resource resource;
    rlimit before = {};
};

} // namespace

TEST(Room, IsThereWithoutLimits) {
    EXPECT_STREQ(MissingFrom(RoomForShow() + roomForDevice), nullptr);
}

TEST(Room, LacksOpenFilesBeyondTheirLimit) {
    constexpr int most = 64;
    int open = 0;
    for (int descriptor = 0; descriptor < most; ++descriptor) {
        open += fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
    }
    const Limit limit(RLIMIT_NOFILE, most);

    EXPECT_STREQ(MissingFrom({0, most - open, 0}), nullptr);
    EXPECT_STREQ(MissingFrom({0, most - open + 1, 0}),
                 "too few open files are allowed (ulimit -n)");
}

TEST(Room, LacksMemoryBeyondItsLimit) {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const auto used = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const Limit limit(RLIMIT_AS, used + (rlim_t{256} << 20U));

    EXPECT_STREQ(MissingFrom({0, 0, 128}), nullptr);
    EXPECT_STREQ(MissingFrom({0, 0, 512}), "too little memory is allowed (ulimit -v)");
}

// Root's are not limited: it becomes a user who has no other processes. Another user's other
// processes count: of that one's limit nothing is left.
static void SayWhichThreadsAreLeft() {
    const bool alone = getuid() == 0 && setuid(61'234) == 0;
    const Limit limit(RLIMIT_NPROC, alone ? 8 : 1);
    const char* few = alone ? MissingFrom({4, 0, 0}) : nullptr;
    const char* many = MissingFrom({8, 0, 0});
    std::fprintf(stderr, "4: %s, 8: %s\n", few == nullptr ? "there" : few,
                 many == nullptr ? "there" : many);
    std::_Exit(0);
}

TEST(Room, LacksThreadsBeyondTheirLimit) {
    EXPECT_EXIT(SayWhichThreadsAreLeft(), testing::ExitedWithCode(0),
                "^4: there, 8: too few threads are allowed \\(ulimit -u\\)\n$");
}
