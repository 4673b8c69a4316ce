// The exceptions thrown inside the module. Every boundary to the host or to
// other plug-ins turns them into a result code (ExceptionToResult.h).
#pragma once

#include <cstdint>
#include <exception>

namespace kv {

using ResultCode = std::uint32_t;

// A four-character code, first character in the most significant byte.
constexpr ResultCode FourCC(const char (&code)[5]) {
    return (ResultCode(std::uint8_t(code[0])) << 24) | (ResultCode(std::uint8_t(code[1])) << 16) |
           (ResultCode(std::uint8_t(code[2])) << 8) | ResultCode(std::uint8_t(code[3]));
}

inline constexpr ResultCode kNoErr = 0;
inline constexpr ResultCode kOutOfMemoryErr = FourCC("!MEM");
inline constexpr ResultCode kUnhandledMsgErr = FourCC("!MSG");
inline constexpr ResultCode kCantHappenErr = FourCC("CANT");
inline constexpr ResultCode kNoDocumentErr = FourCC("DOC?");
inline constexpr ResultCode kBadFormatErr = FourCC("FMT?");
inline constexpr ResultCode kNameNotFoundErr = FourCC("NAM?");
inline constexpr ResultCode kBadParameterErr = FourCC("PARM");
inline constexpr ResultCode kSuiteNotFoundErr = FourCC("S!Fd");
inline constexpr ResultCode kStdExceptionErr = FourCC("STEX");
inline constexpr ResultCode kUserCanceledErr = FourCC("STOP");
inline constexpr ResultCode kUnknownExceptionErr = FourCC("UNEX");
inline constexpr ResultCode kLibraryLoadErr = FourCC("UNKN");
inline constexpr ResultCode kStringTooLongErr = FourCC("US!I");
inline constexpr ResultCode kCachesFlushedResponse = FourCC("pFls");

class Error : public std::exception {
public:
    // `message` is not owned and may be null.
    Error(ResultCode code, const char* message) noexcept : code_(code), message_(message) {}
    const char* what() const noexcept override;
    ResultCode Code() const noexcept { return code_; }
    const char* Message() const noexcept { return message_; }

private:
    ResultCode code_;
    const char* message_;
};

class LogicError : public Error {
public:
    LogicError(ResultCode code, const char* message, const char* logicMessage) noexcept
        : Error(code, message), logicMessage_(logicMessage) {}
    const char* what() const noexcept override { return logicMessage_; }

private:
    const char* logicMessage_;
};

namespace Contract {
// A broken promise of a caller or of the host, such as a host call that
// reported success but left a required out-value null.
class Violation : public LogicError {
public:
    explicit Violation(const char* message) noexcept : LogicError(kBadParameterErr, nullptr, message) {}
};
}  // namespace Contract

// Throws kv::Error(code, null message) unless code is 0.
void ThrowIfError(ResultCode code);

}  // namespace kv
