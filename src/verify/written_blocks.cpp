#include "verify/written_blocks.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace verify {

using inspect::eSdlBlock;

double TextSlack(double value) {
    constexpr double kTextStep = 0.00005;
    constexpr double kTextDigits = 0.000005;
    return kTextStep + kTextDigits * std::fabs(value);
}

std::vector<double> NumbersIn(const eSdlBlock& around, const char* name) {
    std::vector<double> numbers;
    const eSdlBlock* const block = around.Find(name);
    for (const std::string& word : block != nullptr ? block->Values() : std::vector<std::string>()) {
        numbers.push_back(ReadReal(word));
    }
    return numbers;
}

eWrittenBlocks::eWrittenBlocks(const eSdlBlock* list)
    : blocks_(list != nullptr ? list->Blocks() : std::vector<const eSdlBlock*>()) {}

const eSdlBlock* eWrittenBlocks::Take(const std::string& name, const std::string& kind, eFindings& findings) {
    const auto found =
        std::ranges::find_if(blocks_, [&](const eSdlBlock* block) { return NameOf(*block) == name; });
    if (found == blocks_.end()) {
        findings.Add("missing " + kind, 0, name);
        return nullptr;
    }
    const eSdlBlock* const block = *found;
    blocks_.erase(found);
    return block;
}

void eWrittenBlocks::TellRest(const std::string& kind, eFindings& findings) const {
    for (const eSdlBlock* block : blocks_) {
        findings.Add("foreign " + kind, 0, NameOf(*block));
    }
}

std::string eWrittenBlocks::NameOf(const eSdlBlock& block) {
    const std::vector<std::string> values = block.Values();
    return values.empty() ? block.Name() : values.back();
}

void CompareLines(std::vector<std::string> wanted, std::vector<std::string> found, const std::string& kind,
                  const std::string& place, eFindings& findings) {
    std::ranges::sort(wanted);
    std::ranges::sort(found);
    std::vector<std::string> missing;
    std::vector<std::string> foreign;
    std::ranges::set_difference(wanted, found, std::back_inserter(missing));
    std::ranges::set_difference(found, wanted, std::back_inserter(foreign));
    for (const std::string& line : missing) {
        findings.Add(kind + " property", 0, place + " lacks " + line);
    }
    for (const std::string& line : foreign) {
        findings.Add(kind + " property", 0, place + " has " + line);
    }
}

std::string LineOf(const eSdlBlock& block) {
    std::string line = block.Name();
    for (const std::string& value : block.Values()) {
        line += " " + value;
    }
    return line;
}

std::string LineOfPlainValue(const std::string& word, const std::string& value) {
    std::string problem;
    const eSdlBlock read = inspect::ReadSdlTree("", "{" + word + " " + value + "}", problem);
    const std::vector<const eSdlBlock*> blocks = read.Blocks();
    return problem.empty() && read.items.size() == 1 && blocks.size() == 1 ? LineOf(*blocks.front()) : "";
}

}  // namespace verify
