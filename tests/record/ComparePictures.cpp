// compare-pictures EXPECTED.png ACTUAL.png DIFFERENCE.png: ends with 0 if they are the same. If not
// it says how far they differ, writes a picture of that, and ends with 1.
#include "PictureComparison.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: compare-pictures EXPECTED.png ACTUAL.png DIFFERENCE.png\n";
        return 2;
    }
    try {
        const recordtest::Image expected = recordtest::ReadPng(argv[1]);
        const recordtest::Image actual = recordtest::ReadPng(argv[2]);
        const recordtest::Difference difference = recordtest::Compare(expected, actual);
        std::cout << argv[2] << ": " << 100 * difference.farPixels << " % far, blurred "
                  << difference.blurred << '\n';
        if (difference.complaint.empty()) {
            return 0;
        }
        recordtest::WritePng(recordtest::ShowDifference(expected, actual), argv[3]);
        std::cout << difference.complaint << "; see " << argv[3] << '\n';
    } catch (const std::exception& failure) {
        std::cout << failure.what() << '\n';
    }
    return 1;
}
