#include "Session.h"

#include "EventsSince.h"
#include "ImportCommand.h"
#include "ImportReport.h"
#include "SessionFields.h"

#include <kelvra/DocumentJson.h>
#include <kelvra/EventJson.h>
#include <kelvra/HostError.h>
#include <kelvra/ResultText.h>

#include <ZPMessages.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace kelvra::cli {

namespace {

using nlohmann::json;

constexpr std::int64_t kInt32Least = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kInt32Most = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kCountMost = std::numeric_limits<std::int64_t>::max();

// A result code as the other commands show it: 0, else its text.
json Code(ZPErr code) { return code == kZPNoErr ? json(0) : json(ResultText(code)); }

json ResultAnswer(ZPErr code) { return {{"ok", code == kZPNoErr}, {"result", Code(code)}}; }

json CallAnswer(const TintoraCall& call) {
    json answer = ResultAnswer(call.code);
    answer["ok"] = call.Succeeded();
    if (call.refused) {
        // Nothing was called: the entry is null, after an unload.
        answer["result"] = nullptr;
        answer["refused"] = true;
        answer["error"] = "refused: the entry is null";
    }
    if (!call.failedHostCall.empty()) answer["failedHostCall"] = call.failedHostCall;
    return answer;
}

const char* ModelName(KVReferenceColorModel model) {
    switch (model) {
    case kKVReferenceCMYK: return "cmyk";
    case kKVReferenceRGB: return "rgb";
    case kKVReferenceLab: return "lab";
    }
    return "?";
}

// A result code written as four characters ("CANT") or as a number.
ZPErr CodeField(const SessionFields& fields, const nlohmann::json& command) {
    const auto found = command.find("code");
    if (found == command.end() || found->is_null()) return kZPCantHappenErr;
    if (found->is_string()) {
        const std::string text = found->get<std::string>();
        if (text.size() != 4) throw SessionError("field \"code\" must be four characters or a number");
        return ZPErr(std::uint32_t(std::uint8_t(text[0])) << 24 | std::uint32_t(std::uint8_t(text[1])) << 16 |
                     std::uint32_t(std::uint8_t(text[2])) << 8 | std::uint32_t(std::uint8_t(text[3])));
    }
    return ZPErr(fields.Integer("code", kInt32Least, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

Session::Session(const SessionOptions& options) {
    ApplyHostSetup(Resolved(options.setup), host_);
    try {
        module_ = &host_.Load(options.module);
    } catch (const HostError& error) {
        refusal_ = error.what();
    }
}

Session::~Session() {
    try {
        LetGoOfTheSuite();
        if (started_ && module_ != nullptr && module_->IsLoaded()) module_->Shutdown();
    } catch (const std::exception&) {
        // Ending anyway: the host goes with the session.
    }
}

json Session::Answer(const json& command) noexcept {
    std::string name;
    try {
        if (!command.is_object()) throw SessionError("a command is a JSON object, such as {\"cmd\": \"startup\"}");
        name = SessionFields(command).Text("cmd");
        json answer = Dispatch(name, command);
        answer["cmd"] = name;
        return answer;
    } catch (const std::exception& error) {
        json answer = {{"ok", false}, {"error", error.what()}};
        if (!name.empty()) answer["cmd"] = name;
        return answer;
    }
}

json Session::Dispatch(const std::string& name, const json& command) {
    static const char* const kLifecycle[] = {"startup", "shutdown", "unload", "reload", "purge"};
    static const char* const kSuiteFunctions[] = {
        "CountLibraries",   "GetLibraryName",     "IsLibraryOpen",       "OpenLibrary",         "OpenLibraryFile",
        "GetLibrarySwatchList", "NewReferenceBook", "DisposeReferenceBook", "GetReferenceBookID", "ReadColorBook",
        "ReadLegacyColorBook", "FindReferenceSwatch", "IsColorBookFile",   "ExportSwatches"};
    const auto is = [&](const char* const* begin, const char* const* end) {
        return std::any_of(begin, end, [&](const char* known) { return name == known; });
    };
    if (is(std::begin(kLifecycle), std::end(kLifecycle))) return Lifecycle(name);
    if (is(std::begin(kSuiteFunctions), std::end(kSuiteFunctions))) return SuiteCall(name, command);
    if (name == "message") return Message(command);
    if (name == "notify") return Notify(command);
    if (name == "import") return Import(command);
    if (name == "document") return DocumentAnswer(command);
    if (name == "documents") return Documents();
    if (name == "events") return Events();
    if (name == "counts") return Counts();
    if (name == "fault") return Fault(command);
    if (name == "clock") return Clock(command);
    if (name == "remember") return Remember(command);
    if (name == "quit") {
        ended_ = true;
        return {{"ok", true}};
    }
    throw SessionError("unknown command \"" + name + "\"");
}

Module& Session::LoadedModule() {
    if (module_ == nullptr) throw SessionError("the module file was refused: " + refusal_);
    return *module_;
}

TintoraClient& Session::Client() {
    if (!client_ || !client_->Acquired()) client_ = std::make_unique<TintoraClient>(host_.BasicSuite());
    if (!client_->Acquired()) {
        const std::string refused = client_->RefusedSuite();
        const ZPErr why = client_->AcquisitionFailure();
        client_.reset();
        throw SessionError("acquiring " + refused + " answered " + ResultText(why));
    }
    return *client_;
}

void Session::LetGoOfTheSuite() {
    for (auto& [id, book] : books_) book.Dispose();
    books_.clear();
    client_.reset();
}

json Session::Lifecycle(const std::string& name) {
    Module& module = LoadedModule();
    ZPErr result = kZPNoErr;
    if (name == "startup") {
        if (started_) throw SessionError("the module is started already");
        result = module.Startup();
        started_ = result == kZPNoErr;
    } else if (name == "shutdown") {
        LetGoOfTheSuite();
        result = module.Shutdown();
        started_ = false;
    } else if (name == "unload") {
        if (!module.IsLoaded()) throw SessionError("the module is unloaded already");
        // A book is the module's object: it must not outlive the module's code.
        for (auto& [id, book] : books_) book.Dispose();
        books_.clear();
        result = module.Unload();
    } else if (name == "reload") {
        if (module.IsLoaded()) throw SessionError("the module is loaded: unload it first");
        result = module.Reload();
    } else {
        result = module.Purge();
    }
    return ResultAnswer(result);
}

json Session::Message(const json& command) {
    const SessionFields fields(command);
    const std::string caller = fields.Text("caller");
    const std::string selector = fields.Text("selector");
    // The life-cycle messages go the way of their commands, so the session
    // keeps track of the module's state.
    if (caller == kZPInterfaceCaller && selector == kZPStartupSelector) return Lifecycle("startup");
    if (caller == kZPInterfaceCaller && selector == kZPShutdownSelector) return Lifecycle("shutdown");
    if (caller == kZPAccessCaller && selector == kZPUnloadSelector) return Lifecycle("unload");
    if (caller == kZPAccessCaller && selector == kZPReloadSelector) return Lifecycle("reload");
    // Their records carry more than the header: they are sent by "import"
    // and "notify", which fill them in.
    if (caller == kKVFileFormatCaller) throw SessionError("file format messages are sent by \"import\"");
    if (caller == kKVNotifierCaller) throw SessionError("notifier messages are sent by \"notify\"");
    return ResultAnswer(LoadedModule().Send(caller.c_str(), selector.c_str()));
}

json Session::Notify(const json& command) {
    Module& module = LoadedModule();
    const std::optional<std::string> name = SessionFields(command).OptionalText("notifier");
    if (!name) return ResultAnswer(module.SaveUserData());
    for (const NotifierRecord& notifier : host_.Notifiers()) {
        if (notifier.owner == &module && notifier.name == *name) return ResultAnswer(module.Notify(notifier.handle));
    }
    throw SessionError("the module registered no notifier \"" + *name + "\"");
}

json Session::Import(const json& command) {
    const SessionFields fields(command);
    const std::vector<std::string> files = fields.Texts("files");
    const std::optional<std::int64_t> into = fields.OptionalInteger("document", 1, kCountMost);
    Document* placeInto = into ? &DocumentById(*into) : nullptr;
    json answer = {{"ok", true}, {"files", json::array()}};
    // Each file's events are in its entry; "events" shows them as well.
    std::size_t seen = host_.Events().All().size();
    for (const std::string& file : files) {
        const FileImport imported = ImportFile(host_, file, placeInto, seen);
        json entry = FileImportJson(imported);
        entry["documentId"] = imported.go ? json(imported.document + 1) : json(nullptr);
        answer["files"].push_back(std::move(entry));
        if (imported.Failed()) answer["ok"] = false;
    }
    return answer;
}

Document& Session::DocumentById(std::int64_t id) {
    const std::vector<Document*> all = host_.Documents().All();
    if (id < 1 || std::uint64_t(id) > all.size()) throw SessionError("no document " + std::to_string(id));
    return *all[std::size_t(id - 1)];
}

json Session::DocumentId(const Document* document) {
    if (document == nullptr) return nullptr;
    const std::vector<Document*> all = host_.Documents().All();
    return std::size_t(std::find(all.begin(), all.end(), document) - all.begin()) + 1;
}

json Session::DocumentAnswer(const json& command) {
    const std::int64_t id = SessionFields(command).Integer("document", 1, kCountMost);
    const Document& document = DocumentById(id);
    return {{"ok", true}, {"document", ToJson(document)}, {"hidden", host_.Documents().IsHidden(document)}};
}

json Session::Documents() {
    json list = json::array();
    for (const Document* document : host_.Documents().All()) {
        list.push_back({{"document", DocumentId(document)},
                        {"name", document->Name()},
                        {"hidden", host_.Documents().IsHidden(*document)},
                        {"current", host_.Documents().Current() == document}});
    }
    return {{"ok", true}, {"documents", std::move(list)}};
}

json Session::SwatchListAnswer(const TintoraAnswer<KVSwatchListRef>& answer) {
    json out = CallAnswer(answer.call);
    out["document"] = answer.call.Succeeded() && answer.value != nullptr
                          ? DocumentId(host_.Documents().OwnerOf(answer.value))
                          : json(nullptr);
    return out;
}

ReferenceBookHandle& Session::Book(std::int64_t id) {
    const auto found = books_.find(id);
    if (found == books_.end()) throw SessionError("no reference book " + std::to_string(id));
    return found->second;
}

json Session::SuiteCall(const std::string& name, const json& command) {
    const SessionFields fields(command);
    // Every argument is read before the call, so a wrong one calls nothing.
    if (name == "CountLibraries") {
        const auto answer = Client().CountLibraries();
        json out = CallAnswer(answer.call);
        out["count"] = answer.value;
        return out;
    }
    if (name == "GetLibraryName") {
        const auto index = std::int32_t(fields.Integer("index", kInt32Least, kInt32Most));
        const auto answer = Client().GetLibraryName(index);
        json out = CallAnswer(answer.call);
        out["name"] = answer.call.Succeeded() ? json(answer.value) : json(nullptr);
        return out;
    }
    if (name == "IsLibraryOpen") {
        const auto index = std::int32_t(fields.Integer("index", kInt32Least, kInt32Most));
        const auto answer = Client().IsLibraryOpen(index);
        json out = CallAnswer(answer.call);
        out["open"] = answer.value;
        return out;
    }
    if (name == "OpenLibrary" || name == "GetLibrarySwatchList") {
        const auto index = std::int32_t(fields.Integer("index", kInt32Least, kInt32Most));
        TintoraClient& client = Client();
        return SwatchListAnswer(name == "OpenLibrary" ? client.OpenLibrary(index) : client.GetLibrarySwatchList(index));
    }
    if (name == "OpenLibraryFile") {
        const std::string file = fields.Text("file");
        return SwatchListAnswer(Client().OpenLibraryFile(file));
    }
    if (name == "NewReferenceBook") {
        auto answer = Client().NewReferenceBook();
        json out = CallAnswer(answer.call);
        out["book"] = nullptr;
        if (answer.call.Succeeded() && answer.value) {
            out["book"] = nextBook_;
            books_.emplace(nextBook_++, std::move(answer.value));
        }
        return out;
    }
    if (name == "IsColorBookFile") {
        const std::string file = fields.Text("file");
        const auto answer = Client().IsColorBookFile(file);
        json out = CallAnswer(answer.call);
        out["answer"] = answer.value;
        return out;
    }
    if (name == "ExportSwatches") {
        const std::string file = fields.Text("file");
        const std::optional<std::int64_t> id = fields.OptionalInteger("document", 1, kCountMost);
        const KVDocumentHandle document = id ? DocumentById(*id).Handle() : nullptr;
        const FileExport exported = Client().ExportSwatchesToFile(document, file);
        json out = CallAnswer(exported.exported);
        out["ok"] = exported.Written();
        out["written"] = exported.Written();
        out["unlinked"] = exported.unlinked ? Code(*exported.unlinked) : json(nullptr);
        out["discarded"] = exported.discarded ? Code(*exported.discarded) : json(nullptr);
        return out;
    }
    // The rest work on a reference book the session handed out.
    const std::int64_t id = fields.Integer("book", 1, kCountMost);
    if (name == "DisposeReferenceBook") {
        const TintoraCall call = Book(id).Dispose();
        books_.erase(id);
        return CallAnswer(call);
    }
    if (name == "GetReferenceBookID") {
        const ReferenceBookHandle& book = Book(id);
        const auto answer = Client().GetReferenceBookID(book);
        json out = CallAnswer(answer.call);
        out["bookId"] = answer.value;
        return out;
    }
    if (name == "FindReferenceSwatch") {
        const std::string swatch = fields.Text("name");
        const ReferenceBookHandle& book = Book(id);
        const auto answer = Client().FindReferenceSwatch(book, swatch);
        json out = CallAnswer(answer.call);
        out["color"] = nullptr;
        if (answer.call.Succeeded()) {
            const ReferenceColour& colour = answer.value;
            out["color"] = {{"model", colour.model ? json(ModelName(*colour.model)) : json(nullptr)},
                            {"values", colour.values},
                            {"spot", colour.spot}};
        }
        return out;
    }
    // ReadColorBook, ReadLegacyColorBook.
    const std::string file = fields.Text("file");
    const ReferenceBookHandle& book = Book(id);
    TintoraClient& client = Client();
    return CallAnswer(name == "ReadColorBook" ? client.ReadColorBook(file, book)
                                              : client.ReadLegacyColorBook(file, book));
}

json Session::Events() { return {{"ok", true}, {"events", ToJson(EventsSince(host_.Events(), eventsSeen_))}}; }

json Session::Counts() {
    const BlockCounts blocks = host_.LiveBlocks();
    const ObjectCounts objects = host_.LiveObjects();
    json failed = json::array();
    for (const auto& [suite, function] : host_.Faults().FailedCalls()) failed.push_back(suite + " " + function);
    return {{"ok", true},
            {"blocks", blocks.basic + blocks.blocks},
            {"basicBlocks", blocks.basic},
            {"suiteBlocks", blocks.blocks},
            {"blockNames", blocks.blockNames},
            {"badFrees", blocks.badFrees},
            {"strings", objects.strings},
            {"filePaths", objects.filePaths},
            {"dataFilters", objects.dataFilters},
            {"accesses", objects.accesses},
            {"appContexts", objects.appContexts},
            {"suitesHeld", host_.SuitesHeld()},
            {"books", books_.size()},
            {"calls", host_.Faults().TotalCalls()},
            {"failedCalls", std::move(failed)}};
}

json Session::Fault(const json& command) {
    const SessionFields fields(command);
    const std::string action = fields.Text("action");
    FaultInjector& faults = host_.Faults();
    if (action == "clear") {
        faults.Clear();
        return {{"ok", true}};
    }
    if (action != "arm") throw SessionError("field \"action\" must be \"arm\" or \"clear\"");
    const std::string kind = fields.Text("kind");
    if (kind == "suite") {
        const std::string suite = fields.Text("suite");
        const std::optional<std::int64_t> version = fields.OptionalInteger("version", kInt32Least, kInt32Most);
        faults.MakeSuiteUnavailable(suite, version ? std::optional<std::int32_t>(std::int32_t(*version)) : std::nullopt);
        return {{"ok", true}};
    }
    const std::uint64_t nth = std::uint64_t(fields.OptionalInteger("nth", 1, kCountMost).value_or(1));
    const bool fromThenOn = fields.Flag("fromThenOn", false);
    if (kind == "call") {
        CallFault fault;
        fault.suite = fields.OptionalText("suite").value_or("");
        fault.function = fields.OptionalText("function").value_or("");
        if (fault.suite.empty() && !fault.function.empty())
            throw SessionError("field \"function\" needs the field \"suite\"");
        fault.nth = nth;
        fault.fromThenOn = fromThenOn;
        fault.code = CodeField(fields, command);
        faults.FailCall(std::move(fault));
        return {{"ok", true}};
    }
    if (kind == "block") {
        faults.FailBlockAllocation(nth, fromThenOn);
        return {{"ok", true}};
    }
    throw SessionError("field \"kind\" must be \"call\", \"block\" or \"suite\"");
}

json Session::Clock(const json& command) {
    const SessionFields fields(command);
    // Seconds since 1970 within what every clock can hold.
    constexpr std::int64_t kSeconds = std::int64_t(1) << 40;
    HostClock& clock = host_.Clock();
    if (fields.Flag("system", false)) {
        clock.UseSystemClock();
    } else if (const auto set = fields.OptionalInteger("set", 0, kSeconds)) {
        clock.Set(std::time_t(*set));
    } else if (const auto advance = fields.OptionalInteger("advance", -kSeconds, kSeconds)) {
        clock.Advance(std::time_t(*advance));
    }
    return {{"ok", true}, {"now", std::int64_t(clock.Now())}, {"set", clock.IsSet()}};
}

json Session::Remember(const json& command) {
    const std::string file = SessionFields(command).Text("file");
    const RememberedLibrary remembered = host_.Preferences().RememberLibrary(file);
    return {{"ok", true}, {"key", remembered.key}, {"path", remembered.path}};
}

}  // namespace kelvra::cli
