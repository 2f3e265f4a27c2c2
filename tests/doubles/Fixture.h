// The base fixture of tests with doubles.
#pragma once

#include "ExitGuard.h"
#include "Reset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace doubles {

/// Every test starts with the default scripts of the services and must not end the process.
class Fixture : public testing::Test {
protected:
    Fixture() { Reset(); }

private:
    ExitGuard guard;
};

/// Whether the members at @p addresses are laid out in this order.
inline bool AreInOrder(const std::vector<const void*>& addresses) {
    return std::is_sorted(addresses.begin(), addresses.end(), std::less<>());
}

} // namespace doubles
