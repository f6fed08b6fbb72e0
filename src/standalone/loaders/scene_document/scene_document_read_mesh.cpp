#include "standalone/loaders/scene_document/scene_document_read_mesh.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <type_traits>

#include "standalone/loaders/scene_document/scene_document_words.h"
#include "standalone/loaders/scene_document/sort_by_frame.h"

namespace standalone {
namespace {

// The three numbers of a face, each into a table of `count` entries; -1 for none only where the numbers have
// a sign.
template <class Number>
void ReadCorners(eJsonReader& json, eJsonIndex value, std::size_t count, Number (&numbers)[3]) {
    std::size_t corner = 0;
    for (const eJsonIndex element : json.Elements(value, 3)) {
        std::int64_t number = 0;
        if (json.ReadIndex(element, count, number, std::is_signed_v<Number>)) {
            numbers[corner] = static_cast<Number>(number);
        }
        ++corner;
    }
}

void ReadFaces(eJsonReader& json, eJsonIndex list, host::Mesh& mesh) {
    mesh.faces.reserve(json.Tree().Count(list));
    for (const eJsonIndex element : json.Elements(list)) {
        host::Face& face = mesh.faces.emplace_back();
        face.smGroup = 1;
        ReadCorners(json, element, mesh.verts.size(), face.v);
    }
}

// A number for all faces, or a list of one per face; each goes to `set` with its face.
template <class Set>
void ReadPerFace(eJsonReader& json, eJsonIndex value, std::int64_t highest, host::Mesh& mesh, Set set) {
    std::int64_t number = 0;
    if (!json.Tree().Is(value, eJsonKind::Array)) {
        if (json.ReadWithin(value, 0, highest, number)) {
            std::for_each(mesh.faces.begin(), mesh.faces.end(), [&](host::Face& face) { set(face, number); });
        }
        return;
    }
    auto face = mesh.faces.begin();
    for (const eJsonIndex element : json.Elements(value, mesh.faces.size())) {
        if (json.ReadWithin(element, 0, highest, number)) {
            set(*face, number);
        }
        ++face;
    }
}

void ReadHiddenFaces(eJsonReader& json, eJsonIndex list, host::Mesh& mesh) {
    for (const eJsonIndex element : json.Elements(list)) {
        std::int64_t face = 0;
        if (json.ReadIndex(element, mesh.faces.size(), face)) {
            mesh.faces[static_cast<std::size_t>(face)].flags |= host::Face::kHidden;
        }
    }
}

// A channel number in its one spelling, so that no channel can stand twice.
bool ReadChannelNumber(eJsonReader& json, eJsonIndex member, int& channel) {
    const std::string_view key = json.Tree().Key(member);
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), channel);
    if (error == std::errc() && std::to_string(channel) == key && channel >= kFirstMapChannel &&
        channel <= kLastMapChannel) {
        return true;
    }
    json.Report(member, eMessageId::DocumentMapChannel, kFirstMapChannel, kLastMapChannel);
    return false;
}

void ReadChannel(eJsonReader& json, eJsonIndex member, std::size_t faceCount, host::MapChannel& map) {
    eMembers members(json, member);
    members.Required("vertices", map.verts);
    // The exporter itself refuses a vertex alpha channel that points beyond its table.
    const std::size_t count = map.channel == host::Mesh::kVertexAlphaChannel
                                  ? std::size_t{std::numeric_limits<std::uint32_t>::max()}
                                  : map.verts.size();
    for (const eJsonIndex element : json.Elements(members.Demand("faces"), faceCount)) {
        ReadCorners(json, element, count, map.faces.emplace_back().t);
    }
}

void ReadMaps(eJsonReader& json, eJsonIndex value, host::Mesh& mesh) {
    for (const eJsonIndex member : json.Entries(value)) {
        host::MapChannel map;
        if (ReadChannelNumber(json, member, map.channel)) {
            ReadChannel(json, member, mesh.faces.size(), map);
            mesh.maps.push_back(std::move(map));
        }
    }
}

void ReadExplicitNormals(eJsonReader& json, eJsonIndex list, host::MeshNormalSpec& normals) {
    normals.explicitNormals.assign(normals.normals.size(), false);
    for (const eJsonIndex element : json.Elements(list)) {
        std::int64_t normal = 0;
        if (json.ReadIndex(element, normals.normals.size(), normal)) {
            normals.explicitNormals[static_cast<std::size_t>(normal)] = true;
        }
    }
}

void ReadNormals(eJsonReader& json, eJsonIndex value, std::size_t faceCount, host::MeshNormalSpec& normals) {
    eMembers members(json, value);
    members.Required("vectors", normals.normals);
    normals.explicitNormals.assign(normals.normals.size(), true);
    if (const eJsonIndex list = members.Find("explicit"); list != kNoJson) {
        ReadExplicitNormals(json, list, normals);
    }
    for (const eJsonIndex element : json.Elements(members.Demand("faces"), faceCount)) {
        std::int32_t corners[3] = {-1, -1, -1};
        ReadCorners(json, element, normals.normals.size(), corners);
        normals.faceNormals.insert(normals.faceNormals.end(), corners, corners + 3);
    }
}

void ReadVertexKeys(eJsonReader& json, eJsonIndex list, eMeshObject& object) {
    for (const eJsonIndex element : json.Elements(list)) {
        eVertexKey& key = object.vertexKeys.emplace_back();
        eMembers members(json, element);
        members.Required("frame", key.frame);
        const eJsonIndex vertices = members.Demand("vertices");
        if (vertices != kNoJson && json.ExpectCount(vertices, object.mesh.verts.size())) {
            json.Read(vertices, key.vertices);
        }
    }
    SortByFrame(object.vertexKeys);
}

void ReadFaceAttributes(eJsonReader& json, eMembers& members, host::Mesh& mesh) {
    if (const eJsonIndex smoothing = members.Find("smoothing"); smoothing != kNoJson) {
        ReadPerFace(
            json, smoothing, std::numeric_limits<std::uint32_t>::max(), mesh,
            [](host::Face& face, std::int64_t mask) { face.smGroup = static_cast<std::uint32_t>(mask); });
    }
    if (const eJsonIndex ids = members.Find("materialIds"); ids != kNoJson) {
        ReadPerFace(json, ids, std::numeric_limits<std::uint16_t>::max(), mesh,
                    [](host::Face& face, std::int64_t id) { face.setMatID(static_cast<std::uint16_t>(id)); });
    }
    if (const eJsonIndex hidden = members.Find("hiddenFaces"); hidden != kNoJson) {
        ReadHiddenFaces(json, hidden, mesh);
    }
}

}  // namespace

void ReadMesh(eJsonReader& json, eMembers& members, eMeshObject& object) {
    host::Mesh& mesh = object.mesh;
    members.Required("vertices", mesh.verts);
    if (const eJsonIndex faces = members.Demand("faces"); faces != kNoJson) {
        ReadFaces(json, faces, mesh);
    }
    ReadFaceAttributes(json, members, mesh);
    if (const eJsonIndex maps = members.Find("maps"); maps != kNoJson) {
        ReadMaps(json, maps, mesh);
    }
    if (const eJsonIndex normals = members.Find("normals"); normals != kNoJson) {
        ReadNormals(json, normals, mesh.faces.size(), mesh.specifiedNormals.emplace());
    }
    if (const eJsonIndex keys = members.Find("vertexKeys"); keys != kNoJson) {
        ReadVertexKeys(json, keys, object);
    }
}

}  // namespace standalone
