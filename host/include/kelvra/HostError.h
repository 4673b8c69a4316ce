// What the host library throws when it refuses a module file or when its
// API is used in a way it cannot serve (a second host, a message to an
// unloaded module).
#pragma once

#include <stdexcept>

namespace kelvra {

class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace kelvra
