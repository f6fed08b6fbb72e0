#pragma once

#include <string>

namespace standalone {

// Shows how far the host's work has come.
class eProgressSink {
public:
    virtual ~eProgressSink() = default;
    // A new stage takes the place of one under way. The title is in code page 1251.
    virtual void Start(const std::string& title) = 0;
    virtual void Update(int percent) = 0;
    virtual void End() = 0;
};

}  // namespace standalone
