// The messages that an autorelease pool understands.
#include <objc/message.h>

#include <gtest/gtest.h>

#include <string>

namespace {

id PoolClass() {
    return reinterpret_cast<id>(objc_getClass("NSAutoreleasePool"));
}

id Send(id receiver, const char* message) {
    return objc_msgSend(receiver, sel_registerName(message));
}

TEST(ObjcClass, AutoreleasePoolIsTheOnlyOne) {
    EXPECT_NE(objc_getClass("NSAutoreleasePool"), nullptr);
    EXPECT_EQ(objc_getClass("NSObject"), nullptr);
    EXPECT_EQ(objc_getClass(""), nullptr);
    EXPECT_EQ(objc_getClass(nullptr), nullptr);
}

TEST(ObjcSelector, EqualNamesGiveTheSameSelector) {
    EXPECT_EQ(sel_registerName("alloc"), sel_registerName(std::string("alloc").c_str()));
}

TEST(ObjcSelector, OtherNamesGiveAnotherSelector) {
    EXPECT_NE(sel_registerName("alloc"), sel_registerName("init"));
}

TEST(ObjcSelector, StaysTheSameWhileManyMoreAreRegistered) {
    const SEL before = sel_registerName("release");
    for (int i = 0; i < 1000; ++i) {
        sel_registerName(std::to_string(i).c_str());
    }
    EXPECT_EQ(sel_registerName("release"), before);
}

TEST(ObjcSelector, NoNameGivesNone) {
    EXPECT_EQ(sel_registerName(nullptr), nullptr);
}

TEST(AutoreleasePool, AllocMakesAPool) {
    const id pool = Send(PoolClass(), "alloc");
    EXPECT_NE(pool, nullptr);
    EXPECT_NE(pool, PoolClass());
    Send(pool, "release");
}

TEST(AutoreleasePool, EachAllocMakesAnother) {
    const id first = Send(PoolClass(), "alloc");
    const id second = Send(PoolClass(), "alloc");
    EXPECT_NE(first, second);
    Send(first, "release");
    Send(second, "release");
}

TEST(AutoreleasePool, InitGivesTheSamePool) {
    const id pool = Send(PoolClass(), "alloc");
    EXPECT_EQ(Send(pool, "init"), pool);
    Send(pool, "release");
}

TEST(AutoreleasePool, ReleaseGivesNull) {
    EXPECT_EQ(Send(Send(PoolClass(), "alloc"), "release"), nullptr);
}

TEST(AutoreleasePool, AnotherMessageGivesNullAndLeavesThePool) {
    const id pool = Send(PoolClass(), "alloc");
    EXPECT_EQ(Send(pool, "retainCount"), nullptr);
    EXPECT_EQ(objc_msgSend(pool, nullptr), nullptr);
    EXPECT_EQ(Send(pool, "init"), pool);
    Send(pool, "release");
}

TEST(AutoreleasePool, ItsClassUnderstandsAllocOnly) {
    EXPECT_EQ(Send(PoolClass(), "init"), nullptr);
    EXPECT_EQ(Send(PoolClass(), "release"), nullptr);
    EXPECT_NE(objc_getClass("NSAutoreleasePool"), nullptr);
}

TEST(AutoreleasePool, MessagesToNullGiveNull) {
    EXPECT_EQ(Send(nullptr, "alloc"), nullptr);
    EXPECT_EQ(Send(nullptr, "init"), nullptr);
    EXPECT_EQ(Send(nullptr, "release"), nullptr);
}

} // namespace
