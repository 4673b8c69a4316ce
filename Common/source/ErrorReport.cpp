#include "ErrorReport.h"

#include <optional>

#include "EntryBasicSuite.h"
#include "ErrorMessage.h"
#include "IKVGlobalUnicodeString.h"
#include "KVFrameworkSuites.h"
#include "KVUnicodeString.h"
#include "ScopedSuite.h"
#include "SilentCodes.h"
#include "SuiteImports.h"
#include "SuiteNode.h"

namespace kv {

namespace {

IKVGlobalUnicodeString gOutOfMemoryMessage(
    "$$$/_UIString/Str/RAMErrorErrorMessage=We've hit a roadblock! There isn't enough available memory (RAM).\n"
    "Try to update Kelvra and your graphics card to the latest version and restart your computer.\n"
    "Still no luck? Submit the crash report.");
IKVGlobalUnicodeString gOutOfMemoryHelpPage("$$$/Kelvra/app/RAMError/RAMErrorDialog/MoreInfoButton/OnClickURL");
IKVGlobalUnicodeString gUnknownErrorMessage(
    "$$$/UIString/Str/CantErrorMsgDialog/UnknownCantErrorMessage=An unknown error occurred.\t\t\t\t\t\n"
    "Click MORE INFO and try some of the solutions to fix the issue.");
IKVGlobalUnicodeString gUnknownErrorHelpPage(
    "$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL");

constexpr std::int32_t kOutOfMemoryDialog = 2103;
constexpr std::int32_t kUnknownErrorDialog = 2102;

SuiteNode& ThreadPoolSuite() {
    static SuiteNode node(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, SuiteNode::kOnDemand);
    return node;
}

SuiteNode& UserPrivateSuite() {
    static SuiteNode node(kKVUserPrivateSuite, kKVUserPrivateSuiteVersion, SuiteNode::kOnDemand);
    return node;
}

SuiteNode& GlobalStringSuite() {
    static SuiteNode node(kKVGlobalUnicodeStringSuite, kKVGlobalUnicodeStringSuiteVersion, SuiteNode::kOnDemand);
    return node;
}

SuiteNode& UsageSuite() {
    static SuiteNode node(kKVOrvikPIPSuite, kKVOrvikPIPSuiteVersion, SuiteNode::kOnDemand);
    return node;
}

// Whether the host lets a dialog be shown now.
bool MayShowDialog() noexcept {
    const auto* threads = AcquireSuiteOrNull<KVThreadPoolSuite>(ThreadPoolSuite());
    return threads != nullptr && threads->CanShowModalDialog() != 0;
}

void ShowAlert(const KVUserSuite& user, const char* message) {
    if (!MayShowDialog()) return;
    try {
        const UnicodeString text = UnicodeString::FromPlatformText(message);
        user.ErrorAlert(text.Get());
    } catch (const Error&) {
        // No host string, no alert.
    }
}

void ShowMoreInfoDialog(IKVGlobalUnicodeString& message, IKVGlobalUnicodeString& helpPage, std::int32_t number) {
    if (!MayShowDialog()) return;
    const auto* dialogs = AcquireSuiteOrNull<KVUserPrivateSuite>(UserPrivateSuite());
    const auto* globals = AcquireSuiteOrNull<KVGlobalUnicodeStringSuite>(GlobalStringSuite());
    if (dialogs == nullptr || globals == nullptr) return;
    KVUnicodeStringRef messageString = message.Get(*globals);
    KVUnicodeStringRef helpPageString = helpPage.Get(*globals);
    dialogs->ErrorDialogWithMoreInfo(messageString, helpPageString, number);
}

void RecordCantHappenUsage(const char* pluginName) noexcept {
    if (const auto* usage = AcquireSuiteOrNull<KVOrvikPIPSuite>(UsageSuite())) {
        usage->LogUsageEvent("Error Dialog with More Info Button", "kCantHappenErr", pluginName);
    }
}

}  // namespace

void ReportErrorToUser(ZPPluginRef self, ResultCode code, const char* pluginName) {
    if (IsSilentCode(code)) return;
    const ZPBasicSuite* basic = EntryBasicSuite();
    if (basic == nullptr) return;

    const UXKBasicSuite* strings = framework::UXKBasic();
    std::optional<ScopedSuite> ownStrings;
    if (strings == nullptr) {
        strings = ownStrings.emplace(*basic, kUXKBasicSuite, kUXKBasicSuiteVersion).As<UXKBasicSuite>();
        if (strings == nullptr) return;
    }
    const ScopedSuite userSuite(*basic, kKVUserSuite, kKVUserSuiteVersion);
    const auto* user = userSuite.As<KVUserSuite>();
    if (user == nullptr) return;

    if (code == kOutOfMemoryErr) {
        ShowMoreInfoDialog(gOutOfMemoryMessage, gOutOfMemoryHelpPage, kOutOfMemoryDialog);
    } else if (code == kCantHappenErr) {
        RecordCantHappenUsage(pluginName);
        ShowMoreInfoDialog(gUnknownErrorMessage, gUnknownErrorHelpPage, kUnknownErrorDialog);
    } else {
        char message[kErrorMessageSize];
        const auto owner = reinterpret_cast<KVResourceOwner>(self);
        if (ChooseErrorMessage(*basic, *strings, owner, code, message)) ShowAlert(*user, message);
    }
}

}  // namespace kv
