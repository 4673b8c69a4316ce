// How the host writes the single-precision values of colours: the shortest
// decimal that reads back as the same float, so 0.8f is "0.8" rather than
// 0.800000011920929.
#pragma once

#include <string>

namespace kelvra {

// "0.8", "1e-05", "-0"; "NaN", "Infinity", "-Infinity" for the others.
std::string FloatText(float value);

}  // namespace kelvra
