#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "standalone/load_result.h"

namespace standalone {

// What the file holds and the import leaves out. Each is one warning line per file, with a list of items.
enum class eImportNotice {
    CannotShow,      // kinds of content
    LostExtra,       // places of extras that property text can't say
    UnknownNode,     // names in selection sets
    UnknownExtra,    // scene extras that begin as ours do
    BindPose,        // skins whose bones are elsewhere at the first frame
    ToldTwice,       // properties whose keys the property text has already
    NoPicture,       // materials whose pictures are nowhere
    MovedMesh,       // skinned meshes that went back to their bones
    NoArea,          // meshes that lost triangles without area
    Parted,          // meshes in pieces
    TooLarge,        // meshes that had to stay whole
    NoSuchNode,      // headings of a property sidecar
    UnreadPicture,   // materials whose pictures are of a kind that isn't read
    OtherMaterials,  // nodes whose materials the import library takes from another node
    SharedName,      // names of several nodes, where the import library tells nodes apart by names
};

// Collects what an import has to tell.
class eImportReport {
public:
    // A fault of the file; `place` is a JSON path, or a byte offset in words.
    void Problem(std::string place, std::string text);
    bool HasProblems() const { return !problems.empty(); }

    // Repeated items are told once.
    void Notice(eImportNotice notice, std::string_view item);

    // The text in code page 1251, "_" for what the page lacks and for control characters, which names and
    // values of properties can't hold. That is told with the text, behind its owner where there is one
    // (UTF-8).
    std::string Ansi(std::string_view utf8, std::string_view owner = {});

    // What was collected, in the order of the enumeration. The report is empty afterwards.
    std::vector<eProblem> TakeProblems();
    std::vector<std::string> TakeWarnings();

private:
    static constexpr std::size_t kNotices = 15;

    std::vector<eProblem> problems;
    std::size_t problemCount = 0;
    std::array<std::vector<std::string>, kNotices> notices;
    std::vector<std::string> lossyTexts;  // UTF-8
};

}  // namespace standalone
