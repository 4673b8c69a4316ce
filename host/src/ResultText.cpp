#include <kelvra/ResultText.h>

namespace kelvra {

std::string ResultText(ZPErr code) {
    if (code == 0) return "0";
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = char((code >> shift) & 0xFF);
        if (c < 0x20 || c > 0x7E) return std::to_string(code);
        text += c;
    }
    return text;
}

}  // namespace kelvra
