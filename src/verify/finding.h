#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace verify {

// A kind of difference beyond the tolerances: how often it occurs, and the worst place of it.
struct eFinding {
    std::string kind;  // a stable word
    int count = 0;
    double worst = 0;   // in the kind's own measure; 0 where it has none
    std::string place;  // of the worst

    // Of the measure: "m", "degrees", "dB", "of 255", "frames"; empty for a share, or without a measure.
    std::string Unit() const;
};

// Gathers differences of one thing, each kind once.
class eFindings {
public:
    void Add(std::string_view kind, double amount, const std::string& place) {
        auto known = std::ranges::find(list_, kind, &eFinding::kind);
        if (known == list_.end()) {
            known = list_.insert(list_.end(),
                                 {.kind = std::string(kind), .count = 0, .worst = amount, .place = place});
        }
        ++known->count;
        if (amount > known->worst) {
            known->worst = amount;
            known->place = place;
        }
    }
    bool IsEmpty() const { return list_.empty(); }
    const std::vector<eFinding>& List() const { return list_; }

private:
    std::vector<eFinding> list_;
};

}  // namespace verify
