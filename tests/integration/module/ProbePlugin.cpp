// A plug-in on the module framework whose handlers answer, throw and report
// as a test asks (ProbeCommand.h), so that the framework's behaviour can be
// seen through the emulated host where the real plug-in gives no occasion.
#include <new>

#include "KVError.h"
#include "KVFileSuites.h"
#include "PluginHooks.h"
#include "ProbeCommand.h"

#ifndef __cpp_sized_deallocation
// Without sized deallocation (clang's default) <new> does not declare the
// sized forms, which the module defines all the same.
void operator delete(void* memory, std::size_t size) noexcept;
void operator delete[](void* memory, std::size_t size) noexcept;
void operator delete(void* memory, std::size_t size, std::align_val_t alignment) noexcept;
void operator delete[](void* memory, std::size_t size, std::align_val_t alignment) noexcept;
#endif

namespace {

struct ProbeFailure : std::exception {
    const char* what() const noexcept override { return "probe failure"; }
};

const std::align_val_t kAlignment{ProbeCommand::kAlignment};
constexpr std::size_t kSize = ProbeCommand::kAllocationSize;

void* Allocate(ProbeCommand::Form form) {
    switch (form) {
        case ProbeCommand::kNew:
        case ProbeCommand::kNewSizedDelete:
            return ::operator new(kSize);
        case ProbeCommand::kNewArray:
        case ProbeCommand::kNewArraySizedDelete:
            return ::operator new[](kSize);
        case ProbeCommand::kNewNothrow:
            return ::operator new(kSize, std::nothrow);
        case ProbeCommand::kNewArrayNothrow:
            return ::operator new[](kSize, std::nothrow);
        case ProbeCommand::kNewAligned:
        case ProbeCommand::kNewAlignedSizedDelete:
            return ::operator new(kSize, kAlignment);
        case ProbeCommand::kNewArrayAligned:
        case ProbeCommand::kNewArrayAlignedSizedDelete:
            return ::operator new[](kSize, kAlignment);
        case ProbeCommand::kNewAlignedNothrow:
            return ::operator new(kSize, kAlignment, std::nothrow);
        case ProbeCommand::kNewArrayAlignedNothrow:
            return ::operator new[](kSize, kAlignment, std::nothrow);
        case ProbeCommand::kFormCount:
            break;
    }
    return nullptr;
}

void Free(ProbeCommand::Form form, void* memory) {
    switch (form) {
        case ProbeCommand::kNew:
            return ::operator delete(memory);
        case ProbeCommand::kNewSizedDelete:
            return ::operator delete(memory, kSize);
        case ProbeCommand::kNewArray:
            return ::operator delete[](memory);
        case ProbeCommand::kNewArraySizedDelete:
            return ::operator delete[](memory, kSize);
        case ProbeCommand::kNewNothrow:
            return ::operator delete(memory, std::nothrow);
        case ProbeCommand::kNewArrayNothrow:
            return ::operator delete[](memory, std::nothrow);
        case ProbeCommand::kNewAligned:
            return ::operator delete(memory, kAlignment);
        case ProbeCommand::kNewAlignedSizedDelete:
            return ::operator delete(memory, kSize, kAlignment);
        case ProbeCommand::kNewArrayAligned:
            return ::operator delete[](memory, kAlignment);
        case ProbeCommand::kNewArrayAlignedSizedDelete:
            return ::operator delete[](memory, kSize, kAlignment);
        case ProbeCommand::kNewAlignedNothrow:
            return ::operator delete(memory, kAlignment, std::nothrow);
        case ProbeCommand::kNewArrayAlignedNothrow:
            return ::operator delete[](memory, kAlignment, std::nothrow);
        case ProbeCommand::kFormCount:
            break;
    }
}

class ProbePlugin final : public kv::Plugin {
public:
    explicit ProbePlugin(ZPPluginRef self) noexcept : Plugin(self) { SetName("Probe Plugin"); }
    explicit ProbePlugin(State&& kept) noexcept : Plugin(std::move(kept)) {}

    kv::ResultCode Purge() override { return purgeAnswer_; }

    kv::ResultCode SaveUserData() override {
        ++saves_;
        return saveAnswer_;
    }

    kv::ResultCode Notify(KVNotifierMessage* message) override {
        auto* command = static_cast<ProbeCommand*>(message->notifyData);
        if (command == nullptr) return kv::kNoErr;
        switch (command->action) {
            case ProbeCommand::kAnswer:
                return command->code;
            case ProbeCommand::kThrowError:
                throw kv::Error(command->code, nullptr);
            case ProbeCommand::kThrowContractViolation:
                throw kv::Contract::Violation("Failed Postcondition");
            case ProbeCommand::kThrowBadAlloc:
                throw std::bad_alloc();
            case ProbeCommand::kThrowStandard:
                throw ProbeFailure();
            case ProbeCommand::kThrowInteger:
                throw 42;
            case ProbeCommand::kReportError:
                ReportError(command->code, kKVNotifierCaller, kKVNotifySelector, message);
                return kv::kNoErr;
            case ProbeCommand::kSetPurgeAnswer:
                purgeAnswer_ = command->code;
                return kv::kNoErr;
            case ProbeCommand::kSetSaveAnswer:
                saveAnswer_ = command->code;
                return kv::kNoErr;
            case ProbeCommand::kCountSaves:
                command->count = saves_;
                return kv::kNoErr;
            case ProbeCommand::kAllocate:
                command->memory = Allocate(command->form);
                return kv::kNoErr;
            case ProbeCommand::kFree:
                Free(command->form, command->memory);
                return kv::kNoErr;
        }
        return kv::kBadParameterErr;
    }

private:
    kv::ResultCode purgeAnswer_ = kv::kNoErr;
    kv::ResultCode saveAnswer_ = kv::kNoErr;
    std::int32_t saves_ = 0;
};

const void* gFileFormatSuite = nullptr;

constexpr kv::SuiteImportEntry kImports[] = {
    {kKVFileFormatSuite, kKVFileFormatSuiteVersion, &gFileFormatSuite},
    {nullptr, 0, nullptr},
};

}  // namespace

namespace kv {

Plugin* NewPlugin(ZPPluginRef self) { return new (std::nothrow) ProbePlugin(self); }

void FixupReload(Plugin& plugin) { RebuildAfterReload<ProbePlugin>(plugin); }

const SuiteImportEntry* PluginImports() noexcept { return kImports; }

}  // namespace kv
