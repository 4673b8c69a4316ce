// What the module's integration tests share: the module files under test
// and views of the emulated host's counts and event log.
#pragma once

#include <kelvra/Host.h>

#include <string>
#include <vector>

#include "ProbeCommand.h"

namespace module_testing {

// The real module and the probe module on the same framework.
inline constexpr const char* kTintora = TINTORA_MODULE;
inline constexpr const char* kProbe = PROBE_MODULE;

// What a module still holds that it must have given back when it is not
// started: suites, host blocks and host objects; empty when nothing.
std::vector<std::string> Holdings(kelvra::Host& host);

// The user-visible events as "alert: <text>", "more-info <number>: <text> |
// <help key>", "usage: <category> / <event> / <detail or (none)>".
std::vector<std::string> Shown(kelvra::Host& host);

// Sends `command` to the started probe module in a notification on a
// notifier that is not its save notifier.
ZPErr SendProbe(kelvra::Module& module, ProbeCommand& command);
ZPErr SendProbe(kelvra::Module& module, ProbeCommand::Action action, std::uint32_t code = 0);

// A notification of the module's own save notifier with any selector.
ZPErr SendSaveNotification(kelvra::Host& host, kelvra::Module& module, const char* selector);

// The alert text of the fallback message for a code text such as "ABCD".
std::string UnknownErrorText(const std::string& code);

}  // namespace module_testing
