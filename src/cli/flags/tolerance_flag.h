#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cli {

// Where the values of `--tolerance` go.
struct eBounds {
    double* metres = nullptr;
    double* degrees = nullptr;
    double* decibels = nullptr;
};

// Adds `--tolerance KIND=NUMBER`; the help tells the present values. Its words are gathered in `bounds`.
void AddToleranceFlag(CLI::App& command, std::vector<std::string>& words, const eBounds& bounds);

// False, and told, if one of the words is no bound.
bool TakeBounds(const std::vector<std::string>& words, const eBounds& bounds);

}  // namespace cli
