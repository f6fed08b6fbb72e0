#include "verify/summary_words.h"

#include <algorithm>
#include <iterator>

#include "messages/utf8_words.h"

namespace verify {

namespace {

constexpr ePhrase kWords[] = {ePhrase::FoundBentSkin,
                              ePhrase::FoundBoneAbove,
                              ePhrase::FoundBonePosition,
                              ePhrase::FoundBoneRotation,
                              ePhrase::FoundBrokenClip,
                              ePhrase::FoundBrokenMaterials,
                              ePhrase::FoundBrokenMesh,
                              ePhrase::FoundBrokenPicture,
                              ePhrase::FoundForeignBone,
                              ePhrase::FoundForeignMesh,
                              ePhrase::FoundForeignTriangle,
                              ePhrase::FoundLength,
                              ePhrase::FoundMaterialReference,
                              ePhrase::FoundMirror,
                              ePhrase::FoundMissingBone,
                              ePhrase::FoundMissingClip,
                              ePhrase::FoundMissingMesh,
                              ePhrase::FoundMissingModel,
                              ePhrase::FoundMissingTriangle,
                              ePhrase::FoundOtherPicture,
                              ePhrase::FoundPictureQuality,
                              ePhrase::FoundPictureReference,
                              ePhrase::FoundSkin,
                              ePhrase::FoundUnknownPose,
                              ePhrase::FoundVertices,
                              ePhrase::FoundView,
                              ePhrase::FoundVisibility,
                              ePhrase::FoundElsewhere,
                              ePhrase::FoundNotRendered,
                              ePhrase::FoundNotWanted,
                              ePhrase::FoundTooLate,
                              ePhrase::ProofLeftOut,
                              ePhrase::ProofLostNodes,
                              ePhrase::ProofOverwritten,
                              ePhrase::ProofBeyond,
                              ePhrase::ProofMeshes,
                              ePhrase::ProofPictures,
                              ePhrase::ProofClips,
                              ePhrase::ProofFound,
                              ePhrase::ProofMillimetres,
                              ePhrase::ProofMap,
                              ePhrase::ProofDegrees,
                              ePhrase::ProofIsGood,
                              ePhrase::ProofClip,
                              ePhrase::ProofBones,
                              ePhrase::ProofInModel,
                              ePhrase::ProofWorstBone,
                              ePhrase::ProofFrame,
                              ePhrase::ProofOfVertices,
                              ePhrase::ProofOfSkin,
                              ePhrase::ProofPicture,
                              ePhrase::ProofDecibels,
                              ePhrase::ProofOf,
                              ePhrase::ProofWhat,
                              ePhrase::ProofCount,
                              ePhrase::ProofWorst,
                              ePhrase::ProofAt,
                              ePhrase::HeadMesh,
                              ePhrase::HeadTriangles,
                              ePhrase::HeadFrames};

}  // namespace

std::string SummaryWord(const std::string& english, eLanguage language) {
    const ePhrase* const word =
        std::ranges::find_if(kWords, [&](ePhrase id) { return RowOf(id).english == english; });
    return word != std::end(kWords) ? Say(language, *word) : english;
}

}  // namespace verify
