#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace batch {

// Shares pieces of work of these sizes out to at most `count` chunks of about the same whole size, each with
// the numbers of its pieces, the largest first; no chunk is empty. The largest piece goes first, each to the
// lightest chunk (R. Graham, 1969: at most a third above the best sharing). Costs n log n.
std::vector<std::vector<std::size_t>> ShareOut(const std::vector<std::uint64_t>& sizes, std::size_t count);

}  // namespace batch
