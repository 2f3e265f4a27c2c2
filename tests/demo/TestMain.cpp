// Program entry of the tests: with --wrap=main it is what starts instead of the show's main.
#include <gmock/gmock.h>

extern "C" int __wrap_main(int argumentCount, char** arguments); // the linker gives it this name

int __wrap_main(int argumentCount, char** arguments) {
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
