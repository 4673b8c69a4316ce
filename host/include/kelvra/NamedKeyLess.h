// Orders map keys that pair a name with a second part, and lets a key whose
// name (or text second part) is a view find them, so that a look-up makes no
// string: std::map<std::pair<std::string, int>, T, NamedKeyLess<int>>.
#pragma once

#include <string_view>
#include <utility>

namespace kelvra {

template <typename Second>
struct NamedKeyLess {
    using is_transparent = void;
    template <typename A, typename B>
    bool operator()(const A& a, const B& b) const {
        using Key = std::pair<std::string_view, Second>;
        return Key(a.first, a.second) < Key(b.first, b.second);
    }
};

}  // namespace kelvra
