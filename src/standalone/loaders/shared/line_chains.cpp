#include "standalone/loaders/shared/line_chains.h"

#include <map>
#include <optional>
#include <tuple>

namespace standalone {
namespace {

struct eSegment {
    std::size_t ends[2];  // numbers of points
    bool isUsed = false;
};

// Segments between points that are told apart by their places.
class eSegmentNet {
public:
    explicit eSegmentNet(const std::vector<host::Point3>& ends) {
        std::map<std::tuple<float, float, float>, std::size_t> numbers;
        const auto numberOf = [&](const host::Point3& p) {
            const auto [entry, isNew] = numbers.try_emplace({p.x, p.y, p.z}, points.size());
            if (isNew) {
                points.push_back(p);
                segmentsAt.emplace_back();
            }
            return entry->second;
        };
        for (std::size_t i = 0; i + 1 < ends.size(); i += 2) {
            const eSegment segment{{numberOf(ends[i]), numberOf(ends[i + 1])}};
            if (segment.ends[0] == segment.ends[1]) {
                continue;
            }
            segmentsAt[segment.ends[0]].push_back(segments.size());
            segmentsAt[segment.ends[1]].push_back(segments.size());
            segments.push_back(segment);
        }
    }

    std::vector<eSpline> Chains() {
        std::vector<eSpline> chains;
        for (eSegment& segment : segments) {
            if (!segment.isUsed) {
                segment.isUsed = true;
                chains.push_back(ChainThrough(segment));
            }
        }
        return chains;
    }

private:
    eSpline ChainThrough(const eSegment& segment) {
        const std::vector<std::size_t> ahead = Follow(segment.ends[1]);
        const std::vector<std::size_t> behind = Follow(segment.ends[0]);
        eSpline spline;
        spline.closed = ahead.size() > 2 && ahead.back() == segment.ends[0];
        for (auto point = behind.rbegin(); point != behind.rend(); ++point) {
            spline.points.push_back(points[*point]);
        }
        for (const std::size_t point : ahead) {
            spline.points.push_back(points[point]);
        }
        if (spline.closed) {
            spline.points.pop_back();
        }
        return spline;
    }

    // The points from the given one on, as far as the way is the only one.
    std::vector<std::size_t> Follow(std::size_t point) {
        std::vector<std::size_t> way{point};
        while (const std::optional<std::size_t> next = Step(way.back())) {
            way.push_back(*next);
        }
        return way;
    }

    std::optional<std::size_t> Step(std::size_t point) {
        if (segmentsAt[point].size() != 2) {
            return std::nullopt;
        }
        for (const std::size_t number : segmentsAt[point]) {
            eSegment& segment = segments[number];
            if (!segment.isUsed) {
                segment.isUsed = true;
                return segment.ends[segment.ends[0] == point ? 1 : 0];
            }
        }
        return std::nullopt;
    }

    std::vector<host::Point3> points;
    std::vector<std::vector<std::size_t>> segmentsAt;  // by point
    std::vector<eSegment> segments;
};

}  // namespace

std::vector<eSpline> ChainSegments(const std::vector<host::Point3>& ends) {
    return eSegmentNet(ends).Chains();
}

}  // namespace standalone
