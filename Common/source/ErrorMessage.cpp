#include "ErrorMessage.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ScopedSuite.h"

namespace kv {

namespace {

enum class Found { kNothing, kAsItStands, kToFormat };

// A string list holds at most 65535 strings, so a host answering forever
// cannot keep the search going.
constexpr std::int32_t kLastStringIndex = 65535;

constexpr std::size_t kCodeEntrySize = 32;
constexpr std::size_t kLongestFormattedMessage = 119;
constexpr std::int32_t kFirstFourCharacterCode = 16385;

// Zero-filled, so that a short entry gives zero bytes after its text.
bool ReadString(const UXKBasicSuite& strings, KVResourceOwner owner, std::int32_t listId, std::int32_t index,
                char* buffer, std::size_t size) {
    std::memset(buffer, 0, size);
    return strings.GetIndexedString(owner, listId, index, buffer, static_cast<std::int32_t>(size)) == kNoErr &&
           buffer[0] != '\0';
}

ResultCode EntryCode(const char (&entry)[kCodeEntrySize]) {
    const auto first = static_cast<unsigned char>(entry[0]);
    if (first == '-' || std::isdigit(first)) {
        return static_cast<ResultCode>(static_cast<std::int32_t>(std::strtol(entry, nullptr, 10)));
    }
    return FourCC({entry[0], entry[1], entry[2], entry[3], '\0'});
}

Found LookUpOwnList(const UXKBasicSuite& strings, KVResourceOwner owner, ResultCode code,
                    char (&message)[kErrorMessageSize]) {
    for (std::int32_t index = 1; index < kLastStringIndex; index += 2) {
        char entry[kCodeEntrySize];
        if (!ReadString(strings, owner, kErrorStringListId, index, entry, sizeof entry)) {
            // The list has ended: its last message is the fallback.
            if (index == 1) return Found::kNothing;
            return ReadString(strings, owner, kErrorStringListId, index - 1, message, sizeof message) ? Found::kToFormat
                                                                                                   : Found::kNothing;
        }
        if (EntryCode(entry) == code) {
            return ReadString(strings, owner, kErrorStringListId, index + 1, message, sizeof message)
                       ? Found::kAsItStands
                       : Found::kNothing;
        }
    }
    return Found::kNothing;
}

// Replaces the host's message for `code`, if it has one.
bool LookUpHostList(const ZPBasicSuite& basic, const UXKBasicSuite& strings, ResultCode code,
                    char (&message)[kErrorMessageSize]) {
    const ScopedSuite hostInit(basic, kLexoHostInitSuite, kLexoHostInitSuiteVersion);
    const auto* suite = hostInit.As<LexoHostInitSuite>();
    KVResourceOwner hostOwner = nullptr;
    if (suite == nullptr || suite->GetHostResourceOwner(&hostOwner) != kNoErr) return false;
    char hostMessage[kErrorMessageSize];
    if (!ReadString(strings, hostOwner, kHostErrorStringListId, static_cast<std::int32_t>(code), hostMessage,
                    sizeof hostMessage)) {
        return false;
    }
    std::memcpy(message, hostMessage, sizeof message);
    return true;
}

// Four characters for the codes that are four-character codes, else decimal.
void CodeText(ResultCode code, char (&text)[16]) {
    const auto value = static_cast<std::int32_t>(code);
    if (value >= kFirstFourCharacterCode) {
        text[0] = static_cast<char>(code >> 24);
        text[1] = static_cast<char>(code >> 16);
        text[2] = static_cast<char>(code >> 8);
        text[3] = static_cast<char>(code);
        text[4] = '\0';
    } else {
        std::snprintf(text, sizeof text, "%d", value);
    }
}

// The message with its first "%s" replaced by the code's text, cut to fit.
// Nothing else in the message is taken as a directive.
void FormatWithCode(ResultCode code, char (&message)[kErrorMessageSize]) {
    const char* directive = std::strstr(message, "%s");
    if (directive == nullptr) return;
    char text[16];
    CodeText(code, text);
    char formatted[kErrorMessageSize];
    std::snprintf(formatted, sizeof formatted, "%.*s%s%s", static_cast<int>(directive - message), message, text,
                  directive + 2);
    std::memcpy(message, formatted, sizeof message);
}

}  // namespace

bool ChooseErrorMessage(const ZPBasicSuite& basic, const UXKBasicSuite& strings, KVResourceOwner owner,
                        ResultCode code, char (&message)[kErrorMessageSize]) {
    Found found = LookUpOwnList(strings, owner, code, message);
    if (code >= 10 && code <= 899 && LookUpHostList(basic, strings, code, message)) found = Found::kAsItStands;
    if (found == Found::kToFormat && std::strlen(message) <= kLongestFormattedMessage) FormatWithCode(code, message);
    return found != Found::kNothing;
}

}  // namespace kv
