#include "SessionProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace kelvra::testing {

SessionProcess::SessionProcess(const std::vector<std::string>& arguments) {
    // A session that ended early must not end the test with SIGPIPE.
    signal(SIGPIPE, SIG_IGN);
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) return;
    std::vector<std::string> words = {KELVRA_HOST, "session"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(input[0]);
    close(output[1]);
    in_ = input[1];
    out_ = output[0];
}

SessionProcess::~SessionProcess() { Finish(); }

std::string SessionProcess::SendLine(const std::string& line) {
    const std::string written = line + "\n";
    for (std::size_t done = 0; done < written.size();) {
        const ssize_t n = write(in_, written.data() + done, written.size() - done);
        if (n <= 0) return "";
        done += std::size_t(n);
    }
    for (;;) {
        const std::size_t end = pending_.find('\n');
        if (end != std::string::npos) {
            std::string answer = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            return answer;
        }
        char buffer[4096];
        const ssize_t n = read(out_, buffer, sizeof buffer);
        if (n <= 0) return "";
        pending_.append(buffer, std::size_t(n));
    }
}

nlohmann::json SessionProcess::Send(const nlohmann::json& command) {
    const std::string answer = SendLine(command.dump());
    return answer.empty() ? nlohmann::json() : nlohmann::json::parse(answer);
}

int SessionProcess::Finish() {
    if (child_ <= 0) return exitStatus_;
    close(in_);
    int status = 0;
    waitpid(child_, &status, 0);
    close(out_);
    child_ = -1;
    exitStatus_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return exitStatus_;
}

}  // namespace kelvra::testing
