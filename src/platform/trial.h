// Trying work that may not come back.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

// What the work may take before it is stopped.
struct eTrialLimits {
    std::uint64_t memoryBytes = 0;  // beyond what the process holds already
    unsigned processorSeconds = 0;
};

enum class eTrialEnd { Done, OutOfMemory, OutOfTime, Died };

struct eTrial {
    eTrialEnd end = eTrialEnd::Done;
    std::string words;  // what the work said in the end; the signal's number where it died
};

// Does the work in a copy of this process, so that whatever it does to memory, to time or to itself, this one
// stays as it is; only the words come back. Costs the copy of the page tables, and the work is to be done
// again here by whoever wants more than its words. POSIX only.
eTrial TryInCopy(const std::function<std::string()>& work, const eTrialLimits& limits);

}  // namespace platform
