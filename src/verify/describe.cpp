#include <algorithm>
#include <cmath>

#include "base/ansi.h"
#include "verify/verification.h"

namespace verify {

namespace {

using inspect::eDescription;

double Rounded(double value, double steps) {
    return std::round(value * steps) / steps;
}
double Millimetres(double metres) {
    return Rounded(metres * 1000, 10000);
}
double Degrees(double degrees) {
    return Rounded(degrees, 10000);
}

void DescribeFindings(eDescription& place, const eFindings& findings) {
    if (findings.IsEmpty()) {
        return;
    }
    eDescription list = eDescription::array();
    for (const eFinding& finding : findings.List()) {
        list.push_back({{"kind", finding.kind},
                        {"count", finding.count},
                        {"worst", Rounded(finding.worst, 1e6)},
                        {"unit", finding.Unit()},
                        {"place", ToUtf8(finding.place)}});
    }
    place["findings"] = std::move(list);
}

eDescription DescribeMesh(const eMeshVerdict& mesh) {
    eDescription said{{"name", ToUtf8(mesh.name)},     {"triangles", mesh.triangles},
                      {"found", mesh.found},           {"hidden", mesh.hidden},
                      {"degenerate", mesh.degenerate}, {"repeated", mesh.repeated},
                      {"refused", mesh.refused},       {"millimetres", Millimetres(mesh.metres)},
                      {"map", Rounded(mesh.map, 1e6)}, {"degrees", Degrees(mesh.degrees)},
                      {"color", mesh.color},           {"weight", Rounded(mesh.weight, 1e6)}};
    if (!mesh.refusal.empty()) {
        said["refusal"] = ToUtf8(mesh.refusal);
    }
    DescribeFindings(said, mesh.findings);
    return said;
}

// Meshes with findings before those without, and the farthest off first.
std::vector<const eMeshVerdict*> WorstFirst(const std::vector<eMeshVerdict>& meshes) {
    std::vector<const eMeshVerdict*> order;
    std::ranges::transform(meshes, std::back_inserter(order), [](const eMeshVerdict& m) { return &m; });
    std::ranges::stable_sort(order, [](const eMeshVerdict* a, const eMeshVerdict* b) {
        return std::pair(!a->findings.IsEmpty(), a->metres) > std::pair(!b->findings.IsEmpty(), b->metres);
    });
    return order;
}

eDescription DescribeWorst(const eWorst& worst, double shown) {
    return {{"amount", shown}, {"frame", worst.frame}};
}

eDescription DescribeBone(const eBoneVerdict& bone) {
    eDescription said{{"name", ToUtf8(bone.name)},          {"millimetres", Millimetres(bone.metres.amount)},
                      {"frame", bone.metres.frame},         {"degrees", Degrees(bone.degrees.amount)},
                      {"degreesFrame", bone.degrees.frame}, {"inModel", Millimetres(bone.inModel.amount)},
                      {"inModelFrame", bone.inModel.frame}, {"sheared", bone.sheared}};
    return said;
}

eDescription DescribeClip(const eVerification& all, const eClipVerdict& clip) {
    std::vector<eBoneVerdict> bones = clip.bones;
    std::ranges::stable_sort(bones, std::greater(), [](const eBoneVerdict& b) { return b.inModel.amount; });
    eDescription said{
        {"name", ToUtf8(clip.name)}, {"file", ToUtf8(all.FromRoot(clip.file))}, {"frames", clip.frames}};
    for (const std::string& later : clip.overwrittenBy) {
        said["overwrittenBy"].push_back(ToUtf8(later));
    }
    if (clip.frameMeshes > 0) {
        said["frameMeshes"] = clip.frameMeshes;
        said["vertices"] = DescribeWorst(clip.vertices, Millimetres(clip.vertices.amount));
    }
    if (clip.skins > 0) {
        said["skins"] = clip.skins;
        said["skin"] = DescribeWorst(clip.skin, Millimetres(clip.skin.amount));
        said["bind"] = Millimetres(clip.bind);
        said["otherwiseBound"] = clip.otherwiseBound;
        said["motion"] = DescribeWorst(clip.motion, Millimetres(clip.motion.amount));
    }
    eDescription list = eDescription::array();
    std::ranges::transform(bones, std::back_inserter(list), DescribeBone);
    said["bones"] = std::move(list);
    DescribeFindings(said, clip.findings);
    return said;
}

eDescription DescribeModel(const eVerification& all, const eModelVerdict& model) {
    eDescription said{{"model", ToUtf8(model.root)}, {"folder", ToUtf8(all.FromRoot(model.folder))}};
    if (!model.leftOut.empty()) {
        said["leftOut"] = ToUtf8(model.leftOut);
        return said;
    }
    for (const auto& [reason, nodes] : model.lostNodes) {
        said["nodesWithoutMesh"][reason] = nodes;
    }
    for (const auto& [things, count] : model.compared) {
        said["compared"][things] = count;
    }
    eDescription meshes = eDescription::array();
    for (const eMeshVerdict* mesh : WorstFirst(model.meshes)) {
        meshes.push_back(DescribeMesh(*mesh));
    }
    said["meshes"] = std::move(meshes);
    eDescription pictures = eDescription::array();
    for (const ePictureVerdict& picture : model.pictures) {
        eDescription& row = pictures.emplace_back(eDescription{{"file", ToUtf8(all.FromRoot(picture.file))},
                                                               {"copy", picture.isCopy},
                                                               {"decibels", Rounded(picture.decibels, 100)}});
        DescribeFindings(row, picture.findings);
    }
    said["pictures"] = std::move(pictures);
    eDescription clips = eDescription::array();
    std::ranges::transform(model.clips, std::back_inserter(clips),
                           [&](const eClipVerdict& clip) { return DescribeClip(all, clip); });
    said["clips"] = std::move(clips);
    DescribeFindings(said, model.findings);
    return said;
}

}  // namespace

eDescription Describe(const eVerification& verification) {
    eDescription models = eDescription::array();
    for (const eModelVerdict& model : verification.models) {
        models.push_back(DescribeModel(verification, model));
    }
    return {{"schema", kVerifySchema},
            {"tolerance",
             {{"metres", verification.tolerances.metres},
              {"degrees", verification.tolerances.degrees},
              {"decibels", verification.tolerances.decibels}}},
            {"clean", verification.IsClean()},
            {"models", std::move(models)}};
}

}  // namespace verify
