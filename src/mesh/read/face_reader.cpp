#include "mesh/read/face_reader.h"

#include "mesh/read/grow.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "run/tell.h"

namespace {

// Null for a node without skin.
const host::ISkin* SkinOf(const eNodeReading& reading) {
    return reading.skin != nullptr ? reading.skin->GetInterface(host::Modifier::kSkinInterface) : nullptr;
}

}  // namespace

eFaceReader::eFaceReader(const eNodeReading& ownReading, const eReadingSpace& ownSpace, host::Mesh& ownMesh,
                         bool hasVertexAlpha, std::size_t ownBase)
    : reading(ownReading),
      space(ownSpace),
      mesh(ownMesh),
      base(static_cast<std::uint32_t>(ownBase)),
      frame(reading.Frame()),
      materials(reading.run, reading.node.GetMtl(), mesh),
      box(mesh),
      colors(reading, space, mesh, hasVertexAlpha),
      normals(ownMesh, space),
      firstMaterial(static_cast<std::uint32_t>(reading.bone.mesh.materials.size())) {
    const host::ISkin* ownSkin = reading.IsFirstFrame() ? SkinOf(reading) : nullptr;
    // A node that its skin does not act on has no weights.
    const host::ISkinContextData* weights =
        ownSkin != nullptr ? ownSkin->GetContextInterface(reading.node) : nullptr;
    if (weights != nullptr) {
        skin.emplace(*weights, NumbersInTable(*ownSkin, reading.bone.mesh.skinBones), mesh.verts.size());
    }
}

inline void eFaceReader::StoreFace(const host::Face& face, const eFaceMaterial& material) {
    eExportMesh& target = reading.bone.mesh;
    const auto stored = [&](int corner) { return face.v[space.HostCorner(corner)] + base; };
    const std::uint32_t number = firstMaterial + material.number;
    target.faces.push_back({{stored(0), stored(1), stored(2)}, face.smGroup, number});
    if (number == target.materials.size()) {
        target.materials.emplace_back(material.leaf, face.getMatID());
    }
}

inline void eFaceReader::ReadFace(std::size_t index) {
    const host::Face& face = mesh.faces[index];
    const eFaceMaterial& material = materials.Of(face);
    if (reading.IsFirstFrame()) {
        StoreFace(face, material);
    }
    frame.cornerNormals.push_back(normals.Of(index));
    frame.mapCoords0.push_back(material.first.FlatOf(index, space.mirrored, box));
    if (material.second.HasMap()) {
        frame.mapCoords1.Add(material.second.FlatOf(index, space.mirrored, box));
    } else {
        frame.mapCoords1.AddUsual();
    }
    frame.colors.Add(colors.Of(index, material, frame.cornerNormals.back(), box));
}

void eFaceReader::ReadFaces() {
    Reserve();
    const std::size_t before = reading.bone.mesh.faces.size();
    for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
        if (!mesh.faces[i].Hidden()) {
            ReadFace(i);
        }
    }
    if (reading.bone.mesh.faces.size() != before) {
        reading.bone.mesh.faceNodes.push_back(&reading.node);
        ReadSkin();
    }
    if (reading.IsFirstFrame()) {
        materials.TellWorldMaps(reading.node);
    }
    TellBonesOutsideTable();
}

void eFaceReader::Reserve() {
    const std::size_t count = mesh.faces.size();
    ReserveMore(frame.cornerNormals, count);
    ReserveMore(frame.mapCoords0, count);
    frame.mapCoords1.Reserve(frame.mapCoords1.size() + count);
    frame.colors.Reserve(frame.colors.size() + count);
    if (reading.IsFirstFrame()) {
        ReserveMore(reading.bone.mesh.faces, count);
    }
}

// Vertices without a face that is seen, and those of nodes without skin, keep records without bones.
void eFaceReader::ReadSkin() {
    if (reading.skin == nullptr) {
        return;
    }
    std::vector<eExportVertexSkin>& skins = reading.bone.mesh.vertexSkins;
    skins.resize(frame.positions.size());
    for (const host::Face& face : mesh.faces) {
        if (skin && !face.Hidden()) {
            for (const std::uint32_t vertex : face.v) {
                skin->Read(vertex, skins[vertex + base], reading.bone.bonesPerVertex);
            }
        }
    }
}

void eFaceReader::TellBonesOutsideTable() const {
    if (!skin || skin->LeftOutBones().empty()) {
        return;
    }
    Tell(reading.run, eMessageId::SkinBonesOutsideRoot, {.node = host::PathOf(reading.node)},
         reading.node.GetName(), reading.root.GetName(), NamesOfLeftOutBones(), reading.root.GetName());
}

eBilingual eFaceReader::NamesOfLeftOutBones() const {
    const host::ISkin& ownSkin = *SkinOf(reading);
    eBilingual names;
    for (const int number : skin->LeftOutBones()) {
        const bool isOfSkin = number >= 0 && number < ownSkin.GetNumBones();
        const host::INode* bone = isOfSkin ? ownSkin.GetBone(number) : nullptr;
        const eBilingual name =
            bone != nullptr ? FillBoth("'%s'", "'%s'", bone->GetName()) : Words(ePhrase::BoneNumber, number);
        names.AddToList(name);
    }
    return names;
}
