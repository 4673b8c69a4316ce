// The module file exports main alone, and the module's objects live in the
// host's blocks while the host's own memory never passes through the module.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <kelvra/ElfFile.h>

#include <cstdint>
#include <memory>

#include "ModuleTesting.h"

namespace {

using module_testing::Holdings;
using module_testing::kProbe;
using module_testing::kTintora;
using module_testing::SendProbe;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ModuleMemoryTest, TheModuleDefinesMainAndNoOtherDynamicSymbol) {
    EXPECT_THAT(kelvra::ElfFile::Read(kTintora).DefinedDynamicSymbols(), ElementsAre("main"));
    EXPECT_THAT(kelvra::ElfFile::Read(kProbe).DefinedDynamicSymbols(), ElementsAre("main"));
}

TEST(ModuleMemoryTest, TheModulesObjectsLiveInHostBlocksUntilShutdown) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    EXPECT_EQ(host.LiveBlocks().basic, 0u);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    EXPECT_GT(host.LiveBlocks().basic, 0u);
    ASSERT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_EQ(host.LiveBlocks().basic, 0u);
    EXPECT_EQ(host.LiveBlocks().badFrees, 0u);
}

TEST(ModuleMemoryTest, WithoutAHostBlockForThePluginObjectStartupAnswersOutOfMemory) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    host.Faults().FailBlockAllocation(1);
    EXPECT_EQ(module.Startup(), 0x214D454Du);
    EXPECT_EQ(module.Globals(), nullptr);
    EXPECT_THAT(Holdings(host), IsEmpty());
}

TEST(ModuleMemoryTest, TheHostsOwnAllocationsDoNotGoThroughTheModule) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    const std::size_t moduleBlocks = host.LiveBlocks().basic;
    auto hostMemory = std::make_unique<std::uint8_t[]>(4096);
    auto hostObject = std::make_shared<std::string>(100, 'h');
    EXPECT_EQ(host.LiveBlocks().basic, moduleBlocks);
    hostMemory.reset();
    hostObject.reset();
    EXPECT_EQ(host.LiveBlocks().badFrees, 0u);
    module.Shutdown();
}

class ProbeMemoryTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(module_.Startup(), kZPNoErr); }
    void TearDown() override {
        host_.Faults().Clear();
        EXPECT_EQ(module_.Shutdown(), kZPNoErr);
        EXPECT_THAT(Holdings(host_), IsEmpty());
    }

    ZPErr Allocate(ProbeCommand::Form form, void*& memory) {
        ProbeCommand command;
        command.action = ProbeCommand::kAllocate;
        command.form = form;
        const ZPErr result = SendProbe(module_, command);
        memory = command.memory;
        return result;
    }

    ZPErr Free(ProbeCommand::Form form, void* memory) {
        ProbeCommand command;
        command.action = ProbeCommand::kFree;
        command.form = form;
        command.memory = memory;
        return SendProbe(module_, command);
    }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(kProbe);
};

bool IsAligned(ProbeCommand::Form form) { return form >= ProbeCommand::kNewAligned; }

bool IsNothrow(ProbeCommand::Form form) {
    return form == ProbeCommand::kNewNothrow || form == ProbeCommand::kNewArrayNothrow ||
           form == ProbeCommand::kNewAlignedNothrow || form == ProbeCommand::kNewArrayAlignedNothrow;
}

TEST_F(ProbeMemoryTest, EveryFormOfNewTakesAHostBlockAndItsDeleteGivesItBack) {
    for (int f = 0; f < ProbeCommand::kFormCount; ++f) {
        const auto form = static_cast<ProbeCommand::Form>(f);
        const std::size_t before = host_.LiveBlocks().basic;
        void* memory = nullptr;
        ASSERT_EQ(Allocate(form, memory), kZPNoErr) << f;
        ASSERT_NE(memory, nullptr) << f;
        EXPECT_EQ(host_.LiveBlocks().basic, before + 1) << f;
        if (IsAligned(form)) {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % ProbeCommand::kAlignment, 0u) << f;
        }
        EXPECT_EQ(Free(form, memory), kZPNoErr) << f;
        EXPECT_EQ(host_.LiveBlocks().basic, before) << f;
    }
    EXPECT_EQ(host_.LiveBlocks().badFrees, 0u);
}

TEST_F(ProbeMemoryTest, DeletingNullDoesNothingInEveryForm) {
    const std::size_t before = host_.LiveBlocks().basic;
    for (int f = 0; f < ProbeCommand::kFormCount; ++f) {
        EXPECT_EQ(Free(static_cast<ProbeCommand::Form>(f), nullptr), kZPNoErr) << f;
    }
    EXPECT_EQ(host_.LiveBlocks().basic, before);
    EXPECT_EQ(host_.LiveBlocks().badFrees, 0u);
}

TEST_F(ProbeMemoryTest, WithoutAHostBlockThrowingNewThrowsBadAllocAndNothrowNewAnswersNull) {
    for (int f = 0; f < ProbeCommand::kFormCount; ++f) {
        const auto form = static_cast<ProbeCommand::Form>(f);
        host_.Faults().FailBlockAllocation(1);
        void* memory = reinterpret_cast<void*>(1);
        // std::bad_alloc reaches the dispatcher as "!MEM".
        EXPECT_EQ(Allocate(form, memory), IsNothrow(form) ? kZPNoErr : 0x214D454Du) << f;
        if (IsNothrow(form)) {
            EXPECT_EQ(memory, nullptr) << f;
        }
    }
    host_.Faults().Clear();
    EXPECT_EQ(host_.LiveBlocks().badFrees, 0u);
}

}  // namespace
