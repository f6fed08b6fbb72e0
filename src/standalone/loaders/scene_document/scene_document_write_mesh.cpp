#include "standalone/loaders/scene_document/scene_document_write_mesh.h"

#include <algorithm>

namespace standalone {
namespace {

template <class Number>
void WriteCorners(eJsonWriter& json, const Number* corners) {
    json.BeginList();
    for (int corner = 0; corner < 3; ++corner) {
        json.Value(corners[corner]);
    }
    json.EndList();
}

// One number where all faces have the same, else one per face; nothing where all have the standard one.
template <class Get>
void WritePerFace(eJsonWriter& json, std::string_view key, const std::vector<host::Face>& faces,
                  std::uint32_t standard, Get get) {
    const std::uint32_t first = faces.empty() ? standard : get(faces.front());
    if (std::all_of(faces.begin(), faces.end(), [&](const host::Face& face) { return get(face) == first; })) {
        json.MemberUnless(standard, key, first);
        return;
    }
    json.Key(key);
    json.BeginList();
    for (const host::Face& face : faces) {
        json.Value(get(face));
    }
    json.EndList();
}

void WriteHiddenFaces(eJsonWriter& json, const std::vector<host::Face>& faces) {
    std::vector<int> hidden;
    for (std::size_t face = 0; face < faces.size(); ++face) {
        if (faces[face].Hidden()) {
            hidden.push_back(static_cast<int>(face));
        }
    }
    json.MemberUnless(std::vector<int>{}, "hiddenFaces", hidden);
}

void WriteFaces(eJsonWriter& json, const std::vector<host::Face>& faces) {
    json.Key("faces");
    json.BeginList();
    for (const host::Face& face : faces) {
        WriteCorners(json, face.v);
    }
    json.EndList();
    WritePerFace(json, "smoothing", faces, 1, [](const host::Face& face) { return face.smGroup; });
    WritePerFace(json, "materialIds", faces, 0,
                 [](const host::Face& face) { return std::uint32_t{face.getMatID()}; });
    WriteHiddenFaces(json, faces);
}

void WriteMaps(eJsonWriter& json, const std::vector<host::MapChannel>& maps) {
    if (maps.empty()) {
        return;
    }
    json.Key("maps");
    json.BeginObject();
    for (const host::MapChannel& map : maps) {
        json.Key(std::to_string(map.channel));
        json.BeginObject();
        json.Member("vertices", map.verts);
        json.Key("faces");
        json.BeginList();
        for (const host::TVFace& face : map.faces) {
            WriteCorners(json, face.t);
        }
        json.EndList();
        json.EndObject();
    }
    json.EndObject();
}

void WriteNormals(eJsonWriter& json, const host::MeshNormalSpec& normals) {
    json.Key("normals");
    json.BeginObject();
    json.Member("vectors", normals.normals);
    json.Key("faces");
    json.BeginList();
    for (std::size_t corner = 0; corner + 2 < normals.faceNormals.size(); corner += 3) {
        WriteCorners(json, normals.faceNormals.data() + corner);
    }
    json.EndList();
    std::vector<int> explicitNormals;
    for (std::size_t normal = 0; normal < normals.explicitNormals.size(); ++normal) {
        if (normals.explicitNormals[normal]) {
            explicitNormals.push_back(static_cast<int>(normal));
        }
    }
    if (explicitNormals.size() != normals.normals.size()) {
        json.Member("explicit", explicitNormals);
    }
    json.EndObject();
}

void WriteVertexKeys(eJsonWriter& json, const std::vector<eVertexKey>& keys) {
    if (keys.empty()) {
        return;
    }
    json.Key("vertexKeys");
    json.BeginList();
    for (const eVertexKey& key : keys) {
        json.BeginObject();
        json.Member("frame", key.frame);
        json.Member("vertices", key.vertices);
        json.EndObject();
    }
    json.EndList();
}

}  // namespace

void WriteMesh(eJsonWriter& json, const eMeshObject& object) {
    json.Member("vertices", object.mesh.verts);
    WriteFaces(json, object.mesh.faces);
    WriteMaps(json, object.mesh.maps);
    if (object.mesh.specifiedNormals) {
        WriteNormals(json, *object.mesh.specifiedNormals);
    }
    WriteVertexKeys(json, object.vertexKeys);
}

}  // namespace standalone
