#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/ansi.h"
#include "messages/utf8_words.h"
#include "verify/summary_words.h"
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
eBilingual LeftOut(const eMeshVerdict& mesh) {
    eBilingual list;
    const auto add = [&](int count, ePhrase what) {
        if (count > 0) {
            list.AddToList(Utf8Words(what, count, ToUtf8(mesh.refusal)));
        }
    };
    add(mesh.hidden, ePhrase::ProofHidden);
    add(mesh.degenerate, ePhrase::ProofDegenerate);
    add(mesh.repeated, ePhrase::ProofRepeated);
    add(mesh.refused, ePhrase::ProofRefused);
    return list.IsEmpty() ? eBilingual{"-", "-"} : list;
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

// One model in words for people.
class eModelSummary {
public:
    explicit eModelSummary(eLanguage ownLanguage) : language(ownLanguage) {}

    eDescription Of(const eModelVerdict& model) const { return Translate(SummaryOf(model)); }

private:
    // Keys in the language, and whether a thing holds.
    eDescription Translate(const eDescription& said) const {
        if (said.is_boolean()) {
            return Say(language, said.get<bool>() ? ePhrase::CellYes : ePhrase::CellNo);
        }
        if (!said.is_structured()) {
            return said;
        }
        eDescription translated = said.is_array() ? eDescription::array() : eDescription::object();
        for (const auto& member : said.items()) {
            if (said.is_array()) {
                translated.push_back(Translate(member.value()));
            } else {
                translated[SummaryWord(member.key(), language)] = Translate(member.value());
            }
        }
        return translated;
    }

    eDescription RowOf(const eMeshVerdict& mesh) const {
        return {{"mesh", ToUtf8(mesh.name)},
                {"triangles", mesh.triangles},
                {"found", mesh.found},
                {"left out", LeftOut(mesh).In(language)},
                {"mm", Millimetres(mesh.metres)},
                {"map", ToThousandths(mesh.map)},
                {"degrees", ToThousandths(mesh.degrees)},
                {"holds", mesh.findings.IsEmpty()}};
    }

    // A skin that was bound in another pose than that of the static frame is held against the scene's bones
    // alone.
    eDescription SkinText(const eClipVerdict& clip) const {
        if (clip.skins == 0) {
            return "-";
        }
        const eDescription worst = Millimetres(std::max(clip.skin.amount, clip.motion.amount));
        return clip.otherwiseBound > 0 ? eDescription(Say(language, ePhrase::ProofBound, worst.dump(),
                                                          eDescription(Millimetres(clip.bind)).dump()))
                                       : worst;
    }

    eDescription RowOf(const eClipVerdict& clip) const {
        const eBoneVerdict none{.name = "-"};
        const auto worst = [&](auto amount) {
            const auto found = std::ranges::max_element(clip.bones, {}, amount);
            return found != clip.bones.end() ? *found : none;
        };
        const auto metres = [](const eBoneVerdict& b) { return b.metres.amount; };
        const auto degrees = [](const eBoneVerdict& b) { return b.degrees.amount; };
        const auto inModel = [](const eBoneVerdict& b) { return b.inModel.amount; };
        const eBoneVerdict farthest = worst(inModel);
        return {
            {"clip", ToUtf8(clip.name)},
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

    eDescription RowOf(const ePictureVerdict& picture) const {
        return {{"picture", ToUtf8(picture.file.substr(picture.file.rfind('/') + 1))},
                {"dB", picture.isCopy ? eDescription(Say(language, ePhrase::ProofCopy))
                                      : eDescription(ToThousandths(picture.decibels))},
                {"holds", picture.findings.IsEmpty()}};
    }

    // With its unit: lengths in millimetres as everywhere in the tables.
    std::string AmountText(const eFinding& finding) const {
        if (finding.worst == 0) {
            return "-";
        }
        const std::string unit = finding.Unit();
        const double amount = unit == "m" ? Millimetres(finding.worst) : ToThousandths(finding.worst);
        return Counted(eDescription(amount).dump(), unit, language);
    }

    void AddFindings(eDescription& rows, const std::string& of, const eFindings& findings) const {
        for (const eFinding& finding : findings.List()) {
            rows.push_back({{"of", ToUtf8(of)},
                            {"what", SummaryWord(finding.kind, language)},
                            {"count", finding.count},
                            {"worst", AmountText(finding)},
                            {"at", ToUtf8(finding.place)}});
        }
    }

    // Those with findings first, then the farthest off.
    template <class Verdict>
    eDescription TableOf(std::vector<Verdict> verdicts) const {
        std::ranges::stable_sort(verdicts, [](const Verdict& a, const Verdict& b) {
            return std::pair(!a.findings.IsEmpty(), AmountOf(a)) >
                   std::pair(!b.findings.IsEmpty(), AmountOf(b));
        });
        eDescription rows = eDescription::array();
        for (const Verdict& verdict : verdicts) {
            rows.push_back(RowOf(verdict));
        }
        return rows;
    }

    // What the texts hold, without kinds of which there is nothing.
    std::string ComparedText(const eModelVerdict& model) const {
        std::string text;
        for (const auto& [things, count] : model.compared) {
            if (count > 0) {
                text += (text.empty() ? "" : ", ") + Counted(std::to_string(count), things, language);
            }
        }
        return text;
    }

    eDescription SummaryOf(const eModelVerdict& model) const {
        eDescription said = eDescription::object();
        if (!model.leftOut.empty()) {
            said["left out"] = ToUtf8(model.leftOut);
            return said;
        }
        if (!model.compared.empty()) {
            said["in the texts"] = ComparedText(model);
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

    eLanguage language;
};

}  // namespace

std::string SummaryOf(const eVerification& verification, eLanguage language) {
    std::string text;
    std::size_t meshes = 0;
    std::size_t clips = 0;
    std::int64_t triangles = 0;
    const eModelSummary summary(language);
    for (const eModelVerdict& model : verification.models) {
        text += ToUtf8(model.root) + "  " + ToUtf8(verification.FromRoot(model.folder)) + "\n";
        text += inspect::RenderText(summary.Of(model)) + "\n";
        meshes += model.meshes.size();
        clips += model.clips.size();
        for (const eMeshVerdict& mesh : model.meshes) {
            triangles += mesh.found;
        }
    }
    eBilingual counts = Utf8Words(ePhrase::CountModel, verification.models.size());
    counts.AddToList(Utf8Words(ePhrase::CountMesh, meshes));
    counts.AddToList(Utf8Words(ePhrase::CountTriangle, triangles));
    counts.AddToList(Utf8Words(ePhrase::CountClip, clips));
    const ePhrase verdict = verification.IsClean() ? ePhrase::ProofHolds : ePhrase::ProofDiffers;
    return text + Say(language, verdict, counts.In(language)) + "\n";
}

}  // namespace verify
