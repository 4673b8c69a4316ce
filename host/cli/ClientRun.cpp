#include "ClientRun.h"

#include "EventText.h"
#include "EventsSince.h"
#include "ResultJson.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

namespace kelvra::cli {

ClientRun RunAsClient(const std::filesystem::path& module, const std::function<void(Host&)>& prepare,
                      const std::function<void(ClientWork&)>& work) {
    ClientRun run;
    run.module = module;
    Host host;
    prepare(host);
    Module* loaded = nullptr;
    try {
        loaded = &host.Load(module);
    } catch (const HostError& error) {
        run.refusal = error.what();
        return run;
    }
    std::size_t seen = 0;
    run.startup = loaded->Startup();
    run.startupEvents = EventsSince(host.Events(), seen);
    if (run.startup != kZPNoErr) return run;
    {
        TintoraClient client(host.BasicSuite());
        run.refusedSuite = client.RefusedSuite();
        run.acquisition = client.AcquisitionFailure();
        if (client.Acquired()) {
            ClientWork context{host, *loaded, client, seen};
            work(context);
        }
    }
    run.shutdown = loaded->Shutdown();
    run.shutdownEvents = EventsSince(host.Events(), seen);
    return run;
}

void WriteStart(std::ostream& out, const ClientRun& run) {
    out << "module: " << run.module.string() << "\n";
    if (!run.refusal.empty()) {
        out << "refused: " << run.refusal << "\n";
        return;
    }
    out << "  ZP Interface / Startup -> " << ResultText(run.startup) << "\n";
    WriteEvents(out, run.startupEvents);
    if (run.startup != kZPNoErr) out << "start-up failed: the module's suite was not called\n";
    else if (!run.refusedSuite.empty())
        out << "  acquiring " << run.refusedSuite << " -> " << ResultText(run.acquisition)
            << ": the module's suite was not called\n";
}

void WriteShutdown(std::ostream& out, const ClientRun& run) {
    if (!run.shutdown) return;
    out << "shut-down:\n  ZP Interface / Shutdown -> " << ResultText(*run.shutdown) << "\n";
    WriteEvents(out, run.shutdownEvents);
}

nlohmann::json CallJson(const TintoraCall& call) {
    nlohmann::json json = ResultJson(call.code);
    json["refused"] = call.refused;
    json["failedHostCall"] = call.failedHostCall.empty() ? nlohmann::json(nullptr) : nlohmann::json(call.failedHostCall);
    return json;
}

nlohmann::json ClientRunJson(const ClientRun& run) {
    nlohmann::json json = {{"module", run.module.string()}};
    if (!run.refusal.empty()) {
        json["error"] = run.refusal;
        return json;
    }
    json["startup"] = ResultJson(run.startup);
    json["startup"]["events"] = ToJson(run.startupEvents);
    json["suite"] = nullptr;
    if (run.startup == kZPNoErr) {
        json["suite"] = ResultJson(run.acquisition);
        json["suite"]["acquired"] = run.refusedSuite.empty();
        json["suite"]["refused"] = run.refusedSuite.empty() ? nlohmann::json(nullptr) : nlohmann::json(run.refusedSuite);
    }
    json["shutdown"] = nullptr;
    if (run.shutdown) {
        json["shutdown"] = ResultJson(*run.shutdown);
        json["shutdown"]["events"] = ToJson(run.shutdownEvents);
    }
    return json;
}

}  // namespace kelvra::cli
