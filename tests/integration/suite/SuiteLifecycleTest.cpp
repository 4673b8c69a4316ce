// A thousand lives of the module with a hundred libraries: started, its
// libraries gathered and listed by another plug-in, unloaded, reloaded and
// shut down, each time giving back every block and every suite.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "SuiteTesting.h"

namespace {

TEST(SuiteLifecycleTest, AThousandLivesWithAHundredLibrariesLeaveNothingBehind) {
    testsupport::TemporaryFolder home;
    for (int i = 0; i < 100; ++i) {
        const std::filesystem::path folder = home.Path() / (i % 2 == 0 ? "user-88" : "user-89") / std::to_string(i % 5);
        std::filesystem::create_directories(folder);
        std::ofstream(folder / ("Library " + std::to_string(i) + ".ose")) << "library";
    }
    kelvra::Host host;
    host.Folders().UseHome(home.Path());
    host.Preferences().UseFile(home.Path() / "preferences.json");
    kelvra::Module& module = host.Load(suite_testing::kTintora);
    for (int life = 0; life < 1000; ++life) {
        ASSERT_EQ(module.Startup(), kZPNoErr) << life;
        {
            suite_testing::OtherPlugin plugin(host);
            std::int32_t count = 0;
            ASSERT_EQ(plugin.Tintora()->CountLibraries(&count), kZPNoErr) << life;
            ASSERT_EQ(count, 101) << life;
            KVUnicodeStringRef name = plugin.NewString("");
            for (std::int32_t i = 1; i < count; ++i) ASSERT_EQ(plugin.Tintora()->GetLibraryName(i, name), kZPNoErr);
            EXPECT_EQ(plugin.TextOf(name), "Library 99") << life;
            plugin.Strings().Dispose(name);
        }
        ASSERT_EQ(module.Unload(), kZPNoErr) << life;
        ASSERT_EQ(module.Reload(), kZPNoErr) << life;
        ASSERT_EQ(module.Shutdown(), kZPNoErr) << life;
        ASSERT_EQ(host.LiveBlocks().basic, 0u) << life;
        ASSERT_EQ(host.LiveBlocks().blocks, 0u) << life;
        ASSERT_EQ(host.SuitesHeld(), 0u) << life;
    }
    EXPECT_THAT(import_testing::Leftovers(host), testing::IsEmpty());
}

}  // namespace
