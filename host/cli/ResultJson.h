// A result code as every command's JSON gives it: {"result", "resultText"}.
#pragma once

#include <kelvra/ResultText.h>

#include <ZPTypes.h>

#include <nlohmann/json.hpp>

namespace kelvra::cli {

inline nlohmann::json ResultJson(ZPErr result) { return {{"result", result}, {"resultText", ResultText(result)}}; }

}  // namespace kelvra::cli
