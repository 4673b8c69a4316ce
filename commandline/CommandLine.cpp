#include "CommandLine.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

namespace commandline {

namespace {

// The subcommands of `app`, in the order defined.
std::vector<const CLI::App*> Subcommands(const CLI::App& app) {
    std::vector<const CLI::App*> subcommands;
    for (const CLI::App* subcommand : app.get_subcommands([](const CLI::App*) { return true; }))
        subcommands.push_back(subcommand);
    return subcommands;
}

// The first word that is not an option: the subcommand asked for, if the
// app has subcommands.
std::optional<std::string> FirstWord(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] != '-') return std::string(argv[i]);
    }
    return std::nullopt;
}

std::string CommandNames(const std::vector<const CLI::App*>& subcommands) {
    std::string names;
    for (const CLI::App* subcommand : subcommands) names += (names.empty() ? "" : ", ") + subcommand->get_name();
    return names;
}

}  // namespace

void AddVersion(CLI::App& app) { app.set_version_flag("--version", app.get_name() + " " + TINTORA_VERSION); }

std::string ExitStatusHelp(std::string_view succeeded, std::string_view failed) {
    return "Exit status: 0 " + std::string(succeeded) + "; 1 " + std::string(failed) +
           "; 2 when the command line was wrong or the command could not run.\n";
}

std::optional<int> Parse(CLI::App& app, int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    const std::vector<const CLI::App*> subcommands = Subcommands(app);
    std::string command = app.get_name();
    if (const auto word = FirstWord(argc, argv); word && !subcommands.empty()) {
        const bool known = std::any_of(subcommands.begin(), subcommands.end(),
                                       [&](const CLI::App* subcommand) { return subcommand->check_name(*word); });
        if (!known) {
            err << command << ": unknown command \"" << *word << "\" (the commands are " << CommandNames(subcommands)
                << ")\nRun \"" << command << " --help\" for help.\n";
            return kCannotRun;
        }
        command += " " + *word;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help, out, err);
    } catch (const CLI::CallForAllHelp& help) {
        return app.exit(help, out, err);
    } catch (const CLI::CallForVersion& version) {
        return app.exit(version, out, err);
    } catch (const CLI::ParseError& error) {
        err << command << ": " << error.what() << "\nRun \"" << command << " --help\" for help.\n";
        return kCannotRun;
    }
    return std::nullopt;
}

int FinishOutput(int status, std::ostream& out, std::ostream& err, std::string_view name) {
    errno = 0;
    out.flush();
    if (out) return status;
    const int error = errno;
    err << name << ": cannot write the output" << (error != 0 ? std::string(": ") + std::strerror(error) : "")
        << '\n';
    return kCannotRun;
}

std::string WhyUnreadable(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0) return std::strerror(errno);
    struct stat status {};
    std::string why;
    if (fstat(file, &status) != 0) why = std::strerror(errno);
    else if (S_ISDIR(status.st_mode)) why = std::strerror(EISDIR);
    close(file);
    return why;
}

}  // namespace commandline
