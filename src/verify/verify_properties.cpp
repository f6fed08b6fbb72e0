#include "verify/verify_properties.h"

#include <algorithm>

#include "base/ansi.h"
#include "base/number_text.h"
#include "io/clean_name.h"
#include "scene/properties/node_properties.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/text_words.h"
#include "scene/triangle_mesh.h"
#include "verify/scene_clips.h"
#include "verify/verify_zones.h"
#include "verify/written_blocks.h"

namespace verify {

namespace {

using inspect::eSdlBlock;
using eLines = std::vector<std::string>;

// What an artist wrote at a node, as lines of the texts.
class eToldLines {
public:
    explicit eToldLines(const host::INode& node) : node_(node), text_(NormalizeUserProps(node, false)) {}

    void Tags() {
        std::string value;
        if (HasUserProp(node_, "Tags")) {
            node_.GetUserPropString("Tags", value);
            std::string line = "tags";
            for (const std::string_view word : WordsOf(value, ",\n")) {
                line += " " + std::string(word);
            }
            lines.push_back(line);
        }
    }
    // A value in quotes, which may be empty.
    void Text(const char* key, const std::string& word) {
        if (pairs_.Find(key)) {
            lines.push_back(word + " " + std::string(pairs_.Value()));
        }
    }
    void Mark(const char* key, const std::string& line) {
        if (pairs_.Find(key)) {
            lines.push_back(line);
        }
    }
    void Ability(const char* key) {
        if (pairs_.Find(key)) {
            const std::string line = LineOfPlainValue(key, std::string(pairs_.Value()));
            lines.push_back("able " + (line.empty() ? std::string(key) : line));
        }
    }
    // A value that stands in the text as it is.
    void Plain(const char* key, const std::string& word, char from = '\0', char to = '\0') {
        std::string value;
        if (node_.GetUserPropString(key, value)) {
            std::ranges::replace(value, from, to);
            if (const std::string line = LineOfPlainValue(word, value); !line.empty()) {
                lines.push_back(line);
            }
        }
    }
    // Of a joint; one that has no type has them only where a chain of bones ends.
    void Limits(const std::string& joint, bool isTerminator) {
        if (joint.empty() && !isTerminator) {
            return;
        }
        const bool isSocket = joint == "socket";
        if (!isSocket && (pairs_.Find("IKMin") || pairs_.Find("IKMax"))) {
            const float min = NumberOf("IKMin");
            const float max = NumberOf("IKMax");
            lines.push_back("limits " + RealText(double{std::min(min, max)}) + " " +
                            RealText(double{std::max(min, max)}));
        }
        if (isSocket && pairs_.Find("IKLimit")) {
            lines.push_back("limits " + RealText(double{NumberOf("IKLimit")}));
        }
        if (pairs_.Find("IKSpeed")) {
            lines.push_back("speed " + RealText(double{NumberOf("IKSpeed")}));
        }
        if (isTerminator) {
            lines.emplace_back("terminator");
        }
    }
    bool Has(const char* key) { return pairs_.Find(key); }
    std::string ValueOf(const char* key) {
        return pairs_.Find(key) ? std::string(pairs_.Value()) : std::string();
    }

    eLines lines;

private:
    // With either mark of a fraction; 0 without one.
    float NumberOf(const char* key) {
        std::string value = ValueOf(key);
        std::ranges::replace(value, ',', '.');
        return static_cast<float>(ReadReal(value));
    }

    const host::INode& node_;
    std::string text_;
    ePropText pairs_{text_};
};

eLines ZoneLines(const eVerifiedScene& scene, host::INode& node) {
    eToldLines told(node);
    const host::Object* const object = node.EvalWorldState(scene.StaticTime()).obj;
    if (object != nullptr && object->SuperClassID() == host::kGeometrySuperClass) {
        told.lines.emplace_back("rotate");  // of every mesh
    }
    told.Tags();
    told.Text("Proper", "proper");
    told.Text("Permit", "permit");
    told.Mark("Rotate", "rotate");
    told.Mark("Move", "move");
    told.Mark("Static", "static");
    return told.lines;
}

eLines VolumeLines(const host::INode& node) {
    constexpr const char* kAbilities[] = {"visible",        "bullet", "overlap", "contact",
                                          "contact_ground", "blast",  "select",  "hole",
                                          "holed",          "touch",  "float",   "window"};
    eToldLines told(node);
    told.Tags();
    if (!told.ValueOf("Volume").empty()) {
        told.Text("Volume", "component");
    }
    if (HasUserProp(node, "Thickness")) {
        told.Plain("Thickness", "thickness", ',', ' ');
    }
    told.Mark("Clear", "able clear");
    std::ranges::for_each(kAbilities, [&](const char* key) { told.Ability(key); });
    const std::string obstacle = told.ValueOf("obstacle");
    if (!obstacle.empty() && ReadInteger(obstacle) == 0) {
        told.lines.emplace_back("able obstacle 0");
    }
    return told.lines;
}

eLines BoneLines(const eVerifiedScene& scene, const host::INode& node) {
    constexpr std::uint32_t kTurns = 1U << 7;
    constexpr std::uint32_t kSlides = 1U << 6;
    constexpr std::uint32_t kEndsChain = 1U << 5;
    eToldLines told(node);
    std::string joint;
    if (!node.GetUserPropString("IKType", joint) && scene.options.exportIK != 0) {
        joint = (node.AnimatableFlags() & kTurns) != 0    ? "revolute"
                : (node.AnimatableFlags() & kSlides) != 0 ? "prizmatic"
                                                          : "";
    }
    joint = LowerAscii(joint);
    const bool isKnown = joint == "revolute" || joint == "prizmatic" || joint == "socket";
    if (isKnown) {
        told.lines.push_back("joint " + joint);
    }
    if (scene.options.exportIK != 0) {
        const bool isTerminator = told.Has("IKTerminate") || (node.AnimatableFlags() & kEndsChain) != 0;
        told.Limits(isKnown ? joint : "", isTerminator);
    }
    std::string parameters = NormalizeUserProps(node, true);
    if (!parameters.empty()) {
        std::ranges::replace(parameters, ',', '.');
        told.lines.push_back("parameters " + parameters);
    }
    told.Plain("Color", "color");
    constexpr float kVisible = 0.5F;
    if (node.GetVisibility(scene.StaticTime()) < kVisible) {
        told.lines.emplace_back("visibility 0");
    }
    return told.lines;
}

eLines EntityLines(const eSceneModel& model, const eSideNodes& side) {
    eLines lines;
    if (side.isLand) {
        lines.emplace_back("land_patch");
    }
    if (model.isStructure) {
        lines.emplace_back("placer");
    }
    const std::string text = NormalizeUserProps(*model.root, false);
    ePropText pairs(text);
    for (bool isPair = pairs.Seek(0); isPair; isPair = pairs.Next()) {
        const std::string_view value = TrimBlanks(pairs.Value());
        if (EqualNoAsciiCase(TrimBlanks(pairs.Key()), "hold") && !value.empty()) {
            std::string line = "hold";
            for (const std::string_view word : WordsOf(value, " ")) {
                line += " " + std::string(word);
            }
            lines.push_back(line);
        }
    }
    return lines;
}

bool IsFigure(const eSdlBlock& block) {
    return block.Name() == "obb2" || block.Name() == "circle2" || block.Name() == "polygon2";
}

eLines LinesIn(const eSdlBlock& block) {
    eLines lines;
    for (const eSdlBlock* child : block.Blocks()) {
        if (child->Name() == "able") {
            for (const std::string& word : child->Values()) {
                lines.push_back("able " + word);
            }
            for (const eSdlBlock* ability : child->Blocks()) {
                lines.push_back("able " + LineOf(*ability));
            }
        } else if (!IsFigure(*child)) {
            lines.push_back(LineOf(*child));
        }
    }
    return lines;
}

eLines LinesOfBone(const eSdlBlock& block) {
    eLines lines;
    const std::vector<std::string> words = block.Values();
    if (words.size() > 1) {
        lines.push_back("joint " + words.front());
    }
    for (const char* name : {"parameters", "color", "visibility", "limits", "speed", "terminator"}) {
        if (const eSdlBlock* child = block.Find(name)) {
            lines.push_back(LineOf(*child));
        }
    }
    return lines;
}

// What an export writes there; other blocks are of other hands.
eLines LinesOfEntity(const eSdlBlock& entity) {
    eLines lines;
    for (const char* name : {"land_patch", "placer"}) {
        if (entity.Find(name) != nullptr) {
            lines.emplace_back(name);
        }
    }
    const eSdlBlock* const structure = entity.Find("structure");
    for (const eSdlBlock* around : {&entity, structure}) {
        const eSdlBlock* const bone = around != nullptr ? around->Find("structure_bone") : nullptr;
        for (const eSdlBlock* hold :
             bone != nullptr ? bone->Blocks("hold") : std::vector<const eSdlBlock*>()) {
            lines.push_back(LineOf(*hold));
        }
    }
    return lines;
}

eLines LinesOfClips(const eSdlBlock& entity) {
    eLines lines;
    const eSdlBlock* const skeleton = entity.Find("skeleton");
    const eSdlBlock* const clips = skeleton != nullptr ? skeleton->Find("animation") : nullptr;
    for (const eSdlBlock* clip : clips != nullptr ? clips->Blocks() : std::vector<const eSdlBlock*>()) {
        std::string& line = lines.emplace_back(LineOf(*clip));
        for (const eSdlBlock* word : clip->Blocks()) {
            line += " " + LineOf(*word);
        }
    }
    return lines;
}

// Clips that only the definition has may be of other hands.
void CompareClips(const eVerifiedScene& scene, const eSceneModel& model, const eSdlBlock& entity,
                  eFindings& findings) {
    const eLines found = LinesOfClips(entity);
    for (const eSceneClip& clip : FindClips(scene, model)) {
        if (!clip.inDefinition.empty() && std::ranges::find(found, clip.inDefinition) == found.end()) {
            findings.Add("entity property", 0, model.root->GetName() + " lacks " + clip.inDefinition);
        }
    }
}

void CompareDefinition(const eVerifiedScene& scene, const eSceneModel& model, const eSideNodes& side,
                       eFindings& findings) {
    std::string problem;
    const eSdlBlock file = ReadWrittenText(model.File(".def"), problem);
    const eSdlBlock* const entity = file.Find("entity");
    if (entity == nullptr) {
        return findings.Add("missing definition", 0, problem);
    }
    CompareLines(EntityLines(model, side), LinesOfEntity(*entity), "entity", model.root->GetName(), findings);
    CompareClips(scene, model, *entity, findings);
    eWrittenBlocks volumes(entity->Find("volumes"));
    for (host::INode* node : side.volumes) {
        const std::string name = CleanNodeName(node->GetName(), true);
        const eSdlBlock* const volume = volumes.Take(name, "volume in the definition", findings);
        if (volume != nullptr && eTriangleMesh(*node, scene.StaticTime()).IsValid()) {
            CompareLines(VolumeLines(*node), LinesIn(*volume), "volume", name, findings);
        }
    }
}

}  // namespace

void CompareProperties(const eVerifiedScene& scene, const eSceneModel& model, const eSideNodes& side,
                       const eWrittenModel& written, eFindings& findings) {
    for (const eSceneBone& bone : model.bones.bones) {
        const int number = bone.level == 0 ? written.NumberOf(bone.name) : -1;
        if (number >= 0) {
            CompareLines(BoneLines(scene, *bone.node),
                         LinesOfBone(*written.bones[static_cast<std::size_t>(number)].block), "bone",
                         bone.name, findings);
        }
    }
    eFindings told;  // what is missing has been told
    eWrittenBlocks zones(written.text.Find("zones"));
    for (host::INode* node : side.zones) {
        const std::string name = CleanNodeName(node->GetName(), true);
        if (const eSdlBlock* zone = IsSwitchedOff(*node) ? nullptr : zones.Take(name, "zone", told)) {
            CompareLines(ZoneLines(scene, *node), LinesIn(*zone), "zone", name, findings);
        }
    }
    CompareDefinition(scene, model, side, findings);
}

}  // namespace verify
