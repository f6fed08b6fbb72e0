#include "material/material_file.h"

#include <string>
#include <vector>

#include "io/sdl/sdl_writer.h"
#include "material/natural_order.h"

namespace {

using xIo::xSdl::eWriter;

bool WriteTextureKey(eWriter& writer, const char* key, const std::string& texture) {
    if (!texture.empty()) {
        writer.BlockBegin().Word(key).String(texture).BlockEndLine();
    }
    return !texture.empty();
}

void WriteMaterial(eWriter& writer, const eExportMaterial& material) {
    writer.BlockBegin().Word(material.type).String(material.name).EndLine();
    WriteTextureKey(writer, "diffuse", material.diffuse);
    WriteTextureKey(writer, "diffuse1", material.diffuse1);
    WriteTextureKey(writer, "bump", material.bump);
    if (WriteTextureKey(writer, "specular", material.specular)) {
        const auto color = static_cast<std::int32_t>(material.color);
        writer.BlockBegin().Word("color").Hexadecimal().Integer(color).Decimal().BlockEndLine();
    }
    WriteTextureKey(writer, "envmap", material.envmap);
    if (!WriteTextureKey(writer, "mask", material.mask) && material.type == "envmap") {
        writer.BlockBegin().Word("amount").Real(material.amount).BlockEndLine();
    }
    writer.BlockBegin().Word("blend").Word(material.blend).BlockEndLine();
    if (material.modulate2x) {
        writer.BlockBegin().Word("modulate2x").BlockEndLine();
    }
    writer.BlockEndLine();
}

}  // namespace

void WriteMaterialFile(eExportResourceSet& set, const eName& folder) {
    if (set.materials.empty()) {
        return;
    }
    std::vector<std::string> names;
    names.reserve(set.materials.size());
    for (const eExportMaterial& material : set.materials) {
        names.push_back(material.name);
    }
    eWriter writer;
    writer.OpenFile(folder / ".material");
    for (const std::size_t index : NaturalOrder(names)) {
        WriteMaterial(writer, set.materials[index]);
    }
    writer.Close();
}
