#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// The block of a node whose texture is animated ("AniTex") in the text of its bone: open while the object
// lives. A node without the property writes nothing. Of the value only what stands before its first comma is
// used.
class eAnimatedTextureBlock {
public:
    eAnimatedTextureBlock(Export& run, const host::INode& node);
    ~eAnimatedTextureBlock();
    eAnimatedTextureBlock(const eAnimatedTextureBlock&) = delete;
    eAnimatedTextureBlock& operator=(const eAnimatedTextureBlock&) = delete;

private:
    Export& run;
    bool isOpen;
};
