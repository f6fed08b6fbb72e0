#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Strips once they are fixed: their faces in order, strip after strip.

// A face of a strip. A fake one has two equal vertices: it draws nothing and flips the parity of the strip.
struct eStripTriangle {
    std::uint16_t v[3];
    // Over how many of its sides a face is found; a fake face is counted like any other.
    std::uint8_t adjoining;
    bool isFake;
};

class eStripList {
public:
    std::size_t Size() const { return ends.size(); }
    std::span<const eStripTriangle> operator[](std::size_t strip) const {
        const std::size_t begin = strip == 0 ? 0 : ends[strip - 1];
        return std::span(faces).subspan(begin, ends[strip] - begin);
    }

    std::size_t FaceCount() const { return faces.size(); }
    void Reserve(std::size_t faceCount) { faces.reserve(faceCount); }
    void Add(const eStripTriangle& face) { faces.push_back(face); }
    // All faces; those behind the last end are of the strip under way.
    std::vector<eStripTriangle>& Growing() { return faces; }
    // Puts faces before those of the strip under way, the last one foremost.
    void AddBefore(std::span<const eStripTriangle> reversed) {
        const std::size_t begin = ends.empty() ? 0 : ends.back();
        faces.insert(faces.begin() + static_cast<std::ptrdiff_t>(begin), reversed.rbegin(), reversed.rend());
    }
    void EndStrip() { ends.push_back(faces.size()); }

private:
    std::vector<eStripTriangle> faces;
    std::vector<std::size_t> ends;  // one past the last face of each strip
};
