#include "FileMessage.h"

#include <cstring>
#include <vector>

#include "KVError.h"
#include "KVFilePath.h"
#include "KVFrameworkSuites.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"

namespace formats {

namespace {

constexpr char kPlaceholder[] = "%s";
constexpr std::size_t kPlaceholderLength = sizeof kPlaceholder - 1;

// A UTF-8 byte sequence is at most four bytes per code unit.
constexpr std::size_t kBytesPerCharacter = 4;

std::vector<char> PlatformText(const kv::UnicodeString& text) {
    std::vector<char> bytes(kBytesPerCharacter * text.Length() + 1);
    text.GetPlatformText(bytes.data(), bytes.size());
    return bytes;
}

kv::UnicodeString FileMessage(const char* key, KVFilePathRef file) {
    const kv::UnicodeString text = kv::UnicodeString::FromPlatformText(key);
    const kv::UnicodeString name = kv::FileNameOf(file);
    const std::size_t room = kBytesPerCharacter * (text.Length() + name.Length());
    std::vector<char> message(room);
    FormatFileMessage(PlatformText(text).data(), PlatformText(name).data(), message.data(), room);
    return kv::UnicodeString::FromUTF8(message.data(), std::strlen(message.data()));
}

const KVUserSuite& UserSuite() { return kv::RequireSuite<KVUserSuite>(kv::registered::User()); }

}  // namespace

void FormatFileMessage(const char* text, const char* name, char* buffer, std::size_t room) {
    const std::size_t nameLength = std::strlen(name);
    std::size_t needed = 1;
    for (const char* at = text; *at != '\0';) {
        const bool placeholder = std::strncmp(at, kPlaceholder, kPlaceholderLength) == 0;
        needed += placeholder ? nameLength : 1;
        at += placeholder ? kPlaceholderLength : 1;
    }
    if (needed > room) throw kv::Error(kv::kStringTooLongErr, nullptr);

    char* out = buffer;
    for (const char* at = text; *at != '\0';) {
        if (std::strncmp(at, kPlaceholder, kPlaceholderLength) == 0) {
            std::memcpy(out, name, nameLength);
            out += nameLength;
            at += kPlaceholderLength;
        } else {
            *out++ = *at++;
        }
    }
    *out = '\0';
}

void ShowFileAlert(const char* key, KVFilePathRef file) {
    const kv::UnicodeString message = FileMessage(key, file);
    kv::ThrowIfError(UserSuite().ErrorAlert(message.Get()));
}

bool AskFileQuestion(const char* key, KVFilePathRef file) {
    const kv::UnicodeString message = FileMessage(key, file);
    ZPBoolean yes = 0;
    kv::ThrowIfError(UserSuite().QuestionAlert(message.Get(), &yes));
    return yes != 0;
}

}  // namespace formats
