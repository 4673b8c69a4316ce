// How the host shows a result code: its four characters when all four bytes
// are printable ASCII, otherwise the decimal number; success is "0".
#pragma once

#include <ZPTypes.h>

#include <string>

namespace kelvra {

std::string ResultText(ZPErr code);

}  // namespace kelvra
