#include "mesh/read/face_reader.h"

#include "mesh/read/corner_normal.h"
#include "mesh/read/grow.h"
#include "mesh/read/unit_normal.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "run/tell.h"

namespace {

// Null for a node without skin.
const host::ISkin* SkinOf(const eNodeReading& reading) {
    return reading.skin != nullptr ? reading.skin->GetInterface(host::Modifier::kSkinInterface) : nullptr;
}

// Once for each normal, as many corners share it.
std::vector<host::Point3> ArtistNormals(const eReadingSpace& space, const host::Mesh& mesh) {
    std::vector<host::Point3> normals;
    if (const host::MeshNormalSpec* specified = mesh.GetSpecifiedNormals()) {
        normals.reserve(specified->normals.size());
        for (const host::Point3& normal : specified->normals) {
            normals.push_back(UnitNormal(VectorTransform(space.normalMatrix, normal), {}));
        }
    }
    return normals;
}

}  // namespace

eFaceReader::eFaceReader(const eNodeReading& ownReading, const eReadingSpace& ownSpace,
                         const host::Mesh& ownMesh, bool hasVertexAlpha, std::size_t ownBase)
    : reading(ownReading),
      space(ownSpace),
      mesh(ownMesh),
      base(static_cast<std::uint32_t>(ownBase)),
      frame(reading.Frame()),
      materials(reading.run, reading.node.GetMtl(), mesh),
      box(mesh),
      colors(reading, space, mesh, hasVertexAlpha),
      artistNormals(ArtistNormals(space, mesh)) {
    const host::ISkin* ownSkin = reading.IsFirstFrame() ? SkinOf(reading) : nullptr;
    // A node that its skin does not act on has no weights.
    const host::ISkinContextData* weights =
        ownSkin != nullptr ? ownSkin->GetContextInterface(reading.node) : nullptr;
    if (weights != nullptr) {
        skin.emplace(*weights, NumbersInTable(*ownSkin, reading.bone.mesh.skinBones));
    }
}

void eFaceReader::ReadFaces() {
    Reserve();
    for (int i = 0; i < mesh.getNumFaces(); ++i) {
        if (!mesh.faces[static_cast<std::size_t>(i)].Hidden()) {
            ReadFace(i);
        }
    }
    if (reading.IsFirstFrame()) {
        materials.TellWorldMaps(reading.node);
    }
    TellBonesOutsideTable();
}

void eFaceReader::Reserve() {
    const std::size_t count = mesh.faces.size();
    ReserveMore(frame.faceNormals, count);
    ReserveMore(frame.cornerNormals, count);
    ReserveMore(frame.mapCoords0, count);
    ReserveMore(frame.mapCoords1, count);
    ReserveMore(frame.colors, count);
    if (reading.IsFirstFrame()) {
        eExportMesh& target = reading.bone.mesh;
        ReserveMore(target.faceNodes, count);
        ReserveMore(target.faces, count);
        ReserveMore(target.faceMaterials, count);
        ReserveMore(target.faceSkins, skin ? count : 0);
    }
}

void eFaceReader::ReadFace(int index) {
    const host::Face& face = mesh.faces[static_cast<std::size_t>(index)];
    const eFaceMaterial& material = materials.Of(face);
    if (reading.IsFirstFrame()) {
        StoreFace(face, material);
    }
    const host::Point3 faceNormal = FaceNormal(index);
    const eCorners<host::Point3> normals = CornerNormals(index, faceNormal);
    frame.cornerNormals.push_back(normals);
    frame.faceNormals.push_back(faceNormal);
    frame.mapCoords0.push_back(material.first.Of(index, space.mirrored, box));
    frame.mapCoords1.push_back(material.second.Of(index, space.mirrored, box));
    frame.colors.push_back(colors.Of(index, material, normals, box));
}

void eFaceReader::StoreFace(const host::Face& face, const eFaceMaterial& material) {
    eExportMesh& target = reading.bone.mesh;
    host::Face stored = face;
    std::uint32_t vertices[3];
    for (int c = 0; c < 3; ++c) {
        vertices[c] = face.v[space.HostCorner(c)];
        stored.v[c] = vertices[c] + base;
    }
    target.faceNodes.push_back(&reading.node);
    target.faces.push_back(stored);
    target.faceMaterials.emplace_back(material.leaf, face.getMatID());
    if (reading.skin != nullptr) {
        StoreSkin(vertices);
    }
}

// The record of the face just stored; faces that came before it from nodes without skin get records without
// bones, so that the two lists run side by side.
void eFaceReader::StoreSkin(const std::uint32_t (&vertices)[3]) {
    eExportMesh& target = reading.bone.mesh;
    target.faceSkins.resize(target.faces.size() - 1, eExportFaceSkin::WithoutBones());
    target.faceSkins.push_back(skin ? skin->ReadFaceSkin(vertices, reading.bone.bonesPerVertex)
                                    : eExportFaceSkin::WithoutBones());
}

// A face without area is seen by nobody; it is lit from above.
host::Point3 eFaceReader::FaceNormal(int index) const {
    const host::Point3& normal = mesh.faceNormals[static_cast<std::size_t>(index)];
    return UnitNormal(VectorTransform(space.normalMatrix, normal), {0, 0, 1});
}

eCorners<host::Point3> eFaceReader::CornerNormals(int index, const host::Point3& faceNormal) const {
    eCorners<host::Point3> normals;
    for (int c = 0; c < 3; ++c) {
        normals[static_cast<std::size_t>(c)] = CornerNormal(index, space.HostCorner(c), faceNormal);
    }
    return normals;
}

host::Point3 eFaceReader::CornerNormal(int index, int corner, const host::Point3& faceNormal) const {
    if (const int number = ArtistNormal(mesh, index, corner); number >= 0) {
        const host::Point3& normal = artistNormals[static_cast<std::size_t>(number)];
        return normal != host::Point3{} ? normal : faceNormal;
    }
    return UnitNormal(VectorTransform(space.normalMatrix, GetCornerNormal(mesh, index, corner)), faceNormal);
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
