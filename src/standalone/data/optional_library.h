#pragma once

#include <string>

#include "platform/shared_library.h"

namespace standalone {

// A library of the system that is loaded when a file first asks for what it can do: to load and bind some
// takes longer than a small export. Stays loaded as long as it lives.
class eOptionalLibrary {
public:
    explicit eOptionalLibrary(const char* file) : problem(library.LoadFromSystem(file)) {}

    // Sets `function` to what the library has under the name.
    template <class Function>
    void Find(const char* name, Function& function) {
        if (!problem.empty()) {
            return;
        }
        function = reinterpret_cast<Function>(library.Find(name));
        if (function == nullptr) {
            problem = std::string("it has no function ") + name;
        }
    }

    // Why the library can't be used; empty while it can.
    const std::string& Problem() const { return problem; }

private:
    platform::eSharedLibrary library;
    std::string problem;
};

}  // namespace standalone
