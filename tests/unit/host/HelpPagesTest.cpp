#include <kelvra/HelpPages.h>

#include <gtest/gtest.h>

namespace {

using kelvra::HelpPageAddress;

TEST(HelpPagesTest, TheKeysOfTheHostsErrorDialogsOpenItsOwnPages) {
    EXPECT_EQ(HelpPageAddress("$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL"),
              "https://help.kelvra.example/unknown-error");
    EXPECT_EQ(HelpPageAddress("$$$/Kelvra/app/RAMError/RAMErrorDialog/MoreInfoButton/OnClickURL"),
              "https://help.kelvra.example/out-of-memory");
}

TEST(HelpPagesTest, AnotherKeyStandsForItsDefaultTextOrItself) {
    EXPECT_EQ(HelpPageAddress("$$$/Other/Help=https://example.org/help"), "https://example.org/help");
    EXPECT_EQ(HelpPageAddress("$$$/Other/Help"), "$$$/Other/Help");
    EXPECT_EQ(HelpPageAddress("plain"), "plain");
}

}  // namespace
