#include "scene/skeleton/ik_limits.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "run/export.h"
#include "run/model_texts.h"
#include "scene/export_bone.h"
#include "scene/properties/prop_text.h"
#include "scene/properties/told_values.h"

namespace {

// The host's own mark of a bone that ends an IK chain.
constexpr std::uint32_t kTerminatorFlag = 1U << 5;

// The limits of one node. The text of its properties has a dot in every number.
struct eLimitValues {
    Export& run;
    const host::INode& node;
    ePropText& pairs;

    // The value of the key as a number, 0 without a value or without the key.
    float NumberOf(const char* key) {
        if (!pairs.Find(key)) {
            return 0;
        }
        const auto number = static_cast<float>(ReadReal(pairs.Value()));
        TellOtherNumber(run, node, key, number);
        return number;
    }
};

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

    eLimitValues values{run, node, pairs};
    xIo::xSdl::eWriter& writer = *run.texts->mdlWriter;
    if (hasMin || hasMax) {
        const float min = values.NumberOf("IKMin");
        WriteRange(writer, min, values.NumberOf("IKMax"));
    }
    if (hasLimit) {
        writer.BlockBegin().Word("limits").Real(values.NumberOf("IKLimit")).BlockEndLine();
    }
    if (hasSpeed) {
        writer.BlockBegin().Word("speed").Real(values.NumberOf("IKSpeed")).BlockEndLine();
    }
    if (isTerminator) {
        writer.BlockBegin().Word("terminator").BlockEndLine();
    }
}
