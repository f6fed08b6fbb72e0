#include "scene/skeleton/view_writer.h"

#include <string>

#include "run/export.h"
#include "run/model_texts.h"
#include "run/resource_sets.h"
#include "scene/current_model.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/told_values.h"
#include "scene/skeleton/bone_step.h"
#include "scene/skeleton/matrix_text.h"

namespace {

// A property that puts a block into the view, some with the value 0 in it.
struct eViewMark {
    const char* key;
    const char* word;
    bool isSwitchedOff;
};

// In the order of the file.
constexpr eViewMark kViewMarks[] = {{"Ground", "ground", false},
                                    {"DecalTarget", "decal_target", false},
                                    {"NoGroupMesh", "no_group_mesh", false},
                                    {"NoCastShadows", "shadow_caster", true},
                                    {"NoGetShadows", "shadow_receiver", true}};

void WriteLevel(xIo::xSdl::eWriter& writer, const eBoneStep& step) {
    writer.BlockBegin().Word("lod").Integer(step.level);
    if ((step.flags & LastDetail) != 0) {
        writer.BlockBegin().Word("last").BlockEnd();
    }
    writer.BlockEndLine();
}

void WriteMarks(xIo::xSdl::eWriter& writer, const eBoneStep& step) {
    ePropText props(step.userProps);
    for (const eViewMark& mark : kViewMarks) {
        if (!props.Find(mark.key)) {
            continue;
        }
        writer.BlockBegin().Word(mark.word);
        if (mark.isSwitchedOff) {
            writer.Integer(0);
        }
        writer.BlockEnd();
    }
}

}  // namespace

void WriteView(Export& run, const eBoneStep& step) {
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    const eExportBone& slot = run.model->bones[static_cast<std::size_t>(step.index)];
    const bool isCommon = step.meshTarget != nullptr || run.model->structureMode;

    writer.BlockBegin().Word("view poly");
    writer.String(isCommon ? run.resources->commonPrefix.Text() + step.meshName.Text()
                           : step.meshName.Text());
    if (step.hasDetails || (step.flags & DetailEntry) != 0) {
        WriteLevel(writer, step);
    }
    WriteMarks(writer, step);
    if (std::string layer;
        step.node.GetUserPropString("Layer", layer) && CheckWord(run, step.node, "Layer", layer)) {
        writer.EndLine().BlockBegin().Word("layer").Word(layer).BlockEndLine();
    }
    if (slot.hasMesh == 0) {
        writer.EndLine().BlockBegin().Word("pivot");
        WritePoint3(writer, slot.pivot);
        writer.BlockEndLine();
    }
    writer.BlockEndLine();

    const bool showsOther = step.meshTarget != nullptr && step.meshTarget != &step.node;
    if (run.options.exportMesh != 0 && (showsOther || step.targetSet == nullptr)) {
        std::string name;
        step.node.GetUserPropString("Mesh", name);
        run.model->sharedMeshes.views.push_back(
            {.node = &step.node, .target = step.meshTarget, .isInstance = name.empty()});
    }
}
