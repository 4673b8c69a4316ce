// The frame of a command that acts as another plug-in of the module: the
// module loaded and started in a new host, a client of its suite acquired,
// the command's work, then the client released and the module shut down.
//
//   module: build/dev/plugin/Tintora.so
//     ZP Interface / Startup -> 0
//   ... the command's own lines ...
//   shut-down:
//     ZP Interface / Shutdown -> 0
#pragma once

#include <kelvra/EventLog.h>
#include <kelvra/Host.h>
#include <kelvra/TintoraClient.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kelvra::cli {

struct ClientRun {
    std::filesystem::path module;
    std::string refusal;  // why the module file was refused; empty when loaded
    ZPErr startup = 0;
    std::vector<Event> startupEvents;
    std::string refusedSuite;  // the suite the client could not acquire, with its version
    ZPErr acquisition = 0;     // and the basic suite's answer
    std::optional<ZPErr> shutdown;  // none when start-up failed
    std::vector<Event> shutdownEvents;

    // The module started and the client has its suites: the work ran.
    bool Ready() const { return refusal.empty() && startup == kZPNoErr && refusedSuite.empty(); }
    bool Succeeded() const { return Ready() && shutdown == kZPNoErr; }
};

// What the work is given; `eventsSeen` marks the events already shown
// (EventsSince.h).
struct ClientWork {
    Host& host;
    Module& module;
    TintoraClient& client;
    std::size_t& eventsSeen;
};

// Loads and starts `module` in a new host, set up first by `prepare`, and
// runs `work` when the client has its suites. The client is released before
// the module shuts down.
ClientRun RunAsClient(const std::filesystem::path& module, const std::function<void(Host&)>& prepare,
                      const std::function<void(ClientWork&)>& work);

// The lines before the command's own: the module, its start-up, and why
// nothing more ran when it did not.
void WriteStart(std::ostream& out, const ClientRun& run);
void WriteShutdown(std::ostream& out, const ClientRun& run);

// {"module", "startup": {"result", "resultText", "events"},
//  "suite": {"acquired": bool, "refused": "KV Tintora Suite 1" or null, "result", "resultText"},
//  "shutdown": {"result", "resultText", "events"} or null}, or {"module", "error"}
// when the module file was refused. The command adds its own keys.
nlohmann::json ClientRunJson(const ClientRun& run);
// {"result", "resultText", "refused": bool, "failedHostCall": text or null}
nlohmann::json CallJson(const TintoraCall& call);

}  // namespace kelvra::cli
