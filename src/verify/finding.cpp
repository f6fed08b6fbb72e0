#include "verify/finding.h"

namespace verify {

namespace {

struct eUnitOfKind {
    std::string_view kind;
    const char* unit;
};

// What is measured otherwise than in metres, as places and sizes are.
constexpr eUnitOfKind kUnits[] = {
    {"normal", "degrees"},          {"rotation", "degrees"},
    {"bone rotation", "degrees"},   {"volume rotation", "degrees"},
    {"zone axis", "degrees"},       {"camera angle", "degrees"},
    {"light direction", "degrees"}, {"light number", "degrees"},
    {"picture quality", "dB"},      {"colour", "of 255"},
    {"light colour", "of 255"},     {"length", "frames"},
    {"map coordinates", ""},        {"weights", ""},
    {"volume scale", ""},
};

}  // namespace

std::string eFinding::Unit() const {
    const auto* const found = std::ranges::find(kUnits, kind, &eUnitOfKind::kind);
    return worst == 0 ? "" : found != std::end(kUnits) ? found->unit : "m";
}

}  // namespace verify
