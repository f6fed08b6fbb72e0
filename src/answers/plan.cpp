#include "answers/plan.h"

#include <algorithm>
#include <filesystem>

#include "answers/file_nodes.h"
#include "answers/file_reason.h"
#include "answers/labelled.h"
#include "answers/left_over.h"
#include "base/ansi.h"
#include "inspect/same_content.h"
#include "messages/utf8_words.h"
#include "platform/path_lookup.h"
#include "platform/utf8_path.h"
#include "run/run_flags.h"

namespace answers {

namespace {

using inspect::eSameness;
using platform::eEntryKind;
using platform::eFileContent;
using platform::eMemoryLayer;

struct eStateWord {
    eFileState state;
    ePhrase word;
    ePhrase count;
};

// In the order of telling.
constexpr eStateWord kStates[] = {
    {eFileState::New, ePhrase::FileNew, ePhrase::CountNew},
    {eFileState::Changed, ePhrase::FileChanged, ePhrase::CountChanged},
    {eFileState::Same, ePhrase::FileSame, ePhrase::CountSame},
    {eFileState::Kept, ePhrase::FileKept, ePhrase::CountKept},
    {eFileState::Deleted, ePhrase::FileDeleted, ePhrase::CountDeleted},
    {eFileState::LeftOver, ePhrase::FileLeftOver, ePhrase::CountLeftOver},
};

// For machines in English.
std::string StateWord(eFileState state, eLanguage language = eLanguage::English) {
    return Say(language, std::ranges::find(kStates, state, &eStateWord::state)->word);
}

std::optional<eFileContent> OnDisk(const std::string& path) {
    eFileContent content;
    if (!platform::ReadWhole(platform::DiskLayer(), path, content).IsOk()) {
        return std::nullopt;
    }
    return content;
}

std::int64_t SizeOf(const eFileContent& content) {
    return static_cast<std::int64_t>(content.size());
}

std::optional<std::int64_t> SizeOnDisk(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(platform::PathFromUtf8(path), error);
    return error ? std::nullopt : std::optional(static_cast<std::int64_t>(size));
}

// What memory has for the file against what lies there.
void SettleState(ePlannedFile& file, const eMemoryLayer::eEntry* entry) {
    file.before = SizeOnDisk(file.path);
    if (entry == nullptr) {
        file.state = eFileState::Kept;
        file.after = file.before;
        return;
    }
    if (entry->kind == eEntryKind::None) {
        file.state = eFileState::Deleted;
        return;
    }
    file.after = SizeOf(*entry->content);
    const std::optional<eFileContent> before = OnDisk(file.path);
    const eSameness sameness =
        before ? inspect::CompareContent(*before, *entry->content) : eSameness::Different;
    file.differsInHead = sameness == eSameness::ButForHead;
    file.state = !before                            ? eFileState::New
                 : sameness == eSameness::Different ? eFileState::Changed
                                                    : eFileState::Same;
}

void AddReason(ePlannedFile& file, const eRunJournal& journal, const eName& path, const eFileNote& note) {
    file.rule = RuleWord(note.rule);
    file.why = ReasonOf(journal, path, note);
    if (file.differsInHead) {
        file.why += Utf8Words(ePhrase::ReasonHead);
    }
    for (const host::INode* node : NodesOf(journal, path, note)) {
        file.nodes.push_back(ToUtf8(node->GetName()));
    }
    for (const std::string& material : note.materials) {
        if (std::ranges::find(file.materials, ToUtf8(material)) == file.materials.end()) {
            file.materials.push_back(ToUtf8(material));
        }
    }
    file.source = ToUtf8(note.source);
}

void AddLeftOver(eRunPlan& plan, const eRunJournal& journal, const eExportOptions& options) {
    for (const eLeftOverFile& found : FindLeftOver(journal, options)) {
        ePlannedFile file;
        file.path = found.path;
        file.state = found.isOfKilledRun ? eFileState::Deleted : eFileState::LeftOver;
        file.before = found.bytes;
        if (!found.isOfKilledRun) {
            file.after = found.bytes;
        }
        file.why = Utf8Words(found.isOfKilledRun ? ePhrase::ReasonKilledRun : ePhrase::ReasonLeftOver);
        plan.files.push_back(std::move(file));
    }
}

inspect::eDescription SizeOrNull(std::optional<std::int64_t> bytes) {
    return bytes ? inspect::eDescription(*bytes) : inspect::eDescription();
}

inspect::eDescription Summary(const eRunPlan& plan) {
    inspect::eDescription summary = inspect::eDescription::object();
    for (const eStateWord& each : kStates) {
        summary[StateWord(each.state)] = plan.Count(each.state);
    }
    return summary;
}

std::string SummaryText(const eRunPlan& plan, eLanguage language) {
    eBilingual text;
    for (const eStateWord& each : kStates) {
        text.AddToList(Utf8Words(each.count, plan.Count(each.state)));
    }
    return text.In(language);
}

std::string BelowRoot(const std::string& path, const std::string& root) {
    return path.starts_with(root + "/") ? path.substr(root.size() + 1) : path;
}

}  // namespace

int eRunPlan::Count(eFileState state) const {
    return static_cast<int>(std::ranges::count(files, state, &ePlannedFile::state));
}

void eRunPlan::SpellRoot(const std::string& spelling) {
    for (ePlannedFile& file : files) {
        file.path = spelling + "/" + BelowRoot(file.path, root);
    }
    root = spelling;
}

eRunPlan MakePlan(const Export& run, const eMemoryLayer& files, const eRunJournal& journal, bool isComplete) {
    eRunPlan plan;
    plan.root = platform::DiskPath(run.options.resourceRoot.Text());
    for (const auto& [path, note] : journal.files) {
        ePlannedFile file;
        file.path = platform::DiskPath(path.Text());
        SettleState(file, files.Find(file.path));
        if (file.before || file.after) {
            AddReason(file, journal, path, note);
            plan.files.push_back(std::move(file));
        }
    }
    if (isComplete && !exportSelected) {
        AddLeftOver(plan, journal, run.options);
    }
    std::ranges::sort(plan.files, {}, &ePlannedFile::path);
    return plan;
}

inspect::eDescription DescribePlan(const eRunPlan& plan) {
    inspect::eDescription files = inspect::eDescription::array();
    for (const ePlannedFile& file : plan.files) {
        files.push_back({{"path", file.path},
                         {"state", StateWord(file.state)},
                         {"differsInHead", file.differsInHead},
                         {"before", SizeOrNull(file.before)},
                         {"after", SizeOrNull(file.after)},
                         {"rule", file.rule},
                         {"why", file.why.english},
                         {"nodes", file.nodes},
                         {"materials", file.materials},
                         {"source", file.source}});
    }
    return {{"schema", kPlanSchema},
            {"scene", plan.scene},
            {"root", plan.root},
            {"summary", Summary(plan)},
            {"files", std::move(files)}};
}

std::string PlanText(const eRunPlan& plan, eLanguage language) {
    inspect::eDescription files = inspect::eDescription::array();
    for (const ePlannedFile& file : plan.files) {
        files.push_back({{"state", StateWord(file.state, language)},
                         {"before", SizeOrNull(file.before)},
                         {"after", SizeOrNull(file.after)},
                         {"file", BelowRoot(file.path, plan.root)},
                         {"why", file.why.In(language)}});
    }
    return inspect::RenderText(Labelled({{"scene", plan.scene},
                                         {"root", plan.root},
                                         {"plan", SummaryText(plan, language)},
                                         {"files", std::move(files)}},
                                        language));
}

}  // namespace answers
