#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

// A value for each face, of which a mesh mostly has only one: as long as no other comes, nothing is stored
// but their number. Values are told apart by their bytes.
template <class T>
class eFaceValues {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    explicit eFaceValues(const T& ownUsual) : usual(ownUsual) {}

    std::size_t size() const { return count; }
    const T& operator[](std::size_t face) const { return others.empty() ? usual : others[face]; }

    // Room for so many values in all, taken once it is needed.
    void Reserve(std::size_t all) { expected = all; }

    void AddUsual() {
        if (!others.empty()) {
            others.push_back(usual);
        }
        ++count;
    }

    void Add(const T& value) {
        if (std::memcmp(&value, &usual, sizeof value) == 0) {
            return AddUsual();
        }
        if (others.empty()) {
            others.reserve(expected > count ? expected : count + 1);
            others.assign(count, usual);
        }
        others.push_back(value);
        ++count;
    }

    // Takes away the values from `size` on.
    void Cut(std::size_t size) {
        if (size < count) {
            others.resize(others.empty() ? 0 : size, usual);
            count = size;
        }
    }

private:
    T usual;
    std::vector<T> others;  // of all faces, or empty
    std::size_t count = 0;
    std::size_t expected = 0;
};
