#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/ansi.h"
#include "verify/verification.h"

namespace verify {

namespace {

using inspect::eDescription;

double Millimetres(double metres) {
    return std::round(metres * 1e6) / 1e3;
}
double ToThousandths(double value) {
    return std::round(value * 1e3) / 1e3;
}

// What is not in the file and need not be.
std::string LeftOut(const eMeshVerdict& mesh) {
    const std::pair<int, std::string> parts[] = {{mesh.hidden, "hidden"},
                                                 {mesh.degenerate, "degenerate"},
                                                 {mesh.repeated, "repeated"},
                                                 {mesh.refused, "refused: " + ToUtf8(mesh.refusal)}};
    std::string text;
    for (const auto& [count, what] : parts) {
        if (count > 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + what;
        }
    }
    return text.empty() ? "-" : text;
}

eDescription RowOf(const eMeshVerdict& mesh) {
    return {{"mesh", ToUtf8(mesh.name)},
            {"triangles", mesh.triangles},
            {"found", mesh.found},
            {"left out", LeftOut(mesh)},
            {"mm", Millimetres(mesh.metres)},
            {"map", ToThousandths(mesh.map)},
            {"degrees", ToThousandths(mesh.degrees)},
            {"holds", mesh.findings.IsEmpty()}};
}

// A skin that was bound in another pose than that of the static frame says nothing of the clip.
eDescription SkinText(const eClipVerdict& clip) {
    if (clip.skins == 0) {
        return "-";
    }
    return clip.otherwiseBound > 0
               ? eDescription("bound " + eDescription(Millimetres(clip.bind)).dump() + " off")
               : eDescription(Millimetres(clip.skin.amount));
}

eDescription RowOf(const eClipVerdict& clip) {
    const eBoneVerdict none{.name = "-"};
    const auto worst = [&](auto amount) {
        const auto found = std::ranges::max_element(clip.bones, {}, amount);
        return found != clip.bones.end() ? *found : none;
    };
    const auto metres = [](const eBoneVerdict& b) { return b.metres.amount; };
    const auto degrees = [](const eBoneVerdict& b) { return b.degrees.amount; };
    const auto inModel = [](const eBoneVerdict& b) { return b.inModel.amount; };
    const eBoneVerdict farthest = worst(inModel);
    return {{"clip", ToUtf8(clip.name)},
            {"frames", clip.frames},
            {"bones", clip.bones.size()},
            {"mm", Millimetres(metres(worst(metres)))},
            {"degrees", ToThousandths(degrees(worst(degrees)))},
            {"mm in model", Millimetres(inModel(farthest))},
            {"worst bone", ToUtf8(farthest.name)},
            {"frame", farthest.inModel.frame},
            {"mm of vertices", clip.frameMeshes > 0 ? eDescription(Millimetres(clip.vertices.amount)) : "-"},
            {"mm of skin", SkinText(clip)},
            {"holds", clip.findings.IsEmpty()}};
}

eDescription RowOf(const ePictureVerdict& picture) {
    return {{"picture", ToUtf8(picture.file.substr(picture.file.rfind('/') + 1))},
            {"dB", picture.isCopy ? eDescription("copy") : eDescription(ToThousandths(picture.decibels))},
            {"holds", picture.findings.IsEmpty()}};
}

void AddFindings(eDescription& rows, const std::string& of, const eFindings& findings) {
    for (const eFinding& finding : findings.List()) {
        rows.push_back({{"of", ToUtf8(of)},
                        {"what", finding.kind},
                        {"count", finding.count},
                        {"worst", ToThousandths(finding.worst)},
                        {"at", ToUtf8(finding.place)}});
    }
}

double AmountOf(const eMeshVerdict& mesh) {
    return mesh.metres;
}
double AmountOf(const ePictureVerdict& picture) {
    return -picture.decibels;
}
double AmountOf(const eClipVerdict& clip) {
    double amount = clip.vertices.amount;
    for (const eBoneVerdict& bone : clip.bones) {
        amount = std::max(amount, bone.inModel.amount);
    }
    return amount;
}

// Those with findings first, then the farthest off.
template <class Verdict>
eDescription TableOf(std::vector<Verdict> verdicts) {
    std::ranges::stable_sort(verdicts, [](const Verdict& a, const Verdict& b) {
        return std::pair(!a.findings.IsEmpty(), AmountOf(a)) > std::pair(!b.findings.IsEmpty(), AmountOf(b));
    });
    eDescription rows = eDescription::array();
    for (const Verdict& verdict : verdicts) {
        rows.push_back(RowOf(verdict));
    }
    return rows;
}

eDescription SummaryOf(const eModelVerdict& model) {
    eDescription said = eDescription::object();
    if (!model.leftOut.empty()) {
        said["left out"] = ToUtf8(model.leftOut);
        return said;
    }
    for (const auto& [reason, nodes] : model.lostNodes) {
        said["nodes without a mesh"][reason] = nodes;
    }
    eDescription findings = eDescription::array();
    AddFindings(findings, model.root, model.findings);
    for (const eMeshVerdict& mesh : model.meshes) {
        AddFindings(findings, mesh.name, mesh.findings);
    }
    for (const ePictureVerdict& picture : model.pictures) {
        AddFindings(findings, picture.file.substr(picture.file.rfind('/') + 1), picture.findings);
    }
    for (const eClipVerdict& clip : model.clips) {
        AddFindings(findings, clip.name, clip.findings);
        if (!clip.findings.IsEmpty() && !clip.overwrittenBy.empty()) {
            said["overwritten clips"][ToUtf8(clip.name)] = ToUtf8(clip.overwrittenBy.front());
        }
    }
    if (!findings.empty()) {
        said["beyond the tolerances"] = std::move(findings);
    }
    if (!model.meshes.empty()) {
        said["meshes"] = TableOf(model.meshes);
    }
    if (!model.pictures.empty()) {
        said["pictures"] = TableOf(model.pictures);
    }
    if (!model.clips.empty()) {
        said["clips"] = TableOf(model.clips);
    }
    return said;
}

std::string Counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : what.ends_with('h') ? "es" : "s");
}

}  // namespace

std::string SummaryOf(const eVerification& verification) {
    std::string text;
    std::size_t meshes = 0;
    std::size_t triangles = 0;
    std::size_t clips = 0;
    for (const eModelVerdict& model : verification.models) {
        text += ToUtf8(model.root) + "  " + ToUtf8(verification.FromRoot(model.folder)) + "\n";
        text += inspect::RenderText(SummaryOf(model)) + "\n";
        meshes += model.meshes.size();
        clips += model.clips.size();
        for (const eMeshVerdict& mesh : model.meshes) {
            triangles += static_cast<std::size_t>(mesh.found);
        }
    }
    return text + (verification.IsClean() ? "holds: " : "differs: ") +
           Counted(verification.models.size(), "model") + ", " + Counted(meshes, "mesh") + ", " +
           Counted(triangles, "triangle") + ", " + Counted(clips, "clip") + "\n";
}

}  // namespace verify
