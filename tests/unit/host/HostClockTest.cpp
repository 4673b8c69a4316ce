#include <kelvra/HostClock.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <ctime>

namespace {

class HostClockTest : public ::testing::Test {
protected:
    void TearDown() override { clock.UseSystemClock(); }
    kelvra::HostClock clock;
};

TEST_F(HostClockTest, ASetClockIsWhatTimeAnswers) {
    clock.Set(1'000'000'000);
    EXPECT_TRUE(clock.IsSet());
    EXPECT_EQ(clock.Now(), 1'000'000'000);
    std::time_t out = 0;
    EXPECT_EQ(::time(&out), 1'000'000'000);
    EXPECT_EQ(out, 1'000'000'000);
    EXPECT_EQ(::time(nullptr), 1'000'000'000);
}

TEST_F(HostClockTest, AdvanceMovesTheClockOn) {
    clock.Set(100);
    clock.Advance(5);
    EXPECT_EQ(::time(nullptr), 105);
    clock.Advance(-105);
    EXPECT_EQ(::time(nullptr), 0);
}

TEST_F(HostClockTest, TheSystemClockIsUsedUntilSet) {
    clock.Set(7);
    clock.UseSystemClock();
    EXPECT_FALSE(clock.IsSet());
    // Bracketed by the system clock, however long the machine takes between.
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_REALTIME, &before);
    const std::time_t answered = ::time(nullptr);
    clock_gettime(CLOCK_REALTIME, &after);
    EXPECT_GE(answered, before.tv_sec);
    EXPECT_LE(answered, after.tv_sec);
}

TEST_F(HostClockTest, LoadedLibrariesFindTheHostsTime) {
    // A module binds time() through the global scope, which starts at the
    // program: the program must export the host's definition.
    void* global = dlsym(RTLD_DEFAULT, "time");
    ASSERT_NE(global, nullptr);
    using TimeFunction = std::time_t (*)(std::time_t*);
    clock.Set(42);
    EXPECT_EQ(reinterpret_cast<TimeFunction>(global)(nullptr), 42);
}

}  // namespace
