// kelvra-host import: opens or places files through a module's registered
// file formats, as a user would through the host's open and place dialogs,
// and shows the documents that came of it.
#pragma once

#include "ImportReport.h"

#include <kelvra/Host.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace kelvra::cli {

struct ImportOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    std::vector<std::filesystem::path> files;
    bool place = false;           // all files into one document made at the start
    std::optional<bool> answer;   // the answer to every question; else ask on a terminal, else yes
    bool json = false;
};

// The module of the same build: plugin/Tintora.so beside the folder of the
// running kelvra-host.
std::filesystem::path DefaultModule();

// Questions are answered `answer`; without one they are asked on the
// terminal when standard input is one, else answered yes.
void AnswerQuestions(Host& host, std::optional<bool> answer);

// Offers `file` to every format the started `module` registered, then has
// the first that accepted read it: into `placeInto`, or else into a new
// document named after the file. A file that does not exist is not offered.
FileImport ImportFile(Host& host, Module& module, const std::filesystem::path& file, Document* placeInto);

// 0 when the module started and every file was imported; 1 otherwise.
int Import(const ImportOptions& options);

}  // namespace kelvra::cli
