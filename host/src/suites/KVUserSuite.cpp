// Alerts and questions: what the user would see goes to the event log; a
// question is answered by the host's policy.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVUserSuite};

ZPErr QuestionAlert(HostState& host, KVUnicodeStringRef message, ZPBoolean* yes) {
    if (yes == nullptr || host.strings.Find(message) == nullptr) return kZPBadParameterErr;
    Event event;
    event.kind = Event::Kind::Question;
    event.text = host.Utf8Of(message);
    event.key = host.KeyOf(message);
    event.answer = host.answerQuestion(event.text);
    *yes = event.answer ? 1 : 0;
    host.events.Add(std::move(event));
    return kZPNoErr;
}

ZPErr ErrorAlert(HostState& host, KVUnicodeStringRef message) {
    if (host.strings.Find(message) == nullptr) return kZPBadParameterErr;
    Event event;
    event.kind = Event::Kind::Alert;
    event.text = host.Utf8Of(message);
    event.key = host.KeyOf(message);
    host.events.Add(std::move(event));
    return kZPNoErr;
}

const KVUserSuite table = [] {
    KVUserSuite suite{};
    FillReserved(suite.reserved0to44);
    suite.QuestionAlert = HostFunction<kSuite, "QuestionAlert", &QuestionAlert>::Call;
    suite.ErrorAlert = HostFunction<kSuite, "ErrorAlert", &ErrorAlert>::Call;
    return suite;
}();

}  // namespace

const void* KVUserSuiteTable() { return &table; }

}  // namespace kelvra
