#pragma once

#include <vector>

#include "gltf/bone_nodes.h"

namespace gltf {

// What a model has beside its bones and meshes, as coloured solids with nodes of their own:
//
//   volumes         "hull volume" below its bone; blue
//   zones           in the space of the model, as low walls, since a zone has no height; areas green,
//   obstacles
//                   red
//   support points  below their bone; yellow
//   previews        a camera of glTF, and nodes for the lights; their numbers stand in the extras
class eMarks {
public:
    // `metresPerUnit`: of the scene, whose units support points are in; no file holds it.
    eMarks(eGlb& glb, eModelFiles& files, eBoneNodes& bones, double metresPerUnit)
        : glb_(glb), files_(files), bones_(bones), metresPerUnit_(metresPerUnit) {}

    void Add();
    // Nodes in the space of the model.
    const std::vector<int>& AtTop() const { return atTop_; }

private:
    void AddVolumes();
    void AddVolume(const inspect::eSdlBlock& volume);
    void AddZones();
    int AddZone(const inspect::eSdlBlock& zone);
    void AddSupportPoints();
    void AddPreviews();
    int AddPreview(const inspect::eSdlBlock& preview);
    void AddGroup(const char* name, const std::vector<int>& nodes);
    int Material(const char* name);

    eGlb& glb_;
    eModelFiles& files_;
    eBoneNodes& bones_;
    double metresPerUnit_;
    std::vector<int> atTop_;
};

}  // namespace gltf
