#include "CommandRunner.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <sstream>

namespace kelvra::testing {

namespace {

// Runs kelvra-host in a child whose standard input and output are `in` and
// `out`, standard error going nowhere; collects what `from` delivers until
// it ends.
CommandResult Run(const std::vector<std::string>& arguments, int in, int out, int from,
                  const std::vector<std::pair<std::string, std::optional<std::string>>>& environment,
                  rlim_t fileSizeLimit = RLIM_INFINITY) {
    std::vector<std::string> words = {KELVRA_HOST};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [name, value] : environment) {
            if (value) setenv(name.c_str(), value->c_str(), 1);
            else unsetenv(name.c_str());
        }
        if (fileSizeLimit != RLIM_INFINITY) {
            // A write past the limit then fails with EFBIG instead of ending the process.
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{fileSizeLimit, fileSizeLimit};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        close(from);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(out);
    if (in != out) close(in);
    CommandResult result;
    char buffer[4096];
    // A terminal's far side ends with an error rather than end of file.
    for (ssize_t n; (n = read(from, buffer, sizeof buffer)) > 0;) result.output.append(buffer, std::size_t(n));
    close(from);
    int status = 0;
    waitpid(child, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

}  // namespace

CommandResult RunKelvraHost(const std::vector<std::string>& arguments) {
    int out[2];
    if (pipe(out) != 0) return {};
    const int empty = open("/dev/null", O_RDONLY);
    return Run(arguments, empty, out[1], out[0], {});
}

CommandResult RunKelvraHostWithFileSizeLimit(const std::vector<std::string>& arguments, std::size_t bytes) {
    int out[2];
    if (pipe(out) != 0) return {};
    const int empty = open("/dev/null", O_RDONLY);
    return Run(arguments, empty, out[1], out[0], {}, rlim_t(bytes));
}

CommandResult RunKelvraHostOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                                      const std::vector<std::pair<std::string, std::optional<std::string>>>& environment) {
    int terminal = -1;
    int user = -1;
    if (openpty(&user, &terminal, nullptr, nullptr, nullptr) != 0) return {};
    // No echo, no line editing, no carriage returns added to the output.
    termios mode{};
    tcgetattr(terminal, &mode);
    cfmakeraw(&mode);
    tcsetattr(terminal, TCSANOW, &mode);
    if (write(user, input.data(), input.size()) != ssize_t(input.size())) return {};
    return Run(arguments, terminal, terminal, user, environment);
}

std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix) {
    std::vector<std::string> lines;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(prefix)) lines.push_back(line);
    }
    return lines;
}

}  // namespace kelvra::testing
