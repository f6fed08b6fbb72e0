#include "standalone/loaders/fbx/fbx_records.h"

#include <algorithm>

#include "standalone/loaders/fbx/fbx_binary.h"
#include "standalone/loaders/fbx/fbx_text.h"

namespace standalone {

const eFbxRecord* eFbxRecord::Find(std::string_view child) const {
    const auto found = std::ranges::find(children, child, &eFbxRecord::name);
    return found == children.end() ? nullptr : &*found;
}

std::string_view eFbxRecord::Text(std::size_t value) const {
    const auto* text = value < values.size() ? std::get_if<std::string_view>(&values[value]) : nullptr;
    return text == nullptr ? std::string_view() : *text;
}

std::int64_t eFbxRecord::Whole(std::size_t value) const {
    const auto* whole = value < values.size() ? std::get_if<std::int64_t>(&values[value]) : nullptr;
    return whole == nullptr ? 0 : *whole;
}

double eFbxRecord::Real(std::size_t value) const {
    const auto* real = value < values.size() ? std::get_if<double>(&values[value]) : nullptr;
    return real == nullptr ? static_cast<double>(Whole(value)) : *real;
}

eFbxArray eFbxRecord::Array() const {
    const auto found = std::ranges::find_if(
        values, [](const eFbxValue& value) { return std::holds_alternative<eFbxArray>(value); });
    return found == values.end() ? eFbxArray() : std::get<eFbxArray>(*found);
}

bool IsBinaryFbx(std::string_view bytes) {
    return bytes.starts_with(kFbxMagic);
}

bool IsTextFbx(std::string_view bytes) {
    const std::string_view head = bytes.substr(0, 4096);
    return head.starts_with("; FBX") || head.find("FBXHeaderExtension:") != std::string_view::npos;
}

std::optional<eFbxRecord> ReadFbxRecords(std::string_view bytes) {
    return IsBinaryFbx(bytes) ? ReadBinaryFbx(bytes) : ReadTextFbx(bytes);
}

}  // namespace standalone
