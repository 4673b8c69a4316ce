#include "ModuleTesting.h"

#include <KVFrameworkSuites.h>
#include <ZPMessages.h>

namespace module_testing {

std::vector<std::string> Holdings(kelvra::Host& host) {
    std::vector<std::string> held;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) {
        if (suite.Held() != 0 || suite.extraReleases != 0) {
            held.push_back(suite.name + ": " + std::to_string(suite.acquired) + " acquired, " +
                           std::to_string(suite.released) + " released");
        }
    }
    const kelvra::BlockCounts blocks = host.LiveBlocks();
    const kelvra::ObjectCounts objects = host.LiveObjects();
    const std::pair<const char*, std::size_t> counts[] = {
        {"ZPBasic blocks", blocks.basic},      {"ZP Blocks blocks", blocks.blocks},
        {"bad frees", blocks.badFrees},        {"strings", objects.strings},
        {"file paths", objects.filePaths},     {"data filters", objects.dataFilters},
        {"access handles", objects.accesses},  {"app contexts", objects.appContexts},
    };
    for (const auto& [what, count] : counts) {
        if (count != 0) held.push_back(std::to_string(count) + " " + what);
    }
    return held;
}

std::vector<std::string> Shown(kelvra::Host& host) {
    std::vector<std::string> shown;
    for (const kelvra::Event& event : host.Events().All()) {
        switch (event.kind) {
            case kelvra::Event::Kind::Alert:
                shown.push_back("alert: " + event.text);
                break;
            case kelvra::Event::Kind::MoreInfo:
                shown.push_back("more-info " + std::to_string(event.number) + ": " + event.text + " | " +
                                event.helpKey);
                break;
            case kelvra::Event::Kind::Usage:
                shown.push_back("usage: " + event.category + " / " + event.event + " / " +
                                (event.hasDetail ? event.detail : "(none)"));
                break;
            case kelvra::Event::Kind::Question:
                shown.push_back("question: " + event.text);
                break;
            // What the host itself saw happen is not something the module showed.
            case kelvra::Event::Kind::CustomColorRedefined:
            case kelvra::Event::Kind::CustomColorShared:
            case kelvra::Event::Kind::EmptySwatchName:
                break;
        }
    }
    return shown;
}

ZPErr SendProbe(kelvra::Module& module, ProbeCommand& command) {
    KVNotifierMessage message{};
    message.notifier = nullptr;
    message.type = "probe";
    message.notifyData = &command;
    return module.Send(kKVNotifierCaller, kKVNotifySelector, message.d);
}

ZPErr SendProbe(kelvra::Module& module, ProbeCommand::Action action, std::uint32_t code) {
    ProbeCommand command;
    command.action = action;
    command.code = code;
    return SendProbe(module, command);
}

ZPErr SendSaveNotification(kelvra::Host& host, kelvra::Module& module, const char* selector) {
    KVNotifierMessage message{};
    for (const kelvra::NotifierRecord& notifier : host.Notifiers()) {
        if (notifier.owner == &module && notifier.type == kKVSaveUserDataNotifier) message.notifier = notifier.handle;
    }
    message.type = kKVSaveUserDataNotifier;
    return module.Send(kKVNotifierCaller, selector, message.d);
}

std::string UnknownErrorText(const std::string& code) {
    return "The operation cannot complete because of an unknown error.   [" + code + "] ";
}

}  // namespace module_testing
