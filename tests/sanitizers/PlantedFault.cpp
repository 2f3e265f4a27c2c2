// Programs with one fault each, or without it, for the sanitizers to tell apart:
//   planted-fault FAULT [none]
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <mutex>
#include <numeric>
#include <string_view>
#include <thread>
#include <vector>

namespace {

int ReadArray(bool beyondItsEnd) {
    const std::vector<int> squares = {0, 1, 4, 9};
    const int* first = squares.data(); // the vector itself may check its bounds
    return first[squares.size() - (beyondItsEnd ? 0 : 1)];
}

int AddToTheLargest(bool tooMuch) {
    const std::vector<int> terms = {std::numeric_limits<int>::max(), tooMuch ? 1 : 0};
    return std::accumulate(terms.begin(), terms.end(), 0);
}

/// Many: the address of one might still be in a register when leaks are looked for.
int AllocateBlocks(bool andForget) {
    int sum = 0;
    for (int size = 1; size <= 100; ++size) {
        auto block = std::make_unique<std::vector<int>>(static_cast<std::size_t>(size), size);
        sum += block->back();
        if (andForget) {
            static_cast<void>(block.release());
        }
    }
    return sum;
}

int CountInTwoThreads(bool withoutLock) {
    int count = 0;
    std::mutex mutex;
    const auto run = [&] {
        std::unique_lock<std::mutex> lock(mutex, std::defer_lock);
        if (!withoutLock) {
            lock.lock();
        }
        ++count;
    };
    std::thread first(run);
    std::thread second(run);
    first.join();
    second.join();
    return count;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view fault = argumentCount > 1 ? arguments[1] : "";
    const bool planted = argumentCount < 3;
    if (fault == "heap-overflow") {
        std::printf("%d\n", ReadArray(planted));
    } else if (fault == "signed-overflow") {
        std::printf("%d\n", AddToTheLargest(planted));
    } else if (fault == "lost-allocation") {
        std::printf("%d\n", AllocateBlocks(planted));
    } else if (fault == "data-race") {
        std::printf("%d\n", CountInTwoThreads(planted));
    } else {
        return 2;
    }
    return EXIT_SUCCESS;
}
