#include "scene/properties/told_values.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "io/sdl/sdl_parser.h"
#include "run/export.h"
#include "run/tell.h"

namespace {

// True if the game reads the value in a block and finds the end of that block behind it.
bool ReadsBack(const std::string& value) {
    xIo::xSdl::eParser parser({}, "{value " + value + "}");
    int depth = 0;
    do {
        switch (parser.Next().type) {
            case xIo::xSdl::kTokenBlockBegin:
                ++depth;
                break;
            case xIo::xSdl::kTokenBlockEnd:
                --depth;
                break;
            case xIo::xSdl::kTokenEnd:
            case xIo::xSdl::kTokenError:
            case xIo::xSdl::kTokenOpen:  // a sum or a call, of which the artist knows nothing
            case xIo::xSdl::kTokenClose:
                return false;
            default:
                break;
        }
    } while (depth > 0);
    return parser.Next().type == xIo::xSdl::kTokenEnd;
}

}  // namespace

void TellBadValue(Export& run, const host::INode& node, const char* key, const char* badInValue) {
    std::string value;
    node.GetUserPropString(key, value);
    const auto isForeign = [](char byte) { return static_cast<unsigned char>(byte) > 0x7F; };
    if (std::ranges::any_of(value, isForeign) || value.find_first_of(badInValue) != std::string::npos) {
        Tell(run, eMessageId::PropertiesForeignCharacter, {.node = host::PathOf(node), .property = key},
             value, key, node.GetName());
    }
}

void TellOtherNumber(Export& run, const host::INode& node, const char* key, float readAs) {
    std::string value;
    if (!node.GetUserPropString(key, value) || SaysNumber(value, readAs)) {
        return;
    }
    Tell(run, eMessageId::PropertiesReadAsNumber, {.node = host::PathOf(node), .property = key}, value, key,
         node.GetName(), RealText(readAs));
}

bool CheckWord(Export& run, const host::INode& node, const char* key, const std::string& value) {
    if (ReadsBack(value)) {
        TellBadValue(run, node, key, "{}\"");
        return true;
    }
    Tell(run, eMessageId::PropertiesNotWritten, {.node = host::PathOf(node), .property = key}, value, key,
         node.GetName());
    return false;
}

bool SaysNumber(std::string value, float number) {
    std::ranges::replace(value, ',', '.');
    std::size_t used = 0;
    const auto said = static_cast<float>(ReadReal(value, &used));
    return said == number && value.find_first_not_of(" \t", used) == std::string::npos;
}
