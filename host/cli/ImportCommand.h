// kelvra-host import: opens or places files through a module's registered
// file formats, as a user would through the host's open and place dialogs,
// and shows the documents that came of it.
#pragma once

#include "HostSetup.h"
#include "ImportReport.h"
#include "TerminalColor.h"

#include <kelvra/Host.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace kelvra::cli {

struct ImportOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    std::vector<std::filesystem::path> files;
    HostSetup setup;
    bool place = false;           // all files into one document made at the start
    std::optional<bool> answer;   // the answer to every question; else ask on a terminal, else yes
    bool json = false;
    std::filesystem::path sheet;  // also write the documents as a swatch sheet, HTML or SVG, when given
    ColorChoice color = ColorChoice::Auto;  // chips in the readable form
};

// The module of the same build: plugin/Tintora.so beside the folder of the
// running kelvra-host.
std::filesystem::path DefaultModule();

// Questions are answered `answer`; without one they are asked on the
// terminal when standard input is one, else answered yes.
void AnswerQuestions(Host& host, std::optional<bool> answer);

// Offers `file` to every format the started module registered, then has
// the first that accepted read it: into `placeInto`, or else into a new
// document named after the file. A file that is not there, or is a
// directory, is not offered, as the host's open dialog would not offer it.
// The events logged past `seen` become the file's, and `seen` moves past them.
FileImport ImportFile(Host& host, const std::filesystem::path& file, Document* placeInto, std::size_t& seen);

// 0 when the module started, every file was imported (a format accepted it,
// "KV Go" answered 0 and the document received something) and the sheet, if
// asked for, was written; 1 otherwise.
int Import(const ImportOptions& options);

}  // namespace kelvra::cli
