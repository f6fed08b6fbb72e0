#pragma once

#include <map>

#include "diff/change.h"
#include "geometry/export_vertex.h"
#include "mesh/file/mesh_reader.h"

namespace diff {

// A vertex of a mesh file with what it is a part of.
struct eSeenVertex {
    const eFileMesh* mesh = nullptr;
    const eFileSubMesh* subMesh = nullptr;
    eExportVertex vertex;
};

// Gathers what pairs of vertices have in other values.
class eVertexChanges {
public:
    explicit eVertexChanges(const eTolerances& tolerances) : bounds_(tolerances) {}

    void Meet(const eSeenVertex& before, const eSeenVertex& after);
    void Tell(const eBilingual& of, eChanges& changes) const;

private:
    struct eCounted {
        int count = 0;
        double largest = 0;
    };
    void Count(ePhrase what, double amount, double bound);

    eTolerances bounds_;
    std::map<ePhrase, eCounted> found_;
};

}  // namespace diff
