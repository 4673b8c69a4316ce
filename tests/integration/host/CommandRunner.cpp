#include "CommandRunner.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

namespace kelvra::testing {

CommandResult RunKelvraHost(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {KELVRA_HOST};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    int out[2];
    if (pipe(out) != 0) return {};
    const pid_t child = fork();
    if (child == 0) {
        dup2(out[1], STDOUT_FILENO);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        close(out[0]);
        close(out[1]);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(out[1]);
    CommandResult result;
    char buffer[4096];
    for (ssize_t n; (n = read(out[0], buffer, sizeof buffer)) > 0;) result.output.append(buffer, std::size_t(n));
    close(out[0]);
    int status = 0;
    waitpid(child, &status, 0);
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
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
