// The proof that written files are the scene: the files, read as the engine reads them, compared with what
// the host shows, without a line of the code that has written them.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/bilingual.h"
#include "inspect/description.h"
#include "verify/clip_verdict.h"
#include "verify/mesh_verdict.h"
#include "verify/picture_verdict.h"
#include "verify/verified_scene.h"

namespace verify {

struct eModelVerdict {
    std::string root;                                             // name of the node
    std::string folder;                                           // of its files
    std::string leftOut;                                          // why it has none; empty if it has
    std::vector<std::pair<std::string, std::size_t>> compared{};  // things of the texts, by kind
    std::vector<eMeshVerdict> meshes{};
    std::vector<eClipVerdict> clips{};
    std::vector<ePictureVerdict> pictures{};
    std::vector<std::pair<std::string, int>>
        lostNodes{};  // nodes with triangles that no mesh gets, by reason
    eFindings findings{};
};

struct eVerification {
    std::string root;  // the resource root
    eTolerances tolerances;
    std::vector<eModelVerdict> models{};

    bool IsClean() const;
    // A path as it is told: from the resource root.
    std::string FromRoot(const std::string& path) const;
};

// Reads the files below the resource root of the options through the layer of files in use. The scene is left
// as it was.
eVerification Verify(const eVerifiedScene& scene, const eTolerances& tolerances);

// The version of the keys; rises when one is taken out or changes its meaning.
inline constexpr int kVerifySchema = 1;

inspect::eDescription Describe(const eVerification& verification);

// For people, in UTF-8: a table of the meshes and one of the clips for each model, the worst first.
std::string SummaryOf(const eVerification& verification, eLanguage language);

}  // namespace verify
