#include "inspect/sdl_tree.h"

#include "base/ansi.h"
#include "base/failure_report.h"
#include "io/repository/repository.h"
#include "io/sdl/sdl_reader.h"

namespace inspect {

namespace {

using xIo::xSdl::eReader;

// Deeper than any skeleton: what nests deeper is no text of the system.
constexpr std::size_t kDeepestBlock = 4096;

void ReadBlocks(eReader& reader, eSdlBlock& root) {
    std::vector<eSdlBlock*> open{&root};
    for (;;) {
        const xIo::xSdl::eToken& token = reader.Next();
        switch (token.type) {
            case xIo::xSdl::kTokenEnd:
                if (open.size() > 1) {
                    Fail(__FILE__, __LINE__, "SDL: block terminator expected");
                }
                return;
            case xIo::xSdl::kTokenError:
                Fail(__FILE__, __LINE__, "SDL: unexpected token");
            case xIo::xSdl::kTokenBlockBegin:
                if (open.size() == kDeepestBlock) {
                    Fail(__FILE__, __LINE__, "SDL: blocks are nested too deeply");
                }
                open.back()->items.push_back({{}, false, std::make_unique<eSdlBlock>()});
                open.push_back(open.back()->items.back().block.get());
                break;
            case xIo::xSdl::kTokenBlockEnd:
                if (open.size() == 1) {
                    Fail(__FILE__, __LINE__, "SDL: block start expected");
                }
                open.pop_back();
                break;
            default:
                open.back()->items.push_back(
                    {std::string(token.text), token.type == xIo::xSdl::kTokenString, nullptr});
        }
    }
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

eSdlBlock ReadSdlTree(const std::string& name, const std::string& text, std::string& problem) {
    eSdlBlock root;
    problem = ToUtf8(FailureReport([&] {
        const xIo::xRepository::eFolderScope folder(xIo::xRepository::FolderOf(name));
        eReader reader;
        reader.OpenText(name, text);
        ReadBlocks(reader, root);
    }));
    return root;
}

}  // namespace inspect
