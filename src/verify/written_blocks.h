#pragma once

#include <string>
#include <vector>

#include "inspect/sdl_tree.h"
#include "verify/finding.h"

namespace verify {

// What the digits of a text take from a number at most: the fifth decimal, and the seventh digit.
double TextSlack(double value);

// The values of the block of that name, as numbers; none if there is no such block.
std::vector<double> NumbersIn(const inspect::eSdlBlock& around, const char* name);

// The blocks of a list in a text, by their names, each taken once.
class eWrittenBlocks {
public:
    // `list` may be null. A block's name is its last value, or its first word where it has no values.
    explicit eWrittenBlocks(const inspect::eSdlBlock* list);

    // The first of that name that is not taken; tells "missing KIND" and gives null if there is none.
    const inspect::eSdlBlock* Take(const std::string& name, const std::string& kind, eFindings& findings);
    // Tells "foreign KIND" of each that is left.
    void TellRest(const std::string& kind, eFindings& findings) const;

private:
    static std::string NameOf(const inspect::eSdlBlock& block);

    std::vector<const inspect::eSdlBlock*> blocks_;
};

// Tells "KIND property" of each line that is on one side only. A line is a word with its values.
void CompareLines(std::vector<std::string> wanted, std::vector<std::string> found, const std::string& kind,
                  const std::string& place, eFindings& findings);

// The word and the values of a block as a line; and the line that a value gives which is written as it
// stands: empty for one that the engine could not read back, which an export leaves out.
std::string LineOf(const inspect::eSdlBlock& block);
std::string LineOfPlainValue(const std::string& word, const std::string& value);

}  // namespace verify
