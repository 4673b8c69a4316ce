// The error dialog with a More Info button: message, the key of the help
// page's address, and the dialog's number go to the event log.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVUserPrivateSuite};

ZPErr ErrorDialogWithMoreInfo(HostState& host, KVUnicodeStringRef message, KVUnicodeStringRef helpKey,
                              std::int32_t number) {
    if (host.strings.Find(message) == nullptr || host.strings.Find(helpKey) == nullptr)
        return kZPBadParameterErr;
    Event event;
    event.kind = Event::Kind::MoreInfo;
    event.text = host.Utf8Of(message);
    event.key = host.KeyOf(message);
    const std::string key = host.KeyOf(helpKey);
    event.helpKey = key.empty() ? host.Utf8Of(helpKey) : key;
    event.number = number;
    host.events.Add(std::move(event));
    return kZPNoErr;
}

const KVUserPrivateSuite table = [] {
    KVUserPrivateSuite suite{};
    FillReserved(suite.reserved0to2);
    suite.ErrorDialogWithMoreInfo = HostFunction<kSuite, "ErrorDialogWithMoreInfo", &ErrorDialogWithMoreInfo>::Call;
    return suite;
}();

}  // namespace

const void* KVUserPrivateSuiteTable() { return &table; }

}  // namespace kelvra
