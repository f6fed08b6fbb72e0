#include "mesh/extract_mesh.h"

#include <cstddef>
#include <optional>
#include <string>

#include "base/ansi.h"
#include "base/format.h"
#include "base/user_message.h"
#include "export/export.h"
#include "mesh/corner_normal.h"
#include "mesh/face_material.h"
#include "mesh/face_skin.h"
#include "mesh/skin_switch.h"
#include "mesh/vertex_light.h"
#include "scene/find_skin.h"
#include "scene/master_scale.h"
#include "scene/node_properties.h"
#include "scene/triangle_mesh.h"

namespace {

using host::Matrix3;
using host::Point3;

// One reading of one node.
struct eReading {
    Export& run;
    host::INode& node;
    host::INode& root;  // whose space the mesh stands in
    eExportBone& bone;
    host::Modifier* skin;  // null without
    host::TimeValue time;
    int meshFrame;

    eExportMeshFrame& Frame() const { return bone.mesh.frames[static_cast<std::size_t>(meshFrame)]; }
    bool IsFirstFrame() const { return meshFrame == 0; }
    void Tell(const char* text) const {
        ShowError(run.host->GetMAXHWnd(), (format(text) % node.GetName()).Text());
    }
};

struct eReadingSpace {
    Matrix3 toBone;        // object points to the root's space; the root's own scale is taken out
    Matrix3 normalMatrix;  // the transposed inverse, for normals
    bool mirrored = false;

    // The host's corner that is stored as corner c.
    int HostCorner(int c) const { return mirrored ? 2 - c : c; }
};

// The host's command panel shows its modify mode while a modifier is switched, and what it showed before
// after.
class eModifyMode {
public:
    explicit eModifyMode(host::Interface& hostInterface)
        : host_(hostInterface), before_(hostInterface.GetCommandPanelTaskMode()) {
        constexpr int kModifyMode = 2;
        host_.SetCommandPanelTaskMode(kModifyMode);
    }
    ~eModifyMode() { host_.SetCommandPanelTaskMode(before_); }
    eModifyMode(const eModifyMode&) = delete;
    eModifyMode& operator=(const eModifyMode&) = delete;

private:
    host::Interface& host_;
    int before_;
};

host::INode& RootOf(host::INode& node, const eExportBone& bone, host::INode* commonTarget) {
    if (commonTarget != nullptr) {
        return *commonTarget;
    }
    const bool isInGroup = node.IsGroupMember() && !node.IsGroupHead();
    return isInGroup && bone.node != nullptr ? *bone.node : node;
}

// All nodes of one mesh are skinned, or none.
bool FitsRoot(const eReading& reading) {
    const bool rootIsSkinned = FindSkin(reading.root) != nullptr;
    if (reading.skin != nullptr && !rootIsSkinned) {
        ShowError(reading.run.host->GetMAXHWnd(), "Скиновый мэш в нескиновой группе!"_ansi);
        return false;
    }
    if (reading.skin == nullptr && rootIsSkinned) {
        reading.Tell(
            "Мэш '%s' без скина в скиновой группе!\nНеобходимо добавить ему скин с теми же костями."_ansi);
        return false;
    }
    return true;
}

eReadingSpace MakeSpace(const eReading& reading) {
    const Matrix3 objectTM = reading.node.GetObjTMAfterWSM(reading.time);
    eReadingSpace space;
    space.toBone = objectTM * Inverse(NoScale(reading.root.GetNodeTM(reading.time)));
    const Matrix3 inverse = Inverse(space.toBone);
    for (int i = 0; i < 3; ++i) {
        space.normalMatrix.SetRow(i, {inverse.GetRow(0)[i], inverse.GetRow(1)[i], inverse.GetRow(2)[i]});
    }
    space.mirrored = objectTM.Parity() != 0;
    return space;
}

void PrepareRootLights(const eReading& reading) {
    const Matrix3 boneMatrix = Inverse(NoScale(reading.root.GetObjTMAfterWSM(reading.time)));
    if (reading.IsFirstFrame()) {
        reading.bone.matrix = boneMatrix;
    }
    PrepareLights(reading.run, reading.root, boneMatrix);
}

// True if the mesh has a vertex alpha channel; nothing if the channel has a face that leaves its vertices.
std::optional<bool> HasVertexAlpha(const host::Mesh& mesh) {
    const auto count = static_cast<std::size_t>(mesh.getNumMapVerts(host::Mesh::kVertexAlphaChannel));
    if (count == 0) {
        return false;
    }
    const auto faces = mesh.mapFaces(host::Mesh::kVertexAlphaChannel);
    for (const host::TVFace& face : faces) {
        if (face.t[0] >= count || face.t[1] >= count || face.t[2] >= count) {
            return std::nullopt;
        }
    }
    return faces.size() == mesh.faces.size() ? std::optional(true) : std::nullopt;
}

void AppendVertices(const eReading& reading, const eReadingSpace& space, const host::Mesh& mesh) {
    const float scale = MasterScale(reading.run);
    std::vector<Point3>& positions = reading.Frame().positions;
    positions.reserve(positions.size() + mesh.verts.size());
    for (const Point3& vertex : mesh.verts) {
        positions.push_back((vertex * space.toBone) * scale);
    }
}

// The bones of the skin, from the root of the mesh alone. False if there are too many.
bool FillSkinBones(const eReading& reading) {
    const host::ISkin* skin = reading.skin->GetInterface(host::Modifier::kSkinInterface);
    std::vector<host::INode*>& bones = reading.bone.mesh.skinBones;
    for (int i = 0; skin != nullptr && i < skin->GetNumBones(); ++i) {
        if (bones.size() == kBonesPerSkin) {
            reading.Tell("Слишком много костей для скиннинга мэша '%s'"_ansi);
            return false;
        }
        bones.push_back(skin->GetBone(i));
    }
    return true;
}

const host::ISkinContextData* SkinContext(const eReading& reading) {
    host::ISkin* skin =
        reading.skin != nullptr ? reading.skin->GetInterface(host::Modifier::kSkinInterface) : nullptr;
    return skin != nullptr ? skin->GetContextInterface(reading.node) : nullptr;
}

// The context in which a blend map is evaluated for a corner; one for the process.
SContext& BlendContext() {
    static const eSceneLights noLights;
    static SContext context(noLights);
    return context;
}

// Everything that the faces of one reading ask.
class eFaceReader {
public:
    eFaceReader(const eReading& reading, const eReadingSpace& space, const host::Mesh& mesh,
                bool hasVertexAlpha, std::size_t base)
        : reading_(reading),
          space_(space),
          mesh_(mesh),
          base_(static_cast<std::uint32_t>(base)),
          frame_(reading.Frame()),
          materials_(reading.run, reading.node.GetMtl(), mesh),
          box_(mesh),
          light_(reading.run, reading.root, reading.time),
          colorVerts_(mesh.vertCol()),
          colorFaces_(mesh.vcFace()) {
        if (hasVertexAlpha) {
            alphaVerts_ = mesh.mapVerts(host::Mesh::kVertexAlphaChannel);
            alphaFaces_ = mesh.mapFaces(host::Mesh::kVertexAlphaChannel);
        }
        if (const host::ISkinContextData* skin = SkinContext(reading);
            skin != nullptr && reading.IsFirstFrame()) {
            skin_.emplace(*skin);
        }
        ReserveFaces();
    }

    void ReadFace(int index) {
        const host::Face& face = mesh_.faces[static_cast<std::size_t>(index)];
        const eFaceMaterial& material = materials_.Of(face);
        if (reading_.IsFirstFrame()) {
            StoreFace(face, material);
        }
        ReadNormals(index);
        frame_.mapCoords0.push_back(material.first.Of(index, space_.mirrored, box_));
        frame_.mapCoords1.push_back(material.second.Of(index, space_.mirrored, box_));
        ReadColors(index, material);
    }

private:
    void ReserveFaces() {
        const std::size_t count = frame_.faceNormals.size() + mesh_.faces.size();
        frame_.faceNormals.reserve(count);
        frame_.cornerNormals.reserve(count);
        frame_.mapCoords0.reserve(count);
        frame_.mapCoords1.reserve(count);
        frame_.colors.reserve(count);
    }

    void StoreFace(const host::Face& face, const eFaceMaterial& material) {
        eExportMesh& mesh = reading_.bone.mesh;
        host::Face stored = face;
        std::uint32_t vertices[3];
        for (int c = 0; c < 3; ++c) {
            vertices[c] = face.v[space_.HostCorner(c)];
            stored.v[c] = vertices[c] + base_;
        }
        mesh.faceNodes.push_back(&reading_.node);
        mesh.faces.push_back(stored);
        mesh.faceMaterials.emplace_back(material.leaf, face.getMatID());
        if (reading_.skin != nullptr) {
            mesh.faceSkins.push_back(skin_ ? skin_->ReadFaceSkin(vertices, reading_.bone.bonesPerVertex)
                                           : eExportFaceSkin{});
        }
    }

    void ReadNormals(int index) {
        eCorners<Point3> normals;
        for (int c = 0; c < 3; ++c) {
            const Point3 normal = GetCornerNormal(mesh_, index, space_.HostCorner(c));
            normals[static_cast<std::size_t>(c)] =
                host::Normalize(VectorTransform(space_.normalMatrix, normal));
        }
        frame_.cornerNormals.push_back(normals);
        const Point3& faceNormal = mesh_.faceNormals[static_cast<std::size_t>(index)];
        frame_.faceNormals.push_back(host::Normalize(VectorTransform(space_.normalMatrix, faceNormal)));
    }

    void ReadColors(int index, const eFaceMaterial& material) {
        const auto face = static_cast<std::size_t>(index);
        eCorners<Point3> blend{};
        if (material.maps.blend != nullptr) {
            blend = material.blend.Of(index, space_.mirrored, box_);
        }
        eCorners<host::AColor> colors;
        for (int c = 0; c < 3; ++c) {
            const auto corner = static_cast<std::size_t>(c);
            const int hostCorner = space_.HostCorner(c);
            const Point3& position = mesh_.verts[mesh_.faces[face].v[hostCorner]];
            const host::Color light = light_.At(position, frame_.cornerNormals.back()[corner]);
            const host::Color tint = TintOf(face, hostCorner, material);
            colors[corner] = {tint.r * light.r, tint.g * light.g, tint.b * light.b,
                              AlphaOf(face, hostCorner, material, blend[corner])};
        }
        frame_.colors.push_back(colors);
    }

    host::Color VertexColor(std::size_t face, int hostCorner) const {
        const Point3& color = colorVerts_[colorFaces_[face].t[hostCorner]];
        return {color.x, color.y, color.z};
    }

    host::Color TintOf(std::size_t face, int hostCorner, const eFaceMaterial& material) const {
        const bool isTinted = !colorVerts_.empty() && !material.maps.vertexBlended;
        return isTinted ? VertexColor(face, hostCorner) : host::Color{1, 1, 1};
    }

    float AlphaOf(std::size_t face, int hostCorner, const eFaceMaterial& material,
                  const Point3& blend) const {
        if (material.maps.blend != nullptr) {
            return 1 - BlendOf(face, hostCorner, material, blend);
        }
        float alpha = material.opacity;
        if (!alphaVerts_.empty()) {
            alpha *= alphaVerts_[alphaFaces_[face].t[hostCorner]].x;
        }
        return alpha;
    }

    // The amount of the second layer. The coordinates were turned over for the file, the map wants them back.
    float BlendOf(std::size_t face, int hostCorner, const eFaceMaterial& material, const Point3& uvw) const {
        if (material.maps.vertexBlended) {
            return colorVerts_.empty() ? 0.0F : VertexColor(face, hostCorner).r;
        }
        SContext& context = BlendContext();
        context.time = reading_.time;
        context.ambientLight = {1, 1, 1};
        context.duv = {0.01F, 0.01F};
        context.uv = {uvw.x, 1 - uvw.y};
        context.point = {2 * uvw.x - 1, 2 * (1 - uvw.y) - 1, 2 * uvw.z - 1};
        return material.maps.blend->EvalMono(context);
    }

    const eReading& reading_;
    const eReadingSpace& space_;
    const host::Mesh& mesh_;
    std::uint32_t base_;  // what the node's own vertex numbers become
    eExportMeshFrame& frame_;
    eFaceMaterials materials_;
    eObjectBox box_;
    eVertexLight light_;
    std::span<const Point3> colorVerts_;
    std::span<const host::TVFace> colorFaces_;
    std::span<const Point3> alphaVerts_;
    std::span<const host::TVFace> alphaFaces_;
    std::optional<eFaceSkinReader> skin_;
};

void ReadFaces(const eReading& reading, const eReadingSpace& space, const host::Mesh& mesh,
               bool hasVertexAlpha, std::size_t base) {
    eFaceReader reader(reading, space, mesh, hasVertexAlpha, base);
    for (int i = 0; i < mesh.getNumFaces(); ++i) {
        if (!mesh.faces[static_cast<std::size_t>(i)].Hidden()) {
            reader.ReadFace(i);
        }
    }
}

void ReadTriangles(const eReading& reading) {
    const eTriangleMesh triangles(reading.node, reading.time);
    if (!triangles.IsValid()) {
        return;
    }
    host::Mesh& mesh = triangles.Mesh();
    mesh.buildNormals();
    mesh.buildRenderNormals();
    const std::optional<bool> hasVertexAlpha = HasVertexAlpha(mesh);
    if (!hasVertexAlpha) {
        if (reading.IsFirstFrame()) {
            reading.Tell("Испорченный канал вертескной альфы в '%s'"_ansi);
        }
        return;
    }
    const eReadingSpace space = MakeSpace(reading);
    PrepareRootLights(reading);
    const std::size_t base = reading.Frame().positions.size();
    AppendVertices(reading, space, mesh);
    const bool readsBones =
        reading.skin != nullptr && &reading.node == &reading.root && reading.IsFirstFrame();
    if (!readsBones || FillSkinBones(reading)) {
        ReadFaces(reading, space, mesh, *hasVertexAlpha, base);
    }
}

// A node can feed only the frames that the mesh of its target has.
bool HasFrame(const eReading& reading) {
    const std::size_t frames = reading.bone.mesh.frames.size();
    if (static_cast<std::size_t>(reading.meshFrame) < frames) {
        return true;
    }
    if (static_cast<std::size_t>(reading.meshFrame) == frames || frames == 0) {
        reading.Tell(
            "Мэш '%s' анимирован по кадрам, а общий мэш, в который он входит, нет.\n"
            "Необходимо указать 'CommonMesh' без имени у общего мэша."_ansi);
    }
    return false;
}

}  // namespace

void ExtractMesh(Export& run, host::INode& node, host::TimeValue time, host::INode* commonTarget) {
    const int index = FindBoneIndex(node, commonTarget);
    if (index < 0 || static_cast<std::size_t>(index) >= run.bones.size() ||
        run.bones[static_cast<std::size_t>(index)].hasMesh == 0) {
        return;
    }
    eExportBone& bone = run.bones[static_cast<std::size_t>(index)];
    const eReading reading{.run = run,
                           .node = node,
                           .root = RootOf(node, bone, commonTarget),
                           .bone = bone,
                           .skin = FindSkin(node),
                           .time = time,
                           .meshFrame = run.meshFrame};
    if (host::Mtl* material = node.GetMtl()) {
        host::Interval valid = host::kForever;
        material->Update(time, valid);
    }
    if (!HasFrame(reading) || !FitsRoot(reading)) {
        return;
    }
    const eModifyMode modifyMode(*run.host);
    const bool staysDeformed = reading.skin == nullptr || HasUserProp(node, "OldSkin");
    const eSkinSwitch restPose(staysDeformed ? nullptr : reading.skin);
    ReadTriangles(reading);
}
