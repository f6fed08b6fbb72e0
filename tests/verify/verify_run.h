// An export whose files are compared with a host that has not seen it, as they are or with a fault planted.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/export_run.h"
#include "support/scene_builder.h"
#include "verify/verification.h"

namespace verify_test {

class eVerifyRun : public support::eExportRun {
public:
    explicit eVerifyRun(const standalone::eSceneData& scene) : eExportRun(scene), data(scene) {}

    verify::eVerification Verify(const verify::eTolerances& tolerances = {}) const {
        standalone::StandaloneHost fresh(data);
        return verify::Verify({fresh, exporter.options}, tolerances);
    }

    // The kinds of all findings, in order, each as "thing: kind count". Clips that later ones have
    // overwritten are broken by the rules.
    std::vector<std::string> Findings(const verify::eTolerances& tolerances = {}) const {
        std::vector<std::string> said;
        const auto add = [&said](const std::string& thing, const verify::eFindings& findings) {
            for (const verify::eFinding& finding : findings.List()) {
                said.push_back(thing + ": " + finding.kind + " " + std::to_string(finding.count));
            }
        };
        for (const verify::eModelVerdict& model : Verify(tolerances).models) {
            add(model.root, model.findings);
            for (const verify::eMeshVerdict& mesh : model.meshes) {
                add(mesh.name, mesh.findings);
            }
            for (const verify::ePictureVerdict& picture : model.pictures) {
                add(picture.file.substr(picture.file.rfind('/') + 1), picture.findings);
            }
            for (const verify::eClipVerdict& clip : model.clips) {
                add(clip.name, clip.overwrittenBy.empty() ? clip.findings : verify::eFindings());
            }
        }
        return said;
    }

    void Write(const std::string& path, const std::string& content) const {
        folder.Write("game/" + path, content);
    }

private:
    standalone::eSceneData data;
};

}  // namespace verify_test
