#include "mesh/file/animated_texture.h"

#include <string>

#include "run/export.h"
#include "run/model_texts.h"

eAnimatedTextureBlock::eAnimatedTextureBlock(Export& ownRun, const host::INode& node) : run(ownRun) {
    std::string value;
    isOpen = node.GetUserPropString("AniTex", value);
    if (!isOpen) {
        return;
    }
    const std::string name = value.substr(0, value.find(','));
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    writer.BlockBegin().Word("animation");
    writer.BlockBegin().Word("texture");
    writer.BlockBegin().Word("name").String(name).BlockEndLine();
    writer.BlockBegin().Word("texture");
}

eAnimatedTextureBlock::~eAnimatedTextureBlock() {
    for (int block = 0; isOpen && block < 3; ++block) {
        run.texts->mdlWriter->BlockEndLine();
    }
}
