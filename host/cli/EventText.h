// An event of the host's log as kelvra-host shows it to a person: dialogs as
// the host lays them out (DialogText.h) with the address their More Info
// button opens, colours in the units of ColorText.h, on one or more lines.
//
//   alert: An error occurred when reading the color book 'bad.ocb'.
//   question: The file “odd.ose” contains unsupported swatch types. -> no
//   more-info 2102: An unknown error occurred.
//                   Click MORE INFO and try some of the solutions to fix the issue.
//                   More Info: https://help.kelvra.example/unknown-error
//   usage: Error Dialog with More Info Button / kCantHappenErr / (none)
//   redefined: custom colour "Red" in "Untitled" was spot rgb 255 0 0 #FF0000, now spot rgb 204 0 0 #CC0000
//   shared: 3 swatches show custom colour "Red" in "x.ose", given 2 definitions; all show the last
//   empty name: swatch 3 of group "Brand" in "x.ose"
#pragma once

#include <kelvra/EventLog.h>

#include <ostream>
#include <string_view>
#include <vector>

namespace kelvra::cli {

// Writes the event after `indent`, with a line break after each line.
void WriteEvent(std::ostream& out, const Event& event, std::string_view indent);
// Each event indented under the step it belongs to.
void WriteEvents(std::ostream& out, const std::vector<Event>& events);

}  // namespace kelvra::cli
