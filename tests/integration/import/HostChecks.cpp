#include "HostChecks.h"

#include <algorithm>

namespace import_testing {

namespace {

void AddCounts(std::vector<std::string>& left, std::initializer_list<std::pair<const char*, std::size_t>> counts) {
    for (const auto& [what, count] : counts) {
        if (count != 0) left.push_back(std::to_string(count) + " " + what);
    }
}

}  // namespace

std::vector<std::string> SuitesAndBlocks(kelvra::Host& host) {
    std::vector<std::string> left;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) {
        if (suite.Held() != 0 || suite.extraReleases != 0) left.push_back(suite.name + " held");
    }
    const kelvra::BlockCounts blocks = host.LiveBlocks();
    AddCounts(left, {{"ZPBasic blocks", blocks.basic},
                     {"ZP Blocks blocks", blocks.blocks},
                     {"bad frees", std::size_t(blocks.badFrees)}});
    return left;
}

std::vector<std::string> Leftovers(kelvra::Host& host) {
    std::vector<std::string> left = SuitesAndBlocks(host);
    const kelvra::ObjectCounts objects = host.LiveObjects();
    AddCounts(left, {{"strings", objects.strings},
                     {"file paths", objects.filePaths},
                     {"data filters", objects.dataFilters}});
    return left;
}

namespace {

bool Failed(kelvra::Host& host, const char* suite, const char* function) {
    const auto& failed = host.Faults().FailedCalls();
    return std::find(failed.begin(), failed.end(), std::pair<std::string, std::string>(suite, function)) !=
           failed.end();
}

// Drops the lines of `left` that `refused` accounts for.
std::vector<std::string> Beyond(kelvra::Host& host, std::vector<std::string> left, Refused refused) {
    std::erase_if(left, [&](const std::string& item) {
        if (refused.freeing && item.ends_with(" ZP Blocks blocks")) return true;
        if (refused.stringDisposal && item.ends_with(" strings")) return true;
        if (refused.pathDisposal && item.ends_with(" file paths")) return true;
        if (refused.unlinking && item.ends_with(" data filters")) return true;
        if (!refused.release) return false;
        for (const kelvra::SuiteCount& suite : host.SuiteCounts())
            if (suite.name + " held" == item) return true;
        return false;
    });
    return left;
}

}  // namespace

Refused RefusedInRun(kelvra::Host& host) {
    return {Failed(host, kelvra::kBasicSuiteName, "ReleaseSuite"), Failed(host, "ZP Blocks Suite", "FreeBlock"),
            Failed(host, "KV Unicode String Suite", "Dispose"), Failed(host, "KV File Path Suite", "Dispose"),
            Failed(host, "KV Data Filter Suite", "UnlinkDataFilter")};
}

std::vector<std::string> LeftoversBeyond(kelvra::Host& host, Refused refused) {
    return Beyond(host, Leftovers(host), refused);
}

std::vector<std::string> SuitesAndBlocksBeyond(kelvra::Host& host, Refused refused) {
    return Beyond(host, SuitesAndBlocks(host), refused);
}

std::vector<std::string> Shown(kelvra::Host& host) {
    std::vector<std::string> shown;
    for (const kelvra::Event& event : host.Events().All()) {
        switch (event.kind) {
            case kelvra::Event::Kind::Alert: shown.push_back("alert: " + event.text); break;
            case kelvra::Event::Kind::Question:
                shown.push_back("question: " + event.text + (event.answer ? " -> yes" : " -> no"));
                break;
            case kelvra::Event::Kind::MoreInfo:
                shown.push_back("more-info " + std::to_string(event.number) + ": " + event.text);
                break;
            case kelvra::Event::Kind::Usage: shown.push_back("usage: " + event.category + " / " + event.event); break;
            // What the host itself saw happen is not something the module showed.
            case kelvra::Event::Kind::CustomColorRedefined:
            case kelvra::Event::Kind::CustomColorShared:
            case kelvra::Event::Kind::EmptySwatchName: break;
        }
    }
    return shown;
}

std::string SwatchExchangeReadError(const std::string& name) {
    return "alert: An error occurred when reading the swatch exchange file '" + name + "'.";
}

std::string ColorBookReadError(const std::string& name) {
    return "alert: An error occurred when reading the color book '" + name + "'.";
}

std::vector<std::string> CantHappenReport() {
    return {"usage: Error Dialog with More Info Button / kCantHappenErr",
            "more-info 2102: An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and try some of the solutions to "
            "fix the issue."};
}

}  // namespace import_testing
