#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/material.h"
#include "verify/face_surface.h"
#include "verify/picture_verdict.h"
#include "verify/written_materials.h"

namespace verify {

// Compares the pictures that materials of the files name with those of the scene: a copy by its bytes, one
// that was made anew by what its texels hold. Each file once; what no source picture lies behind is left
// aside.
class ePictures {
public:
    ePictures(const eVerifiedScene& scene, const eTolerances& tolerances, eWrittenMaterials& materials)
        : scene_(scene), bounds_(tolerances), materials_(materials) {}

    // `leaf` is the scene's material of that name in the folder's file; not null.
    void Compare(const eName& folder, const std::string& name, host::Mtl& leaf);

    // What has been compared so far; empties it.
    std::vector<ePictureVerdict> Take() { return std::move(verdicts_); }

private:
    void ComparePicture(const eName& file, const eMapUse& use);

    const eVerifiedScene& scene_;
    eTolerances bounds_;
    eWrittenMaterials& materials_;
    std::set<eName> compared_;
    std::vector<ePictureVerdict> verdicts_;
};

}  // namespace verify
