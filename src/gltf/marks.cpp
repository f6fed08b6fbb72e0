#include "gltf/marks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "base/ansi.h"
#include "base/number_text.h"
#include "gltf/solid.h"
#include "inspect/model_view.h"
#include "inspect/placement.h"
#include "messages/utf8_words.h"
#include "volume/polyhedron_image.h"

namespace gltf {

namespace {

using inspect::eSdlBlock;
using written::eVector;
using written::operator-;

constexpr float kWallHeight = 0.25F;   // metres, of a zone
constexpr float kPointRadius = 0.05F;  // metres, of a support point

struct eColorOfMark {
    const char* name;
    std::array<double, 4> color;
};
constexpr eColorOfMark kColors[] = {{"volume", {0.1, 0.35, 1, 0.3}},
                                    {"area", {0.1, 0.8, 0.25, 0.45}},
                                    {"obstacle", {0.9, 0.1, 0.08, 0.45}},
                                    {"support point", {1, 0.75, 0.05, 1}}};

std::vector<float> NumbersOf(const eSdlBlock* block) {
    std::vector<float> numbers;
    for (const std::string& value : block != nullptr ? block->Values() : std::vector<std::string>()) {
        numbers.push_back(static_cast<float>(ReadReal(value)));
    }
    numbers.resize(std::max<std::size_t>(numbers.size(), 3));
    return numbers;
}

std::optional<eSolid> PolyhedronOf(const eSdlBlock& block) {
    std::string problem;
    const std::vector<std::string> values = block.Values();
    std::optional<ePolyhedron> read = ReadPolyhedron(values.empty() ? "" : values.front(), problem);
    if (!read || read->vertices.empty() || read->indices.empty()) {
        return std::nullopt;
    }
    // The file has the corners of a face in reverse order.
    for (std::size_t i = 0; i + 2 < read->indices.size(); i += 3) {
        std::swap(read->indices[i], read->indices[i + 2]);
    }
    return eSolid{std::move(read->vertices), std::move(read->indices)};
}

// Nothing for a volume without a shape.
std::optional<eSolid> SolidOf(const eSdlBlock& volume) {
    if (const eSdlBlock* box = volume.Find("box")) {
        const std::vector<float> size = NumbersOf(box);
        return MakeBox({size[0], size[1], size[2]});
    }
    if (const eSdlBlock* sphere = volume.Find("sphere")) {
        return MakeSphere(NumbersOf(sphere)[0]);
    }
    if (const eSdlBlock* cylinder = volume.Find("cylinder")) {
        return MakeCylinder(NumbersOf(cylinder)[0], NumbersOf(cylinder)[1]);
    }
    const eSdlBlock* const polyhedron = volume.Find("polyhedron");
    return polyhedron != nullptr ? PolyhedronOf(*polyhedron) : std::nullopt;
}

// The closed line around a zone, in the space of the model; empty for one without a figure.
std::vector<host::Point2> LineOf(const eSdlBlock& zone) {
    if (const eSdlBlock* circle = zone.Find("circle2")) {
        const std::vector<float> center = NumbersOf(circle->Find("center"));
        return CircleLine({center[0], center[1]}, NumbersOf(circle->Find("radius"))[0]);
    }
    std::vector<host::Point2> line;
    if (const eSdlBlock* box = zone.Find("obb2")) {
        const std::vector<float> c = NumbersOf(box->Find("center"));
        const std::vector<float> e = NumbersOf(box->Find("extent"));
        const std::vector<float> u = NumbersOf(box->Find("axis"));
        for (const auto& [along, across] : {std::pair(1.F, 1.F), {-1.F, 1.F}, {-1.F, -1.F}, {1.F, -1.F}}) {
            const float x = along * e[0], y = across * e[1];
            line.push_back({c[0] + x * u[0] - y * u[1], c[1] + x * u[1] + y * u[0]});
        }
    }
    if (const eSdlBlock* polygon = zone.Find("polygon2")) {
        for (const eSdlBlock* vertex : polygon->Blocks("vertex")) {
            line.push_back({NumbersOf(vertex)[0], NumbersOf(vertex)[1]});
        }
    }
    return line;
}

// From the engine's space.
eVector ToFile(const std::vector<float>& p) {
    return {p[0], p[2], p[1]};
}

int AddSolid(eGlb& glb, const std::string& name, const eSolid& solid, int material) {
    std::vector<float> positions;
    for (const host::Point3& vertex : solid.vertices) {
        positions.insert(positions.end(), {vertex.x, vertex.y, vertex.z});
    }
    const int vertices = glb.AddFloats(positions, 3, eBufferUse::Vertices, true);
    eJson primitive{{"attributes", {{"POSITION", vertices}}},
                    {"indices", glb.AddIndices(solid.indices)},
                    {"material", material}};
    return glb.Add("meshes", {{"name", name}, {"primitives", eJson::array({primitive})}});
}

eVector Normalized(const eVector& v) {
    const double length = written::Length(v);
    return length > 0 ? eVector{v[0] / length, v[1] / length, v[2] / length} : eVector{0, 0, 1};
}

eVector Cross(const eVector& a, const eVector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// A camera of glTF looks along its negative z.
ePlacement LookAt(const eVector& origin, const eVector& target) {
    const eVector back = Normalized(origin - target);
    const bool isUpright = std::fabs(back[1]) < 0.99999;
    const eVector right = Normalized(Cross(isUpright ? eVector{0, 1, 0} : eVector{0, 0, -1}, back));
    host::DMatrix3 matrix;
    matrix.rows = {{right, Cross(back, right), back, origin}};
    return PlacementOf(matrix);
}

}  // namespace

int eMarks::Material(const char* name) {
    for (int i = 0; i < glb_.Count("materials"); ++i) {
        if (glb_.At("materials", i).value("extras", eJson::object()).contains("mark") &&
            glb_.At("materials", i)["name"] == name) {
            return i;
        }
    }
    const auto* const color = std::ranges::find(kColors, std::string_view(name), &eColorOfMark::name);
    return glb_.Add("materials",
                    {{"name", name},
                     {"pbrMetallicRoughness", {{"baseColorFactor", color->color}, {"metallicFactor", 0}}},
                     {"alphaMode", color->color[3] < 1 ? "BLEND" : "OPAQUE"},
                     {"doubleSided", true},
                     {"extras", {{"mark", true}}}});
}

void eMarks::Add() {
    AddVolumes();
    AddZones();
    AddSupportPoints();
    AddPreviews();
}

void eMarks::AddVolumes() {
    if (const eSdlBlock* volumes = files_.model.text.Find("volumes")) {
        for (const eSdlBlock* volume : volumes->Blocks()) {
            AddVolume(*volume);
        }
    }
}

void eMarks::AddVolume(const eSdlBlock& volume) {
    const std::string name = ToUtf8(volume.Name());
    const std::optional<eSolid> solid = SolidOf(volume);
    const int bone = std::max(bones_.NumberOf(volume.ValueOf("bone")), 0);
    if (!solid) {
        files_.warnings.push_back(Utf8Words(ePhrase::BrokenVolume, name));
        return;
    }
    eJson node{{"name", name + " volume"},
               {"mesh", AddSolid(glb_, name + " volume", *solid, Material("volume"))}};
    const host::DMatrix3 place = inspect::PlacementOf(volume);
    const ePlacement placement = PlacementOf(place);
    if (placement.isSheared) {
        PutMatrix(place, node);
    } else {
        PutPlacement(placement, node);
    }
    node["extras"] = {{"kind", "volume"}, {"bone", ToUtf8(volume.ValueOf("bone"))}};
    for (const char* shape : {"box", "sphere", "cylinder"}) {
        if (const eSdlBlock* block = volume.Find(shape)) {
            node["extras"][shape] = inspect::DescribeBlock(*block);
        }
    }
    const eSdlBlock* const entity = files_.entity.Find("entity");
    const eSdlBlock* const tags = entity != nullptr ? entity->Find("volumes") : nullptr;
    if (const eSdlBlock* own = tags != nullptr ? tags->Find(volume.Name()) : nullptr) {
        for (const eSdlBlock* block : own->Blocks()) {
            inspect::AddBlock(node["extras"], *block);
        }
    }
    bones_.AddChild(bone, glb_.Add("nodes", std::move(node)));
}

void eMarks::AddZones() {
    std::vector<int> nodes;
    if (const eSdlBlock* zones = files_.model.text.Find("zones")) {
        for (const eSdlBlock* zone : zones->Blocks()) {
            nodes.push_back(AddZone(*zone));
        }
    }
    AddGroup("zones", nodes);
}

int eMarks::AddZone(const eSdlBlock& zone) {
    const std::vector<std::string> values = zone.Values();
    const std::string name = values.empty() ? std::string() : ToUtf8(values.front());
    const std::string kind = ToUtf8(zone.Name());
    eJson node{{"name", name + " " + kind}};
    if (const std::vector<host::Point2> line = LineOf(zone); line.size() > 1) {
        eSolid wall = MakeWall(line, kWallHeight);
        for (host::Point3& vertex : wall.vertices) {
            vertex = {vertex.x, vertex.z, vertex.y};
        }
        node["mesh"] =
            AddSolid(glb_, name + " " + kind, wall, Material(kind == "area" ? "area" : "obstacle"));
    }
    node["extras"] = {{"kind", "zone"}, {"zone", kind}};
    for (const eSdlBlock* block : zone.Blocks()) {
        if (block->Name() != "polygon2") {
            inspect::AddBlock(node["extras"], *block);
        }
    }
    return glb_.Add("nodes", std::move(node));
}

void eMarks::AddSupportPoints() {
    const eSdlBlock* const list = files_.model.text.Find("SupportPoints");
    int mesh = -1;
    for (const eSdlBlock* bone : list != nullptr ? list->Blocks("bone") : std::vector<const eSdlBlock*>()) {
        const std::vector<std::string> names = bone->Values();
        const int number = std::max(bones_.NumberOf(names.empty() ? std::string() : names.front()), 0);
        for (const eSdlBlock* point : bone->Blocks("point")) {
            if (mesh < 0) {
                mesh = AddSolid(glb_, "support point", MakeSphere(kPointRadius), Material("support point"));
            }
            const std::vector<float> units = NumbersOf(point);
            const eVector place{units[0] * metresPerUnit_, units[1] * metresPerUnit_,
                                units[2] * metresPerUnit_};
            eJson node{{"name", "support point"}, {"mesh", mesh}};
            PutPlacement({.position = place}, node);
            node["extras"] = {{"kind", "support point"}, {"units", {units[0], units[1], units[2]}}};
            bones_.AddChild(number, glb_.Add("nodes", std::move(node)));
        }
    }
}

void eMarks::AddPreviews() {
    std::vector<int> nodes;
    if (const eSdlBlock* previews = files_.model.text.Find("preview")) {
        for (const eSdlBlock* preview : previews->Blocks()) {
            nodes.push_back(AddPreview(*preview));
        }
    }
    AddGroup("previews", nodes);
}

int eMarks::AddPreview(const eSdlBlock& preview) {
    eJson group{{"name", ToUtf8(preview.Name()) + " preview"}};
    if (const eSdlBlock* camera = preview.Find("camera")) {
        // The host's angle is that of the width; glTF has that of the height.
        constexpr double kAspect = 4.0 / 3;
        const double width = NumbersOf(camera->Find("fov"))[0] * std::numbers::pi / 180;
        const double height = 2 * std::atan(std::tan(width / 2) / kAspect);
        eJson node{{"name", "camera"}};
        if (height > 0 && height < std::numbers::pi) {
            node["camera"] = glb_.Add(
                "cameras", {{"type", "perspective"},
                            {"perspective", {{"yfov", height}, {"aspectRatio", kAspect}, {"znear", 0.01}}}});
        }
        PutPlacement(
            LookAt(ToFile(NumbersOf(camera->Find("origin"))), ToFile(NumbersOf(camera->Find("lookat")))),
            node);
        node["extras"] = {{"kind", "camera"}, {"camera", inspect::DescribeBlock(*camera)}};
        group["children"].push_back(glb_.Add("nodes", std::move(node)));
    }
    const eSdlBlock* const lights = preview.Find("lights");
    for (const eSdlBlock* light : lights != nullptr ? lights->Blocks() : std::vector<const eSdlBlock*>()) {
        eJson node{{"name", "light " + ToUtf8(light->Name())}};
        PutPlacement({.position = ToFile(NumbersOf(light->Find("position")))}, node);
        node["extras"] = {{"kind", "light"}, {"light", inspect::DescribeBlock(*light)}};
        group["children"].push_back(glb_.Add("nodes", std::move(node)));
    }
    return glb_.Add("nodes", std::move(group));
}

void eMarks::AddGroup(const char* name, const std::vector<int>& nodes) {
    if (!nodes.empty()) {
        atTop_.push_back(glb_.Add("nodes", {{"name", name}, {"children", nodes}}));
    }
}

}  // namespace gltf
