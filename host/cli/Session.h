// kelvra-host session: the emulated host driven one command at a time. Each
// command is a JSON object with "cmd"; each answer one JSON object
// {"ok": bool, "result": 0 or "CODE", ...} or {"ok": false, "error": "..."}.
// The session is the host, and another plug-in of the module's suite: it
// hands out numbers for the reference books it made and the documents the
// host holds, and gives back what it holds when it ends.
#pragma once

#include "HostSetup.h"

#include <kelvra/Host.h>
#include <kelvra/TintoraClient.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace kelvra::cli {

struct SessionOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    HostSetup setup;
};

class Session {
public:
    // Loads the module; a module file the host refuses leaves a session that
    // answers every module command with the reason.
    explicit Session(const SessionOptions& options);
    // Disposes of the books, releases the suite and shuts the module down
    // when it is still started.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The answer to one command; never throws.
    nlohmann::json Answer(const nlohmann::json& command) noexcept;
    // After "quit".
    bool Ended() const { return ended_; }
    // The module file was refused.
    bool Refused() const { return module_ == nullptr; }

private:
    nlohmann::json Dispatch(const std::string& name, const nlohmann::json& command);
    nlohmann::json Lifecycle(const std::string& name);
    nlohmann::json Message(const nlohmann::json& command);
    nlohmann::json Notify(const nlohmann::json& command);
    nlohmann::json Import(const nlohmann::json& command);
    nlohmann::json DocumentAnswer(const nlohmann::json& command);
    nlohmann::json Documents();
    nlohmann::json SuiteCall(const std::string& name, const nlohmann::json& command);
    nlohmann::json Events();
    nlohmann::json Counts();
    nlohmann::json Fault(const nlohmann::json& command);
    nlohmann::json Clock(const nlohmann::json& command);
    nlohmann::json Remember(const nlohmann::json& command);

    Module& LoadedModule();
    TintoraClient& Client();
    // Gives the books back through the suite and releases it: before the
    // module shuts down, which frees the suite's table.
    void LetGoOfTheSuite();
    Document& DocumentById(std::int64_t id);
    nlohmann::json DocumentId(const Document* document);
    nlohmann::json SwatchListAnswer(const TintoraAnswer<KVSwatchListRef>& answer);
    ReferenceBookHandle& Book(std::int64_t id);

    Host host_;
    Module* module_ = nullptr;
    std::string refusal_;  // why the module file was refused
    bool started_ = false;
    std::unique_ptr<TintoraClient> client_;
    std::map<std::int64_t, ReferenceBookHandle> books_;
    std::int64_t nextBook_ = 1;
    std::size_t eventsSeen_ = 0;
    bool ended_ = false;
};

}  // namespace kelvra::cli
