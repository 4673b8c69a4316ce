#include "IKVGlobalUnicodeString.h"

#include "KVError.h"

namespace kv {

namespace {
constexpr const char* kErrorThrowerMessage =
    "KV exception from ErrorThrower declared in file: IKVGlobalUnicodeString line: 36 ";
}  // namespace

KVUnicodeStringRef IKVGlobalUnicodeString::Get(const KVGlobalUnicodeStringSuite& suite) {
    if (string_ != nullptr) return string_;
    KVUnicodeStringRef string = nullptr;
    if (ResultCode result = suite.NewGlobalString(text_, &string)) throw Error(result, kErrorThrowerMessage);
    if (string == nullptr) throw Contract::Violation("Failed Postcondition");
    string_ = string;
    return string_;
}

}  // namespace kv
