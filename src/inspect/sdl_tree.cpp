#include "inspect/sdl_tree.h"

#include "io/sdl_parser.h"

namespace inspect {

namespace {

using xIo::xSdl::eParser;
using xIo::xSdl::eToken;

// Deeper than any skeleton: what nests deeper is no text of the system.
constexpr std::size_t kDeepestBlock = 4096;

std::string PlainText(const eToken& token) {
    if (token.type != xIo::xSdl::kTokenString && token.type != xIo::xSdl::kTokenSingleString) {
        return std::string(token.text);
    }
    std::string plain;
    for (std::size_t i = 0; i < token.text.size(); ++i) {
        char c = token.text[i];
        if (c == '\\' && i + 1 < token.text.size()) {
            c = token.text[++i];
            c = c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
        }
        plain += c;
    }
    return plain;
}

std::string AtLine(const char* what, const eToken& token) {
    return std::string(what) + " in line " + std::to_string(token.line);
}

}  // namespace

const std::string& eSdlBlock::Name() const {
    static const std::string none;
    return items.empty() || items.front().block ? none : items.front().text;
}

std::vector<std::string> eSdlBlock::Values() const {
    std::vector<std::string> values;
    for (std::size_t i = 1; i < items.size() && !items[i].block; ++i) {
        values.push_back(items[i].text);
    }
    return values;
}

std::vector<const eSdlBlock*> eSdlBlock::Blocks() const {
    std::vector<const eSdlBlock*> blocks;
    for (const eSdlItem& item : items) {
        if (item.block) {
            blocks.push_back(item.block.get());
        }
    }
    return blocks;
}

std::vector<const eSdlBlock*> eSdlBlock::Blocks(std::string_view name) const {
    std::vector<const eSdlBlock*> blocks = Blocks();
    std::erase_if(blocks, [&](const eSdlBlock* block) { return block->Name() != name; });
    return blocks;
}

const eSdlBlock* eSdlBlock::Find(std::string_view name) const {
    for (const eSdlItem& item : items) {
        if (item.block && item.block->Name() == name) {
            return item.block.get();
        }
    }
    return nullptr;
}

std::string eSdlBlock::ValueOf(std::string_view name) const {
    const eSdlBlock* block = Find(name);
    const std::vector<std::string> values = block != nullptr ? block->Values() : std::vector<std::string>();
    return values.empty() ? std::string() : values.front();
}

eSdlBlock ReadSdlTree(const std::string& text, std::string& problem) {
    eSdlBlock root;
    std::vector<eSdlBlock*> open{&root};
    eParser parser("", text);
    problem.clear();
    for (;;) {
        const eToken& token = parser.Next();
        switch (token.type) {
            case xIo::xSdl::kTokenEnd:
                problem = open.size() > 1 ? AtLine("a block is not closed", token) : "";
                return root;
            case xIo::xSdl::kTokenError:
                problem = AtLine("a character or a string is broken", token);
                return root;
            case xIo::xSdl::kTokenBlockBegin:
                if (open.size() == kDeepestBlock) {
                    problem = AtLine("blocks are nested too deeply", token);
                    return root;
                }
                open.back()->items.push_back({{}, false, std::make_unique<eSdlBlock>()});
                open.push_back(open.back()->items.back().block.get());
                break;
            case xIo::xSdl::kTokenBlockEnd:
                if (open.size() == 1) {
                    problem = AtLine("a block is closed that is not open", token);
                    return root;
                }
                open.pop_back();
                break;
            default:
                open.back()->items.push_back(
                    {PlainText(token), token.type == xIo::xSdl::kTokenString, nullptr});
        }
    }
}

}  // namespace inspect
