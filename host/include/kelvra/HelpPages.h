// The host's help pages: what a More Info button opens. A module names a
// page by the localisation key of its address.
#pragma once

#include <string>
#include <string_view>

namespace kelvra {

// The address of the page `helpKey` stands for: the host's own address for
// the keys of its error dialogs, else the key's default text (the key itself
// when it has none).
std::string HelpPageAddress(std::string_view helpKey);

}  // namespace kelvra
