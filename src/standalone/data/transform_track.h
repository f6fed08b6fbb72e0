#pragma once

#include <optional>
#include <vector>

#include "host/values.h"
#include "standalone/data/key_search.h"
#include "standalone/scene_data.h"

namespace standalone {

// The rotation in the host's convention, whose sense is the opposite of the document's.
host::Quat HostRotation(const eRotation& rotation);

// Scale × rotation × translation.
host::Matrix3 PlacementMatrix(const ePlacement& placement);

// The local matrix of a node without keys.
host::Matrix3 StillMatrix(const eTransform& transform);

// The keys of one part of a transform.
template <class Value>
class ePartTrack {
public:
    // Those of the keys that hold the part.
    void AddAll(const std::vector<eTransformKey>& keys, std::optional<Value> eTransformKey::*part);
    bool IsEmpty() const { return frames.empty(); }
    Value At(double frame) const;

private:
    std::vector<double> frames;
    std::vector<Value> values;
    mutable std::size_t hint = 0;
};

// The local matrix of a node with keys, at any frame, fractions included. Each part moves linearly between
// the keys that hold it, a rotation by the shorter great arc.
class eTransformTrack {
public:
    eTransformTrack(const eTransform& still, const std::vector<eTransformKey>& keys);

    host::Matrix3 At(double frame) const;

private:
    eTransform still;  // for the parts without keys
    ePartTrack<host::Point3> position;
    ePartTrack<eRotation> rotation;
    ePartTrack<host::Point3> scale;
};

// The value of the last key at or before the frame, of the first key before that; without keys the node's one
// visibility.
float VisibilityAt(const eNodeData& node, double frame);

}  // namespace standalone
