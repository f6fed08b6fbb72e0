#include "scene/skeleton/ik_limits.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "export/export.h"
#include "scene/properties/prop_text.h"

namespace {

// The host's own mark of a bone that ends an IK chain.
constexpr std::uint32_t kTerminatorFlag = 1U << 5;

// The value of the key as a number, 0 without a value or without the key.
float NumberOf(ePropText& pairs, const char* key) {
    return pairs.Find(key) ? static_cast<float>(ReadReal(pairs.Value())) : 0;
}

void WriteRange(xIo::xSdl::eWriter& writer, float min, float max) {
    if (max < min) {
        std::swap(min, max);
    }
    writer.BlockBegin().Word("limits").Real(min).Real(max).BlockEndLine();
}

}  // namespace

void WriteIkLimits(Export& run, const host::INode& node, const std::string& userProps, int ikType) {
    std::string text = userProps;
    std::ranges::replace(text, ',', '.');
    ePropText pairs(text);

    const bool hasMin = ikType != kIkSocket && pairs.Find("IKMin");
    const bool hasMax = ikType != kIkSocket && pairs.Find("IKMax");
    const bool hasLimit = ikType == kIkSocket && pairs.Find("IKLimit");
    const bool hasSpeed = pairs.Find("IKSpeed");
    const bool isTerminator = pairs.Find("IKTerminate") || (node.AnimatableFlags() & kTerminatorFlag) != 0;
    if (ikType == kIkNone && !isTerminator) {
        return;
    }

    xIo::xSdl::eWriter& writer = *run.mdlWriter;
    if (hasMin || hasMax) {
        WriteRange(writer, NumberOf(pairs, "IKMin"), NumberOf(pairs, "IKMax"));
    }
    if (hasLimit) {
        writer.BlockBegin().Word("limits").Real(NumberOf(pairs, "IKLimit")).BlockEndLine();
    }
    if (hasSpeed) {
        writer.BlockBegin().Word("speed").Real(NumberOf(pairs, "IKSpeed")).BlockEndLine();
    }
    if (isTerminator) {
        writer.BlockBegin().Word("terminator").BlockEndLine();
    }
}
