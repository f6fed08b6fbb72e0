#include "batch/chunks.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <queue>
#include <utility>

namespace batch {

std::vector<std::vector<std::size_t>> ShareOut(const std::vector<std::uint64_t>& sizes, std::size_t count) {
    std::vector<std::size_t> order(sizes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t piece) { return sizes[piece]; });

    std::vector<std::vector<std::size_t>> chunks(std::min(count, sizes.size()));
    using eLoad = std::pair<std::uint64_t, std::size_t>;  // size and number of a chunk
    std::priority_queue<eLoad, std::vector<eLoad>, std::greater<>> lightest;
    for (std::size_t chunk = 0; chunk < chunks.size(); ++chunk) {
        lightest.emplace(0, chunk);
    }
    for (const std::size_t piece : order) {
        const auto [load, chunk] = lightest.top();
        lightest.pop();
        chunks[chunk].push_back(piece);
        lightest.emplace(load + sizes[piece], chunk);
    }
    return chunks;
}

}  // namespace batch
