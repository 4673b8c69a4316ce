#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <sstream>

namespace kelvra::cli {

namespace {

void WriteAll(int fd, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = write(fd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return;
        done += std::size_t(n);
    }
}

[[noreturn]] void BeChild(const std::function<std::string()>& work, int answerFd, int outputFd) {
    dup2(outputFd, STDOUT_FILENO);
    dup2(outputFd, STDERR_FILENO);
    close(outputFd);
    // A crashing module should not leave core files behind.
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    std::string answer;
    try {
        answer = work();
    } catch (const std::exception& error) {
        answer = std::string("F") + error.what();
    } catch (...) {
        answer = "Fan unknown exception";
    }
    WriteAll(answerFd, answer);
    close(answerFd);
    // No exit handlers: the module may have left the process in any state.
    _exit(0);
}

// The line to quote from a child's output: the sanitizers' summary when
// there is one, else the last line that is not blank.
std::string LastLine(const std::string& output) {
    std::string last;
    std::string summary;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.find_first_not_of(" \r\t") == std::string::npos) continue;
        last = line;
        if (line.starts_with("SUMMARY: ")) summary = line;
    }
    std::string quoted = summary.empty() ? last : summary;
    if (quoted.size() > 200) quoted = quoted.substr(0, 200) + "...";
    return quoted;
}

std::string Seconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", seconds);
    return text;
}

std::string CrashDetail(int status, const std::string& output) {
    std::string detail;
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        detail = "killed by signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
    } else {
        detail = "exited with status " + std::to_string(WEXITSTATUS(status)) + " before answering";
    }
    const std::string last = LastLine(output);
    return last.empty() ? detail : detail + "; last output: " + last;
}

}  // namespace

ChildOutcome RunInChild(const std::function<std::string()>& work, double timeoutSeconds) {
    int answerPipe[2];
    int outputPipe[2];
    if (pipe2(answerPipe, O_CLOEXEC) != 0) return {ChildOutcome::End::Crashed, {}, "cannot make a pipe"};
    if (pipe2(outputPipe, O_CLOEXEC) != 0) {
        close(answerPipe[0]);
        close(answerPipe[1]);
        return {ChildOutcome::End::Crashed, {}, "cannot make a pipe"};
    }
    const pid_t child = fork();
    if (child == 0) {
        close(answerPipe[0]);
        close(outputPipe[0]);
        BeChild(work, answerPipe[1], outputPipe[1]);
    }
    close(answerPipe[1]);
    close(outputPipe[1]);
    if (child < 0) {
        close(answerPipe[0]);
        close(outputPipe[0]);
        return {ChildOutcome::End::Crashed, {}, "cannot fork"};
    }

    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(timeoutSeconds));
    std::string answer;
    std::string output;
    pollfd fds[2] = {{answerPipe[0], POLLIN, 0}, {outputPipe[0], POLLIN, 0}};
    std::string* sinks[2] = {&answer, &output};
    int open = 2;
    bool timedOut = false;
    while (open > 0) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) {
            timedOut = true;
            break;
        }
        const int ready = poll(fds, 2, int(std::min<long long>(left, 1000)));
        if (ready < 0 && errno != EINTR) break;
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) continue;
            char buffer[4096];
            const ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                sinks[i]->append(buffer, std::size_t(n));
            } else if (n == 0 || errno != EINTR) {
                close(fds[i].fd);
                fds[i].fd = -1;
                --open;
            }
        }
    }
    if (timedOut) kill(child, SIGKILL);
    for (const pollfd& fd : fds) {
        if (fd.fd >= 0) close(fd.fd);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }

    if (timedOut) {
        const std::string last = LastLine(output);
        return {ChildOutcome::End::TimedOut, {},
                "no answer within " + Seconds(timeoutSeconds) + " s, stopped" +
                    (last.empty() ? "" : "; last output: " + last)};
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && !answer.empty())
        return {ChildOutcome::End::Answered, answer, {}};
    return {ChildOutcome::End::Crashed, {}, CrashDetail(status, output)};
}

}  // namespace kelvra::cli
