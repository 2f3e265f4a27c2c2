// Which X server the command line names, read as freeglut reads it.
#include "DisplayArgument.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// "none": the environment's counts.
std::string Named(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "program");
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    const char* name = DisplayArgument(static_cast<int>(arguments.size()), pointers.data());
    return name != nullptr ? name : "none";
}

TEST(DisplayArgument, IsNoneWithoutTheOption) {
    EXPECT_EQ(Named({}), "none");
    EXPECT_EQ(Named({"-iconic", ":1"}), "none");
    EXPECT_EQ(Named({"--display", ":1"}), "none");
    EXPECT_EQ(Named({"-display=:1"}), "none");
}

TEST(DisplayArgument, FollowsTheOption) {
    EXPECT_EQ(Named({"-iconic", "-display", ":1", "-sync"}), ":1");
    EXPECT_EQ(Named({"-display", "-display"}), "-display");
}

TEST(DisplayArgument, IsTheLastOfSeveral) {
    EXPECT_EQ(Named({"-display", ":1", "-display", ":2"}), ":2");
    EXPECT_EQ(Named({"-display", ":1", "-display", ""}), "none");
}

TEST(DisplayArgument, IsNotTheProgramsNameOrAnotherOptionsValue) {
    EXPECT_EQ(Named({"-geometry", "-display", ":1"}), "none");
    char name[] = "-display";
    char value[] = ":1";
    char* arguments[] = {name, value, nullptr};
    EXPECT_EQ(DisplayArgument(2, arguments), nullptr);
}

TEST(DisplayArgument, IsNoneWithoutAValue) {
    EXPECT_EQ(Named({"-display"}), "none");
    EXPECT_EQ(Named({"-geometry"}), "none");
    EXPECT_EQ(DisplayArgument(0, nullptr), nullptr);
}

} // namespace
