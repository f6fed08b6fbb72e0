#pragma once

#include <cstddef>
#include <vector>

namespace standalone {

// Something that holds the evaluated mesh of an object and can make it anew.
class eMeshHolder {
public:
    virtual void ReleaseMesh() = 0;

protected:
    ~eMeshHolder() = default;
};

// The objects whose meshes were evaluated last. Only those keep what evaluation adds to the scene (normals,
// tessellations, deformed copies), so that the memory of a run grows with its largest objects and not with
// their number. A mesh stays valid until kKept other objects have been evaluated.
class eRecentMeshes {
public:
    static constexpr std::size_t kKept = 4;

    void Use(eMeshHolder& holder);

private:
    std::vector<eMeshHolder*> holders;  // the latest last
};

}  // namespace standalone
