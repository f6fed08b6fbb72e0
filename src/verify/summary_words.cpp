#include "verify/summary_words.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

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
                              ePhrase::HeadFrames,
                              ePhrase::FoundCameraAngle,
                              ePhrase::FoundLightColour,
                              ePhrase::FoundLightDirection,
                              ePhrase::FoundLightKind,
                              ePhrase::FoundLightNumber,
                              ePhrase::FoundPreviewCamera,
                              ePhrase::FoundPreviewLights,
                              ePhrase::FoundMissingPreview,
                              ePhrase::FoundForeignPreview,
                              ePhrase::FoundMissingVolume,
                              ePhrase::FoundForeignVolume,
                              ePhrase::FoundVolumeInDefinition,
                              ePhrase::FoundVolumeBone,
                              ePhrase::FoundVolumeFaces,
                              ePhrase::FoundVolumeRotation,
                              ePhrase::FoundVolumeScale,
                              ePhrase::FoundVolumeShape,
                              ePhrase::FoundMissingZone,
                              ePhrase::FoundForeignZone,
                              ePhrase::FoundZoneAxis,
                              ePhrase::FoundZoneFigure,
                              ePhrase::FoundZoneKind,
                              ePhrase::FoundSupportPoint,
                              ePhrase::FoundMissingDefinition,
                              ePhrase::FoundEntityProperty,
                              ePhrase::FoundBoneProperty,
                              ePhrase::FoundVolumeProperty,
                              ePhrase::FoundZoneProperty,
                              ePhrase::ProofInTexts};

// Things and units by the words of the JSON.
constexpr std::pair<std::string_view, ePhrase> kCounted[] = {
    {"bones", ePhrase::CountBone},       {"volumes", ePhrase::CountVolume},
    {"zones", ePhrase::CountZone},       {"support points", ePhrase::CountSupportPoint},
    {"previews", ePhrase::CountPreview}, {"frames", ePhrase::CountFrame},
    {"m", ePhrase::SizeMillimetres},  // as everywhere in the tables
    {"degrees", ePhrase::SizeDegrees},   {"dB", ePhrase::SizeDecibels},
    {"of 255", ePhrase::SizeOf255},
};

}  // namespace

std::string SummaryWord(const std::string& english, eLanguage language) {
    const ePhrase* const word =
        std::ranges::find_if(kWords, [&](ePhrase id) { return RowOf(id).english == english; });
    return word != std::end(kWords) ? Say(language, *word) : english;
}

std::string Counted(const std::string& number, const std::string& english, eLanguage language) {
    const auto* const counted =
        std::ranges::find(kCounted, english, &std::pair<std::string_view, ePhrase>::first);
    return counted != std::end(kCounted) ? Say(language, counted->second, number) : number;
}

}  // namespace verify
