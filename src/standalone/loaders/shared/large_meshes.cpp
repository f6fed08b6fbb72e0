#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "base/ansi.h"
#include "standalone/data/node_order.h"
#include "standalone/data/node_path.h"
#include "standalone/data/property_reader.h"
#include "standalone/loaders/shared/face_subset.h"
#include "standalone/loaders/shared/fit_meshes.h"
#include "standalone/loaders/shared/mesh_properties.h"
#include "standalone/loaders/shared/unique_names.h"

namespace standalone {
namespace {

using eFaces = std::vector<std::uint32_t>;

constexpr std::size_t kMostVertices = 65534;
constexpr std::size_t kMostTriangles = 65535;

// Appends what a corner is welded by: corners with equal bytes become one vertex.
void AppendCorner(const host::Mesh& mesh, std::uint32_t face, std::size_t corner,
                  std::vector<float>& values) {
    const auto append = [&](const host::Point3& point) {
        values.insert(values.end(), {point.x + 0.0F, point.y + 0.0F, point.z + 0.0F});
    };
    append(mesh.verts[mesh.faces[face].v[corner]]);
    for (const host::MapChannel& channel : mesh.maps) {
        append(channel.verts[channel.faces[face].t[corner]]);
    }
    if (mesh.specifiedNormals) {
        const std::int32_t normal = mesh.specifiedNormals->faceNormals[std::size_t{3} * face + corner];
        append(normal < 0 ? host::Point3{}
                          : mesh.specifiedNormals->normals[static_cast<std::size_t>(normal)]);
    }
}

// Corners are numbered through: three of a face.
bool HaveOneVertex(const host::Mesh& mesh, std::uint32_t a, std::uint32_t b) {
    return std::ranges::all_of(mesh.maps,
                               [&](const host::MapChannel& channel) {
                                   return channel.faces[a / 3].t[a % 3] == channel.faces[b / 3].t[b % 3];
                               }) &&
           (!mesh.specifiedNormals ||
            mesh.specifiedNormals->faceNormals[a] == mesh.specifiedNormals->faceNormals[b]);
}

// Visits the corner that is met first at a vertex, and those there that have other numbers.
template <class Visit>
void ForEachOtherCorner(const host::Mesh& mesh, const eFaces& faces, Visit visit) {
    constexpr std::uint32_t kNone = 0xFFFFFFFF;
    std::vector<std::uint32_t> first(mesh.verts.size(), kNone);
    for (const std::uint32_t face : faces) {
        for (std::uint32_t corner = 3 * face; corner < 3 * face + 3; ++corner) {
            std::uint32_t& known = first[mesh.faces[face].v[corner % 3]];
            if (known == kNone || !HaveOneVertex(mesh, known, corner)) {
                visit(face, corner % 3);
            }
            known = known == kNone ? corner : known;
        }
    }
}

std::size_t WeldedVertices(const host::Mesh& mesh, const eFaces& faces) {
    std::vector<float> values;
    ForEachOtherCorner(mesh, faces, [&](std::uint32_t face, std::uint32_t corner) {
        AppendCorner(mesh, face, corner, values);
    });
    const std::size_t width = 3 * (1 + mesh.maps.size() + (mesh.specifiedNormals ? 1 : 0));
    std::unordered_set<std::string_view> known(values.size() / width);
    for (std::size_t corner = 0; corner < values.size(); corner += width) {
        known.emplace(reinterpret_cast<const char*>(values.data() + corner), width * sizeof(float));
    }
    return known.size();
}

// At least as many as WeldedVertices, by the numbers alone, and most often the same.
std::size_t MostWeldedVertices(const host::Mesh& mesh, const eFaces& faces) {
    std::size_t count = 0;
    ForEachOtherCorner(mesh, faces, [&](std::uint32_t, std::uint32_t) { ++count; });
    return count;
}

// Where all tables number their corners as the mesh does, its vertices are as many as can be.
bool AreNumberedAlike(const host::Mesh& mesh) {
    const std::size_t count = mesh.faces.size();
    const auto isAlike = [&](std::size_t corners, auto numbersOf) {
        bool alike = corners == 3 * count;
        for (std::size_t face = 0; face < count && alike; ++face) {
            alike = std::memcmp(numbersOf(face), mesh.faces[face].v, sizeof host::Face::v) == 0;
        }
        return alike;
    };
    const auto isMapAlike = [&](const host::MapChannel& map) {
        return isAlike(3 * map.faces.size(), [&](std::size_t face) { return map.faces[face].t; });
    };
    const auto areNormalsAlike = [&](const std::vector<std::int32_t>& normals) {
        return isAlike(normals.size(), [&](std::size_t face) { return &normals[3 * face]; });
    };
    return std::ranges::all_of(mesh.maps, isMapAlike) &&
           (!mesh.specifiedNormals || areNormalsAlike(mesh.specifiedNormals->faceNormals));
}

// At the first look, which is enough for most meshes.
bool SurelyFits(const host::Mesh& mesh) {
    return mesh.faces.size() <= kMostTriangles &&
           (3 * mesh.faces.size() <= kMostVertices ||
            (mesh.verts.size() <= kMostVertices && AreNumberedAlike(mesh)));
}

bool Fits(const host::Mesh& mesh, const eFaces& faces) {
    return faces.size() <= kMostTriangles &&
           (3 * faces.size() <= kMostVertices || MostWeldedVertices(mesh, faces) <= kMostVertices ||
            WeldedVertices(mesh, faces) <= kMostVertices);
}

host::Point3 Middle(const host::Mesh& mesh, std::uint32_t face) {
    const auto& v = mesh.faces[face].v;
    return (mesh.verts[v[0]] + mesh.verts[v[1]] + mesh.verts[v[2]]) * (1.0F / 3);
}

int LongestAxis(const host::Mesh& mesh, const eFaces& faces) {
    host::Box3 box;
    for (const std::uint32_t face : faces) {
        box += Middle(mesh, face);
    }
    const host::Point3 size = box.Width();
    return size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
}

// Across the longest axis, by the middles of the faces.
std::pair<eFaces, eFaces> HalvesOf(const host::Mesh& mesh, const eFaces& faces) {
    const int axis = LongestAxis(mesh, faces);
    std::vector<std::pair<float, std::uint32_t>> places;
    places.reserve(faces.size());
    for (const std::uint32_t face : faces) {
        places.emplace_back(Middle(mesh, face)[axis], face);
    }
    const auto half = places.begin() + static_cast<std::ptrdiff_t>(places.size() / 2);
    std::ranges::nth_element(places, half);
    const auto facesOf = [](auto begin, auto end) {
        eFaces some;
        some.reserve(static_cast<std::size_t>(end - begin));
        for (; begin != end; ++begin) {
            some.push_back(begin->second);
        }
        return some;
    };
    return {facesOf(places.begin(), half), facesOf(half, places.end())};
}

// Halves the faces until each part fits; the order of the faces in a part is that of the mesh.
void Part(const host::Mesh& mesh, eFaces faces, std::vector<eFaces>& parts) {
    if (Fits(mesh, faces)) {
        if (!std::ranges::is_sorted(faces)) {
            std::ranges::sort(faces);
        }
        parts.push_back(std::move(faces));
        return;
    }
    auto [lower, upper] = HalvesOf(mesh, faces);
    faces = {};
    Part(mesh, std::move(lower), parts);
    Part(mesh, std::move(upper), parts);
}

std::vector<eFaces> PartsOf(const host::Mesh& mesh) {
    eFaces all(mesh.faces.size());
    for (std::uint32_t face = 0; face < all.size(); ++face) {
        all[face] = face;
    }
    std::vector<eFaces> parts;
    Part(mesh, std::move(all), parts);
    return parts;
}

class eParting {
public:
    eParting(eSceneData& ownScene, eImportReport& ownReport) : scene(ownScene), report(ownReport) {
        for (const eNodeData& node : scene.nodes) {
            names.Take(node.name);
            if (const auto shown = eUserProperties(node.properties).Find("Mesh")) {
                lent.insert(LowerAnsi(*shown));
            }
        }
    }

    void PartAll() {
        const std::size_t nodeCount = scene.nodes.size();
        for (std::size_t node = 0; node < nodeCount; ++node) {
            const int object = scene.nodes[node].object;
            if (object >= 0 && IsLarge(static_cast<std::size_t>(object))) {
                PartNode(node, static_cast<std::size_t>(object));
            }
        }
        if (scene.nodes.size() != nodeCount) {
            SortNodesDepthFirst(scene);
        }
    }

private:
    bool IsLarge(std::size_t object) {
        const auto* mesh = std::get_if<eMeshObject>(&scene.objects[object].kind);
        if (mesh == nullptr || SurelyFits(mesh->mesh)) {
            return false;
        }
        const auto [entry, isNew] = parts.try_emplace(object);
        if (isNew) {
            entry->second = PartsOf(mesh->mesh);
        }
        return entry->second.size() > 1;
    }

    void PartNode(std::size_t node, std::size_t object) {
        const std::string name = ToUtf8(scene.nodes[node].name);
        const std::string path = ToUtf8(PathOfNode(scene, node));
        if (MustStayWhole(scene.nodes[node])) {
            report.Notice(eMessageId::ImportTooLargeMesh,
                          Utf8Words(ePhrase::SizeOfMesh, name, FaceCount(object)), path);
            return;
        }
        const std::vector<int>& made = PiecesOf(object);
        report.Notice(
            eMessageId::ImportParted,
            Utf8Words(ePhrase::SizeOfPieces, name, FaceCount(object), WeldedCount(object), made.size()),
            path);
        std::vector<int> children;
        children.reserve(made.size());
        for (const int piece : made) {
            children.push_back(AddChild(static_cast<int>(node), piece, children.size() + 1));
        }
        eNodeData& record = scene.nodes[node];
        record.children.insert(record.children.begin(), children.begin(), children.end());
        record.properties = WithoutMesh(record.properties);
        record.object = static_cast<int>(scene.objects.size());
        record.material = -1;
        record.offset = {};
        scene.objects.push_back({{}, eHelperObject{}, {}});
    }

    bool MustStayWhole(const eNodeData& node) const {
        return node.groupMember || IsBoundToNode(node.properties) || lent.contains(LowerAnsi(node.name));
    }

    std::size_t FaceCount(std::size_t object) const {
        return std::get<eMeshObject>(scene.objects[object].kind).mesh.faces.size();
    }

    std::size_t WeldedCount(std::size_t object) const {
        std::size_t count = 0;
        for (const eFaces& faces : parts.at(object)) {
            count += WeldedVertices(std::get<eMeshObject>(scene.objects[object].kind).mesh, faces);
        }
        return count;
    }

    // The objects of the pieces, shared by all nodes that showed the whole.
    const std::vector<int>& PiecesOf(std::size_t object) {
        const auto [entry, isNew] = pieces.try_emplace(object);
        if (isNew) {
            for (const eFaces& faces : parts.at(object)) {
                eObjectData piece = SubsetOf(scene.objects[object], faces);
                if (!scene.objects[object].id.empty()) {
                    piece.id = scene.objects[object].id + "_part" + std::to_string(entry->second.size() + 1);
                }
                entry->second.push_back(static_cast<int>(scene.objects.size()));
                scene.objects.push_back(std::move(piece));
            }
        }
        return entry->second;
    }

    int AddChild(int parent, int object, std::size_t place) {
        const int number = static_cast<int>(scene.nodes.size());
        const eNodeData& whole = scene.nodes[static_cast<std::size_t>(parent)];
        eNodeData child;
        child.name = names.Take(whole.name + "_part" + std::to_string(place));
        child.properties = MeshLines(whole.properties);
        child.hidden = whole.hidden;
        child.selected = whole.selected;
        child.renderable = whole.renderable;
        child.visibility = whole.visibility;
        child.visibilityKeys = whole.visibilityKeys;
        child.offset = whole.offset;
        child.object = object;
        child.material = whole.material;
        child.parent = parent;
        scene.nodes.push_back(std::move(child));
        for (eSelectionSet& set : scene.selectionSets) {
            if (std::ranges::find(set.nodes, parent) != set.nodes.end()) {
                set.nodes.push_back(number);
            }
        }
        return number;
    }

    eSceneData& scene;
    eImportReport& report;
    eUniqueNames names;
    std::unordered_set<std::string> lent;              // nodes whose mesh others show, lower case
    std::map<std::size_t, std::vector<eFaces>> parts;  // by object
    std::map<std::size_t, std::vector<int>> pieces;    // by object
};

}  // namespace

void PartLargeMeshes(eSceneData& scene, eImportReport& report) {
    eParting(scene, report).PartAll();
}

}  // namespace standalone
