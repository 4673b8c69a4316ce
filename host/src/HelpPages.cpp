#include <kelvra/HelpPages.h>

#include "UnicodeText.h"

namespace kelvra {

namespace {

struct HelpPage {
    std::string_view key;
    std::string_view address;
};

// The keys come without a default text; the host knows their pages.
constexpr HelpPage kHelpPages[] = {
    {"$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL",
     "https://help.kelvra.example/unknown-error"},
    {"$$$/Kelvra/app/RAMError/RAMErrorDialog/MoreInfoButton/OnClickURL", "https://help.kelvra.example/out-of-memory"},
};

}  // namespace

std::string HelpPageAddress(std::string_view helpKey) {
    for (const HelpPage& page : kHelpPages) {
        if (page.key == helpKey) return std::string(page.address);
    }
    return std::string(ResolveLocalisationKey(helpKey));
}

}  // namespace kelvra
