// Program entry of tests linked with the show's objects, which hold a main of their own: the linker
// is told to enter here (--wrap=main).
#include <gtest/gtest.h>

extern "C" int __wrap_main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
