#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

struct eSdlBlock;

// A token, or a block where `block` is set. Texts are in code page 1251, strings without quotes and escapes.
struct eSdlItem {
    std::string text;
    bool isString = false;
    std::unique_ptr<eSdlBlock> block;
};

// A block of SDL text: what stands between its braces, in order.
struct eSdlBlock {
    std::vector<eSdlItem> items;

    // The first token, which is the block's name; empty if there is none.
    const std::string& Name() const;
    // The tokens behind the name, up to the first block.
    std::vector<std::string> Values() const;
    // The blocks inside.
    std::vector<const eSdlBlock*> Blocks() const;
    std::vector<const eSdlBlock*> Blocks(std::string_view name) const;
    // The first block of that name, or null.
    const eSdlBlock* Find(std::string_view name) const;
    // The first value of the block of that name; empty if there is none.
    std::string ValueOf(std::string_view name) const;
};

// Reads a whole text as the engine does, includes and defines unfolded; the items are those of a nameless
// outermost block. `name` is the text's own in the repository, for what it includes. The problem is the
// report of the fatal error in UTF-8, with the lines around it; the tree holds what stood before it.
eSdlBlock ReadSdlTree(const std::string& name, const std::string& text, std::string& problem);

}  // namespace inspect
