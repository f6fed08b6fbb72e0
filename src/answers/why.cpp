#include "answers/why.h"

#include <algorithm>
#include <iterator>

#include "answers/file_nodes.h"
#include "base/ansi.h"
#include "host/node_path.h"
#include "platform/path_lookup.h"

namespace answers {

namespace {

using inspect::eDescription;

std::string PathText(const host::INode* node) {
    return node != nullptr ? ToUtf8(host::PathOf(*node)) : std::string();
}

const eNodeNote* NoteIn(const eRunJournal& journal, const host::INode* node) {
    const auto found = journal.nodes.find(node);
    return found != journal.nodes.end() ? &found->second : nullptr;
}

struct eRuleText {
    eLeftOut rule;
    const char* word;
    const char* text;
};

constexpr eRuleText kRuleTexts[] = {
    {eLeftOut::Hidden, "hidden", "it is hidden"},
    {eLeftOut::DetailRoot, "detail-root",
     "it stands at the top of the scene with a level of detail in its name"},
    {eLeftOut::NoModel, "no-model", "it stands for no model: it has no property 'Model'"},
    {eLeftOut::ModelRefused, "model-refused", "its model was left out for an error that is told above"},
    {eLeftOut::LoneDetail, "lone-detail", "it is a level of detail, and no bone beside it has its name"},
    {eLeftOut::NoNumber, "no-number", "it was passed by when the bones were numbered"},
    {eLeftOut::OutOfGroup, "out-of-group", "it hangs inside a group that it is no part of"},
    {eLeftOut::NoSource, "no-source", "its properties name a node that can't serve; the error is told above"},
    {eLeftOut::SwitchedOff, "switched-off", "its 'Obstacle' is 0"},
    {eLeftOut::NameTaken, "name-taken", "an earlier volume has its name"},
    {eLeftOut::NoTriangles, "no-triangles",
     "its object can't be turned into triangles, so its volume has no shape"},
    {eLeftOut::TooLarge, "too-large",
     "it has more vertices than a volume can number, so its volume has no shape"},
};

constexpr const char* kKindWords[] = {"bone",          "volume", "support point", "zone",  "body",
                                      "preview group", "camera", "light",         "target"};

const char* KindWord(eNodeKind kind) {
    return kKindWords[static_cast<std::size_t>(kind)];
}

const char* FateWord(const eNodeNote& note) {
    if (note.kind != eNodeKind::Ordinary) {
        return KindWord(note.kind);
    }
    if (note.isBone) {
        return note.level == 0 ? "bone" : "level of detail";
    }
    return note.number >= 0 ? "part of a group" : "no bone: only what is below it counts";
}

// Blames the node: why it, or what is below it, is in no file.
void Blame(eDescription& answer, const host::INode& node, const char* rule, const std::string& text) {
    answer["rule"] = rule;
    answer["why"] = text;
    answer["blame"] = PathText(&node);
}

// The node at which the walk of a model ended, if it did not come to its end.
const host::INode* WalkEnd(const eRunJournal& journal, const host::INode* model) {
    const auto found = std::ranges::find_if(journal.nodes, [model](const auto& entry) {
        const eLeftOut rule = entry.second.leftOut;
        return entry.second.model == model && (rule == eLeftOut::OutOfGroup || rule == eLeftOut::NoSource);
    });
    return found != journal.nodes.end() ? found->first : nullptr;
}

void DescribeRule(eDescription& answer, const host::INode& blamed, eLeftOut leftOut, bool isItself) {
    const eRuleText& rule = *std::ranges::find(kRuleTexts, leftOut, &eRuleText::rule);
    const std::string below = isItself ? "" : "the node " + PathText(&blamed) + " takes all below it along: ";
    Blame(answer, blamed, rule.word, below + rule.text);
}

// The nearest ancestor that the run has come to tells why it has not come here.
void DescribeAbsence(eDescription& answer, const eRunJournal& journal, const host::INode& node) {
    answer["fate"] = "left out";
    const host::INode* ancestor = &node;
    while (ancestor != nullptr && NoteIn(journal, ancestor) == nullptr) {
        ancestor = ancestor->GetParentNode();
    }
    if (ancestor == nullptr) {
        answer["rule"] = "not-reached";
        answer["why"] = "the run has ended before it came here";
        return;
    }
    const eNodeNote& note = *NoteIn(journal, ancestor);
    if (note.leftOut != eLeftOut::No) {
        return DescribeRule(answer, *ancestor, note.leftOut, ancestor == &node);
    }
    if (note.kind != eNodeKind::Ordinary) {
        const std::string decided = note.decidedBy.empty() ? "" : " by '" + ToUtf8(note.decidedBy) + "'";
        return Blame(answer, *ancestor, "below-no-bone",
                     "the node " + PathText(ancestor) + " is a " + KindWord(note.kind) + decided +
                         ", and nothing below one is exported");
    }
    if (const host::INode* end = WalkEnd(journal, note.model)) {
        DescribeRule(answer, *end, NoteIn(journal, end)->leftOut, true);
        answer["why"] = "the walk of the model ended before it, at " + PathText(end) + ": " +
                        answer["why"].get<std::string>();
        return;
    }
    Blame(answer, *ancestor, "not-reached", "the run has ended before it came here");
}

eDescription SubMeshes(const eNodeNote& note) {
    eDescription list = eDescription::array();
    for (const eSubMeshNote& subMesh : note.subMeshes) {
        eDescription palette = eDescription::array();
        for (const host::INode* bone : subMesh.palette) {
            palette.push_back(bone != nullptr ? ToUtf8(bone->GetName()) : "");
        }
        list.push_back(
            {{"material", subMesh.material.empty() ? eDescription() : eDescription(ToUtf8(subMesh.material))},
             {"triangles", subMesh.triangles},
             {"palette", std::move(palette)}});
    }
    return list;
}

std::string MeshFile(const eNodeNote& note) {
    return platform::DiskPath((note.meshFolder / ".mesh").Text());
}

void DescribeOwnMesh(eDescription& answer, const eNodeNote& note) {
    answer["mesh"] = {{"name", ToUtf8(note.meshName)}, {"file", MeshFile(note)}};
    answer["subMeshes"] = SubMeshes(note);
}

const char* WhyNoMesh(const eNodeNote& note) {
    switch (note.wish) {
        case eMeshWish::None:
            return "no property asks for one: neither 'Poly' nor 'CommonMesh'";
        case eMeshWish::NotRenderable:
            return "the node is not renderable";
        case eMeshWish::NotSelected:
            return "only selected nodes are exported";
        case eMeshWish::Lines:
            return "the node shows lines, which have no faces";
        case eMeshWish::Granted:
            break;
    }
    return "it was not written: an error told above, or an option that leaves meshes out";
}

void DescribeMesh(eDescription& answer, const eRunJournal& journal, const host::INode& node,
                  const eNodeNote& note) {
    if (note.wishedBy != nullptr) {
        answer["meshBy"] = note.wishedBy;
    }
    const bool feedsAnother = note.fedMesh != nullptr && note.fedMesh != &node;
    if (feedsAnother) {
        answer["feeds"] = PathText(note.fedMesh);
        answer["faces"] = note.faces;
    }
    if (note.isMeshWritten) {
        DescribeOwnMesh(answer, note);
    } else if (note.shownMesh != nullptr) {
        answer["shows"] = PathText(note.shownMesh);
        const eNodeNote* const shown = NoteIn(journal, note.shownMesh);
        answer["mesh"] = shown != nullptr && shown->isMeshWritten ? MeshFile(*shown) : "not written";
    } else if (note.isBone && !feedsAnother) {
        answer["noMesh"] = WhyNoMesh(note);
    }
}

eDescription FilesOf(const eRunJournal& journal, const host::INode& node) {
    eDescription files = eDescription::array();
    for (const auto& [path, file] : journal.files) {
        const auto nodes = NodesOf(journal, path, file);
        if (std::ranges::find(nodes, &node) != nodes.end()) {
            files.push_back(platform::DiskPath(path.Text()));
        }
    }
    return files;
}

// Null above the root of a model. A node that is no bone stands for none.
const host::INode* BoneAbove(const eRunJournal& journal, const eNodeNote& note) {
    const host::INode* above = note.number > 0 ? note.parent : nullptr;
    const eNodeNote* aboveNote = NoteIn(journal, above);
    while (aboveNote != nullptr && !aboveNote->isBone) {
        above = aboveNote->parent;
        aboveNote = NoteIn(journal, above);
    }
    return above;
}

void DescribeBone(eDescription& answer, const eRunJournal& journal, const eNodeNote& note) {
    const host::INode* const above = BoneAbove(journal, note);
    answer["bone"] = note.number;
    answer["parentBone"] = above != nullptr ? eDescription(PathText(above)) : eDescription();
    if (note.level != 0) {
        answer["level"] = note.level;
    }
}

void DescribePresence(eDescription& answer, const eRunJournal& journal, const host::INode& node,
                      const eNodeNote& note) {
    answer["fate"] = FateWord(note);
    answer["decidedBy"] = note.decidedBy.empty() ? "its object" : ToUtf8(note.decidedBy);
    if (note.isZoneToo) {
        answer["also"] = KindWord(eNodeKind::Zone);
    }
    answer["model"] = PathText(note.model);
    if (note.number >= 0 && note.kind == eNodeKind::Ordinary) {
        DescribeBone(answer, journal, note);
    }
    DescribeMesh(answer, journal, node, note);
    eDescription animations = eDescription::array();
    std::ranges::transform(note.animations, std::back_inserter(animations), ToUtf8);
    answer["animations"] = std::move(animations);
    answer["files"] = FilesOf(journal, node);
}

}  // namespace

eDescription DescribeNode(const eRunJournal& journal, const host::INode& node) {
    eDescription answer{{"node", PathText(&node)}};
    const eNodeNote* const note = NoteIn(journal, &node);
    if (note != nullptr && note->leftOut == eLeftOut::No) {
        DescribePresence(answer, journal, node, *note);
    } else {
        DescribeAbsence(answer, journal, node);
    }
    return answer;
}

}  // namespace answers
