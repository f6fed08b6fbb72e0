#include "answers/why.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "answers/file_nodes.h"
#include "answers/labelled.h"
#include "base/ansi.h"
#include "host/node_path.h"
#include "messages/utf8_words.h"
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
    ePhrase text;
};

constexpr eRuleText kRuleTexts[] = {
    {eLeftOut::Hidden, "hidden", ePhrase::OutHidden},
    {eLeftOut::DetailRoot, "detail-root", ePhrase::OutDetailRoot},
    {eLeftOut::NoModel, "no-model", ePhrase::OutNoModel},
    {eLeftOut::ModelRefused, "model-refused", ePhrase::OutModelRefused},
    {eLeftOut::LoneDetail, "lone-detail", ePhrase::OutLoneDetail},
    {eLeftOut::NoNumber, "no-number", ePhrase::OutNoNumber},
    {eLeftOut::OutOfGroup, "out-of-group", ePhrase::OutOfGroup},
    {eLeftOut::NoSource, "no-source", ePhrase::OutNoSource},
    {eLeftOut::SwitchedOff, "switched-off", ePhrase::OutSwitchedOff},
    {eLeftOut::NameTaken, "name-taken", ePhrase::OutNameTaken},
    {eLeftOut::NoTriangles, "no-triangles", ePhrase::OutNoTriangles},
    {eLeftOut::TooLarge, "too-large", ePhrase::OutTooLarge},
};

// By eNodeKind.
constexpr ePhrase kKindWords[] = {ePhrase::NodeBone,   ePhrase::NodeVolume, ePhrase::NodeSupportPoint,
                                  ePhrase::NodeZone,   ePhrase::NodeBody,   ePhrase::NodePreviewGroup,
                                  ePhrase::NodeCamera, ePhrase::NodeLight,  ePhrase::NodeTarget};

ePhrase KindWord(eNodeKind kind) {
    return kKindWords[static_cast<std::size_t>(kind)];
}

ePhrase FateWord(const eNodeNote& note) {
    if (note.kind != eNodeKind::Ordinary) {
        return KindWord(note.kind);
    }
    if (note.isBone) {
        return note.level == 0 ? ePhrase::NodeBone : ePhrase::NodeDetailLevel;
    }
    return note.number >= 0 ? ePhrase::NodeGroupPart : ePhrase::NodeNoBone;
}

ePhrase WhyNoMesh(const eNodeNote& note) {
    switch (note.wish) {
        case eMeshWish::None:
            return ePhrase::MeshNotWanted;
        case eMeshWish::NotRenderable:
            return ePhrase::MeshOfHiddenNode;
        case eMeshWish::NotSelected:
            return ePhrase::MeshSelectedOnly;
        case eMeshWish::Lines:
            return ePhrase::MeshWithoutFaces;
        case eMeshWish::Granted:
            break;
    }
    return ePhrase::MeshNotWritten;
}

// The node at which the walk of a model ended, if it did not come to its end.
const host::INode* WalkEnd(const eRunJournal& journal, const host::INode* model) {
    const auto found = std::ranges::find_if(journal.nodes, [model](const auto& entry) {
        const eLeftOut rule = entry.second.leftOut;
        return entry.second.model == model && (rule == eLeftOut::OutOfGroup || rule == eLeftOut::NoSource);
    });
    return found != journal.nodes.end() ? found->first : nullptr;
}

const eRuleText& RuleOf(eLeftOut rule) {
    return *std::ranges::find(kRuleTexts, rule, &eRuleText::rule);
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

// What is said of one node.
class eNodeAnswer {
public:
    eNodeAnswer(const eRunJournal& ownJournal, const host::INode& ownNode, eLanguage ownLanguage)
        : journal(ownJournal), node(ownNode), language(ownLanguage), answer{{"node", PathText(&ownNode)}} {}

    eDescription Describe() {
        const eNodeNote* const note = NoteIn(journal, &node);
        if (note != nullptr && note->leftOut == eLeftOut::No) {
            DescribePresence(*note);
        } else {
            DescribeAbsence();
        }
        return std::move(answer);
    }

private:
    // Blames the node: why it, or what is below it, is in no file.
    void Blame(const host::INode& blamed, const char* rule, const eBilingual& text) {
        answer["rule"] = rule;
        answer["why"] = text.In(language);
        answer["blame"] = PathText(&blamed);
    }

    void DescribeRule(const host::INode& blamed, eLeftOut leftOut) {
        const eRuleText& rule = RuleOf(leftOut);
        eBilingual text =
            &blamed == &node ? eBilingual() : Utf8Words(ePhrase::OutTakenAlong, PathText(&blamed));
        text += Utf8Words(rule.text);
        Blame(blamed, rule.word, text);
    }

    void DescribeBelow(const host::INode& ancestor, const eNodeNote& note) {
        const eBilingual decided =
            note.decidedBy.empty() ? eBilingual() : Utf8Words(ePhrase::OutDecidedBy, ToUtf8(note.decidedBy));
        Blame(ancestor, "below-no-bone",
              Utf8Words(ePhrase::OutBelow, PathText(&ancestor), Utf8Words(KindWord(note.kind)), decided));
    }

    // The nearest ancestor that the run has come to tells why it has not come here.
    void DescribeAbsence() {
        answer["fate"] = Say(language, ePhrase::NodeLeftOut);
        const host::INode* ancestor = &node;
        while (ancestor != nullptr && NoteIn(journal, ancestor) == nullptr) {
            ancestor = ancestor->GetParentNode();
        }
        if (ancestor == nullptr) {
            answer["rule"] = "not-reached";
            answer["why"] = Say(language, ePhrase::OutNotReached);
            return;
        }
        const eNodeNote& note = *NoteIn(journal, ancestor);
        if (note.leftOut != eLeftOut::No) {
            return DescribeRule(*ancestor, note.leftOut);
        }
        if (note.kind != eNodeKind::Ordinary) {
            return DescribeBelow(*ancestor, note);
        }
        if (const host::INode* end = WalkEnd(journal, note.model)) {
            const eRuleText& rule = RuleOf(NoteIn(journal, end)->leftOut);
            return Blame(*end, rule.word,
                         Utf8Words(ePhrase::OutWalkEnded, PathText(end), Utf8Words(rule.text)));
        }
        Blame(*ancestor, "not-reached", Utf8Words(ePhrase::OutNotReached));
    }

    void DescribePresence(const eNodeNote& note) {
        answer["fate"] = Say(language, FateWord(note));
        answer["decidedBy"] =
            note.decidedBy.empty() ? Say(language, ePhrase::ByObject) : ToUtf8(note.decidedBy);
        if (note.isZoneToo) {
            answer["also"] = Say(language, KindWord(eNodeKind::Zone));
        }
        answer["model"] = PathText(note.model);
        if (note.number >= 0 && note.kind == eNodeKind::Ordinary) {
            DescribeBone(note);
        }
        DescribeMesh(note);
        eDescription animations = eDescription::array();
        std::ranges::transform(note.animations, std::back_inserter(animations), ToUtf8);
        answer["animations"] = std::move(animations);
        answer["files"] = FilesOf(journal, node);
    }

    void DescribeBone(const eNodeNote& note) {
        const host::INode* const above = BoneAbove(journal, note);
        answer["bone"] = note.number;
        answer["parentBone"] = above != nullptr ? eDescription(PathText(above)) : eDescription();
        if (note.level != 0) {
            answer["level"] = note.level;
        }
    }

    void DescribeMesh(const eNodeNote& note) {
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
            answer["mesh"] = shown != nullptr && shown->isMeshWritten ? MeshFile(*shown)
                                                                      : Say(language, ePhrase::NotWritten);
        } else if (note.isBone && !feedsAnother) {
            answer["noMesh"] = Say(language, WhyNoMesh(note));
        }
    }

    const eRunJournal& journal;
    const host::INode& node;
    const eLanguage language;
    eDescription answer;
};

}  // namespace

eDescription DescribeNode(const eRunJournal& journal, const host::INode& node, eLanguage language) {
    return eNodeAnswer(journal, node, language).Describe();
}

std::string NodeText(const eRunJournal& journal, const host::INode& node, eLanguage language) {
    return inspect::RenderText(Labelled(DescribeNode(journal, node, language), language));
}

}  // namespace answers
