#include "ChildProgram.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace testsupport {

namespace {

// Standard error is written to a file in memory and read after the child
// ends, so that no pipe can fill up while standard output is read.
std::string ReadAll(int file) {
    std::string text;
    lseek(file, 0, SEEK_SET);
    char buffer[4096];
    for (ssize_t n; (n = read(file, buffer, sizeof buffer)) > 0;) text.append(buffer, std::size_t(n));
    return text;
}

void GiveUpPermissionOverride() {
    // Taken out of the bounding set, they are not given back by exec.
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
}

// Runs the command in a child whose standard input and output are `in` and
// `out`; collects what `from` delivers until it ends.
ProgramResult Run(const std::vector<std::string>& command, int in, int out, int from,
                  const ProgramSettings& settings) {
    std::vector<std::string> words = command;
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    const int errors = memfd_create("stderr", MFD_CLOEXEC);

    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [name, value] : settings.environment) {
            if (value) setenv(name.c_str(), value->c_str(), 1);
            else unsetenv(name.c_str());
        }
        if (settings.withoutPermissionOverride) GiveUpPermissionOverride();
        if (settings.fileSizeLimit) {
            // A write past the limit then fails with EFBIG instead of ending the process.
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{rlim_t(*settings.fileSizeLimit), rlim_t(*settings.fileSizeLimit)};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        // Only these three reach the program (every descriptor here is
        // closed on exec), so that nothing it leaves running, a server say,
        // holds the output open.
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    close(out);
    if (in != out) close(in);
    ProgramResult result;
    char buffer[4096];
    // A terminal's far side ends with an error rather than end of file.
    for (ssize_t n; (n = read(from, buffer, sizeof buffer)) > 0;) result.output.append(buffer, std::size_t(n));
    close(from);
    int status = 0;
    waitpid(child, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.errors = ReadAll(errors);
    close(errors);
    return result;
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& command, const ProgramSettings& settings) {
    int out[2];
    if (pipe2(out, O_CLOEXEC) != 0) return {};
    const int empty = open("/dev/null", O_RDONLY | O_CLOEXEC);
    return Run(command, empty, out[1], out[0], settings);
}

ProgramResult RunProgramOnTerminal(const std::vector<std::string>& command, const std::string& input,
                                   const ProgramSettings& settings) {
    int terminal = -1;
    int user = -1;
    if (openpty(&user, &terminal, nullptr, nullptr, nullptr) != 0) return {};
    fcntl(user, F_SETFD, FD_CLOEXEC);
    fcntl(terminal, F_SETFD, FD_CLOEXEC);
    // No echo, no line editing, no carriage returns added to the output.
    termios mode{};
    tcgetattr(terminal, &mode);
    cfmakeraw(&mode);
    tcsetattr(terminal, TCSANOW, &mode);
    if (write(user, input.data(), input.size()) != ssize_t(input.size())) return {};
    return Run(command, terminal, terminal, user, settings);
}

}  // namespace testsupport
