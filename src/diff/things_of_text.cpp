#include <algorithm>

#include "base/ansi.h"
#include "diff/thing.h"
#include "inspect/placement.h"

namespace diff {

namespace {

using inspect::eSdlBlock;
using eWords = std::vector<std::string>;

std::string Joined(const eWords& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

// Things of their own, or told as a place.
bool IsToldElsewhere(const std::string& name) {
    constexpr const char* kTold[] = {"bone", "matrix34", "Position", "orientation"};
    return std::ranges::find(kTold, name) != std::end(kTold);
}

// A block without blocks inside is a value; what stands beside blocks goes to the path.
void AddFacts(const eSdlBlock& block, const std::string& around, std::vector<eFact>& facts) {
    for (const eSdlBlock* child : block.Blocks()) {
        const std::string path = around + child->Name();
        if (child->Blocks().empty()) {
            facts.push_back({path, child->Values()});
        } else {
            std::string below = path;
            if (const std::string values = Joined(child->Values()); !values.empty()) {
                below.append(" ").append(values);
            }
            AddFacts(*child, below.append("/"), facts);
        }
    }
}

std::vector<eFact> FactsOf(const eSdlBlock& block) {
    std::vector<eFact> facts;
    AddFacts(block, "", facts);
    return facts;
}

eThing Thing(ePhrase kind, const std::string& name, const eSdlBlock& block) {
    return {.title = Utf8Words(kind, ToUtf8(name)), .place = {}, .facts = FactsOf(block)};
}

// `{bone revolute "name" ...}`: the joint word stands in front of the name.
void AddBones(const eSdlBlock& around, const std::string& above, std::vector<eThing>& things) {
    for (const eSdlBlock* bone : around.Blocks("bone")) {
        eWords words = bone->Values();
        const std::string name = words.empty() ? std::string() : words.back();
        words.resize(words.empty() ? 0 : words.size() - 1);
        eThing& thing = things.emplace_back();
        thing.title = Utf8Words(ePhrase::OfBone, ToUtf8(name));
        thing.place = inspect::PlacementOf(*bone);
        thing.facts = {{"hangs from", {above}}, {"joint", {Joined(words)}}};
        for (const eSdlBlock* block : bone->Blocks()) {
            if (!IsToldElsewhere(block->Name())) {
                block->Blocks().empty()
                    ? thing.facts.push_back({block->Name(), block->Values()})
                    : AddFacts(*block, block->Name() + " " + Joined(block->Values()) + "/", thing.facts);
            }
        }
        AddBones(*bone, name, things);
    }
}

void AddVolumes(const eSdlBlock& around, std::vector<eThing>& things) {
    const eSdlBlock* const volumes = around.Find("volumes");
    for (const eSdlBlock* volume : volumes != nullptr ? volumes->Blocks() : std::vector<const eSdlBlock*>()) {
        eThing& thing = things.emplace_back(Thing(ePhrase::OfVolume, volume->Name(), *volume));
        thing.place = inspect::PlacementOf(*volume);
        std::erase_if(thing.facts,
                      [](const eFact& fact) { return fact.path != "bone" && IsToldElsewhere(fact.path); });
    }
}

// Everything in the block of that name, told as one kind; the last value of each is its name, or its own name
// if it has none.
void AddList(const eSdlBlock& file, const char* block, ePhrase kind, std::vector<eThing>& things) {
    const eSdlBlock* const list = file.Find(block);
    for (const eSdlBlock* entry : list != nullptr ? list->Blocks() : std::vector<const eSdlBlock*>()) {
        const eWords words = entry->Values();
        eThing& thing =
            things.emplace_back(Thing(kind, words.empty() ? entry->Name() : words.back(), *entry));
        if (!words.empty()) {
            thing.facts.insert(thing.facts.begin(), {"kind", {entry->Name()}});
        }
    }
}

void AddModel(const eSdlBlock& file, std::vector<eThing>& things) {
    AddBones(*file.Find("skeleton"), "", things);
    AddList(file, "SupportPoints", ePhrase::OfSupportPoints, things);
    AddList(file, "zones", ePhrase::OfZone, things);
    AddVolumes(file, things);
    AddList(file, "preview", ePhrase::OfPreview, things);
}

// An entity has its volumes, and all else as values.
void AddEntity(const eSdlBlock& entity, std::vector<eThing>& things) {
    AddVolumes(entity, things);
    eThing whole{.title = Utf8Words(ePhrase::OfEntity), .place = {}, .facts = FactsOf(entity)};
    std::erase_if(whole.facts, [](const eFact& fact) { return fact.path.starts_with("volumes/"); });
    things.push_back(std::move(whole));
}

}  // namespace

std::vector<eThing> ThingsOf(const eSdlBlock& file) {
    std::vector<eThing> things;
    if (file.Find("skeleton") != nullptr) {
        AddModel(file, things);
    } else if (const eSdlBlock* entity = file.Find("entity")) {
        AddEntity(*entity, things);
    } else {
        for (const eSdlBlock* material : file.Blocks()) {
            const eWords words = material->Values();
            eThing& thing =
                things.emplace_back(Thing(ePhrase::OfMaterial, words.empty() ? "" : words.back(), *material));
            thing.facts.insert(thing.facts.begin(), {"kind", {material->Name()}});
        }
    }
    return things;
}

}  // namespace diff
