// The messages that name a library file: "%s" replaced by the name, and a
// message that does not fit its room refused with "US!I".
#include <gtest/gtest.h>

#include <string>

#include "KVError.h"
#include "formats/handlers/FileMessage.h"

namespace {

std::string Formatted(const char* text, const char* name, std::size_t room) {
    std::string buffer(room, '#');
    formats::FormatFileMessage(text, name, buffer.data(), room);
    return buffer.c_str();
}

kv::ResultCode FormatError(const char* text, const char* name, std::size_t room) {
    std::string buffer(room, '#');
    try {
        formats::FormatFileMessage(text, name, buffer.data(), room);
    } catch (const kv::Error& error) {
        EXPECT_EQ(buffer, std::string(room, '#'));  // nothing written
        return error.Code();
    }
    return kv::kNoErr;
}

TEST(FileMessageTest, TheNameTakesThePlaceOfEachPlaceholder) {
    EXPECT_EQ(Formatted("Cannot read '%s'.", "Book.ocb", 64), "Cannot read 'Book.ocb'.");
    EXPECT_EQ(Formatted("%s and %s", "a", 64), "a and a");
    EXPECT_EQ(Formatted("No name here, 100%", "a", 64), "No name here, 100%");
    EXPECT_EQ(Formatted("'%s'", "", 64), "''");
}

TEST(FileMessageTest, AMessageThatJustFitsItsRoomIsWrittenAndOneByteLessIsRefused) {
    // 'Book.ocb' with quotes and the terminator: 11 bytes.
    EXPECT_EQ(Formatted("'%s'", "Book.ocb", 11), "'Book.ocb'");
    EXPECT_EQ(FormatError("'%s'", "Book.ocb", 10), kv::kStringTooLongErr);
    EXPECT_EQ(FormatError("", "", 0), kv::kStringTooLongErr);
}

}  // namespace
