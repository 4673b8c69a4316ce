// A kelvra-host session run as a script runs it: a child process whose
// standard input and output are pipes, one command written and one answer
// read at a time, so that the test can change the disk between the two.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>
#include <sys/types.h>

namespace kelvra::testing {

class SessionProcess {
public:
    explicit SessionProcess(const std::vector<std::string>& arguments);
    // Closes the input (the end of the session) and waits for the child.
    ~SessionProcess();
    SessionProcess(const SessionProcess&) = delete;
    SessionProcess& operator=(const SessionProcess&) = delete;

    // Writes `line` and a line break; answers the next line of output, empty
    // when the session ended.
    std::string SendLine(const std::string& line);
    nlohmann::json Send(const nlohmann::json& command);
    // Closes the input and answers the exit status.
    int Finish();

private:
    pid_t child_ = -1;
    int in_ = -1;   // the session's standard input
    int out_ = -1;  // its standard output
    std::string pending_;
    int exitStatus_ = -1;
};

}  // namespace kelvra::testing
