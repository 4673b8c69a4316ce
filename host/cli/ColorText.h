// How kelvra-host writes a colour for a person: its values in the units a
// designer reads — ink as whole percentages, RGB as 0 to 255, Lab to one
// decimal — the sRGB it shows as hex, and a chip of that colour for a
// terminal. Everything is written straight to a stream, or to an
// OutputBuffer (commandline/OutputBuffer.h) where a line per swatch is
// written.
#pragma once

#include "TerminalColor.h"

#include <KVSwatchSuites.h>
#include <OutputBuffer.h>

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>

namespace kelvra::cli {

struct ColorValues {
    enum class Model { Gray, Rgb, Cmyk, Lab };
    Model model = Model::Rgb;
    std::array<float, 4> values{};  // gray: the ink amount, 0 white .. 1 black
};

struct Srgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

// A value of the document JSON: a number, or "NaN", "Infinity", "-Infinity".
float JsonNumber(const nlohmann::json& value);

// From the document JSON's "kind" and "values" (numbers, or "NaN",
// "Infinity", "-Infinity"); none for a kind without values.
std::optional<ColorValues> ColorValuesFromJson(const nlohmann::json& kind, const nlohmann::json& values);
ColorValues ColorValuesOf(const KVCustomColor& definition);

// "gray 20%", "rgb 255 128 0", "cmyk 0% 20% 100% 0%", "lab 91.8 -5.0 73.0";
// a value that is not a number is written by its name ("NaN", "Infinity").
void WriteValues(std::ostream& out, const ColorValues& color);
void WriteValues(commandline::OutputBuffer& out, const ColorValues& color);

// What the colour looks like on screen, by the rules of color/ScreenColor.h:
// ink is taken off white, Lab is converted as the host converts it; each
// channel 0..1 as computed, not yet clamped.
std::array<float, 3> ShownChannels(const ColorValues& color);
// The same as bytes, a tint (0 full colour .. 1 white) mixed towards white.
Srgb ShownColor(const ColorValues& color, float tint = 0);

// "#RRGGBB".
void WriteHex(std::ostream& out, Srgb color);
void WriteHex(commandline::OutputBuffer& out, Srgb color);

// A chip of two cells in the colour and a space; blanks as wide for no
// colour; nothing at all for ChipDepth::None.
void WriteChip(std::ostream& out, const std::optional<Srgb>& color, ChipDepth depth);
void WriteChip(commandline::OutputBuffer& out, const std::optional<Srgb>& color, ChipDepth depth);

// The nearest of the 256 colours of a colour terminal: the 6×6×6 cube
// (16..231) or the gray ramp (232..255).
std::uint8_t NearestOf256(Srgb color);

// A whole number of percent: "25%"; NaN and infinities by name.
void WritePercent(std::ostream& out, float fraction);
void WritePercent(commandline::OutputBuffer& out, float fraction);

}  // namespace kelvra::cli
