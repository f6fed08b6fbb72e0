#include "support/scene_builder.h"

#include <cmath>
#include <numbers>

namespace support {

using namespace standalone;

eNode eNode::Child(const std::string& name) {
    return scene->Add(name, number);
}

eNodeData& eNode::Data() const {
    return scene->data.nodes[static_cast<std::size_t>(number)];
}

eNode& eNode::Property(const std::string& line) {
    std::string& text = Data().properties;
    text += text.empty() ? line : "\r\n" + line;
    return *this;
}

eNode& eNode::Hidden() {
    Data().hidden = true;
    return *this;
}

eNode& eNode::Selected() {
    Data().selected = true;
    return *this;
}

eNode& eNode::NotRenderable() {
    Data().renderable = false;
    return *this;
}

eNode& eNode::GroupHead() {
    Data().groupHead = true;
    return *this;
}

eNode& eNode::GroupMember() {
    Data().groupMember = true;
    return *this;
}

eNode& eNode::JointFlags(std::uint32_t flags) {
    Data().jointFlags = flags;
    return *this;
}

eNode& eNode::Visibility(float value) {
    Data().visibility = value;
    return *this;
}

eNode& eNode::VisibilityKey(double frame, float value) {
    Data().visibilityKeys.push_back({frame, value});
    return *this;
}

eNode& eNode::Position(float x, float y, float z) {
    Data().transform.parts.position = {x, y, z};
    return *this;
}

eNode& eNode::Rotation(const host::Point3& axis, float degrees) {
    Data().transform.parts.rotation = RotationAbout(axis, degrees);
    return *this;
}

eNode& eNode::Scale(float x, float y, float z) {
    Data().transform.parts.scale = {x, y, z};
    return *this;
}

eNode& eNode::Matrix(const host::Matrix3& matrix) {
    Data().transform.matrix = matrix;
    return *this;
}

eNode& eNode::Key(eTransformKey key) {
    Data().keys.push_back(key);
    return *this;
}

eNode& eNode::Offset(const ePlacement& offset) {
    Data().offset = offset;
    return *this;
}

eNode& eNode::Object(eObjectKind kind) {
    Data().object = static_cast<int>(scene->data.objects.size());
    scene->data.objects.push_back({{}, std::move(kind), {}});
    return *this;
}

eNode& eNode::SameObject(const eNode& other) {
    Data().object = other.Data().object;
    return *this;
}

eNode& eNode::Modifier(eModifierKind kind) {
    scene->data.objects[static_cast<std::size_t>(Data().object)].modifiers.push_back(std::move(kind));
    return *this;
}

eNode& eNode::Skin(const std::vector<eNode>& bones, const std::vector<std::vector<eSkinWeight>>& weights) {
    eSkinModifier skin;
    for (const eNode& bone : bones) {
        skin.bones.push_back(bone.number);
    }
    skin.firstWeight.push_back(0);
    for (const std::vector<eSkinWeight>& ofVertex : weights) {
        skin.weights.insert(skin.weights.end(), ofVertex.begin(), ofVertex.end());
        skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    }
    return Modifier(std::move(skin));
}

eNode& eNode::Material(int material) {
    Data().material = material;
    return *this;
}

eNode& eNode::Target(const eNode& target) {
    Data().target = target.number;
    return *this;
}

eNode eSceneBuilder::Node(const std::string& name) {
    return Add(name, -1);
}

eNode eSceneBuilder::Add(const std::string& name, int parent) {
    const int number = static_cast<int>(data.nodes.size());
    data.nodes.emplace_back();
    data.nodes.back().name = name;
    data.nodes.back().parent = parent;
    (parent < 0 ? data.roots : data.nodes[static_cast<std::size_t>(parent)].children).push_back(number);
    return {*this, number};
}

int eSceneBuilder::Material(const std::string& name, eMaterialKind kind) {
    data.materials.push_back({name, name, std::move(kind)});
    return static_cast<int>(data.materials.size()) - 1;
}

int eSceneBuilder::Map(eMapKind kind, const eMapCoordinates& coordinates, const std::string& name) {
    data.maps.push_back({name, coordinates, std::move(kind)});
    return static_cast<int>(data.maps.size()) - 1;
}

void eSceneBuilder::SelectionSet(const std::string& name, const std::vector<eNode>& nodes) {
    data.selectionSets.push_back({name, {}});
    for (const eNode& node : nodes) {
        data.selectionSets.back().nodes.push_back(node.number);
    }
}

namespace {

// Where each node of the builder ends up depth first, and the way back.
struct eOrder {
    std::vector<int> place;   // by number in the builder
    std::vector<int> number;  // by place
};

void Visit(const eSceneData& data, int number, eOrder& order) {
    order.place[static_cast<std::size_t>(number)] = static_cast<int>(order.number.size());
    order.number.push_back(number);
    for (const int child : data.nodes[static_cast<std::size_t>(number)].children) {
        Visit(data, child, order);
    }
}

void Renumber(const eOrder& order, int& node) {
    node = node < 0 ? node : order.place[static_cast<std::size_t>(node)];
}

void Renumber(const eOrder& order, std::vector<int>& nodes) {
    for (int& node : nodes) {
        Renumber(order, node);
    }
}

void RenumberObject(const eOrder& order, eObjectData& object) {
    if (auto* light = std::get_if<eLightObject>(&object.kind)) {
        Renumber(order, light->listedNodes);
    }
    for (eModifierKind& modifier : object.modifiers) {
        if (auto* skin = std::get_if<eSkinModifier>(&modifier)) {
            Renumber(order, skin->bones);
        }
    }
}

}  // namespace

eSceneData eSceneBuilder::Build() const {
    eOrder order;
    order.place.resize(data.nodes.size());
    for (const int root : data.roots) {
        Visit(data, root, order);
    }
    eSceneData result = data;
    result.nodes.clear();
    for (const int number : order.number) {
        eNodeData node = data.nodes[static_cast<std::size_t>(number)];
        Renumber(order, node.parent);
        Renumber(order, node.target);
        Renumber(order, node.children);
        result.nodes.push_back(std::move(node));
    }
    Renumber(order, result.roots);
    for (eSelectionSet& set : result.selectionSets) {
        Renumber(order, set.nodes);
    }
    for (eObjectData& object : result.objects) {
        RenumberObject(order, object);
    }
    return result;
}

eRotation RotationAbout(const host::Point3& axis, float degrees) {
    const float half = degrees * std::numbers::pi_v<float> / 360;
    const host::Point3 unit = Normalize(axis) * std::sin(half);
    return {unit.x, unit.y, unit.z, std::cos(half)};
}

host::Mesh TriangleMesh(std::vector<host::Point3> vertices,
                        std::initializer_list<std::array<std::uint32_t, 3>> faces) {
    host::Mesh mesh;
    mesh.verts = std::move(vertices);
    for (const auto& [a, b, c] : faces) {
        mesh.faces.push_back({{a, b, c}, 1, 0});
    }
    return mesh;
}

host::Mesh GridMesh(int columns, int rows) {
    host::Mesh mesh;
    host::MapChannel map{1, {}, {}};
    for (int y = 0; y <= rows; ++y) {
        for (int x = 0; x <= columns; ++x) {
            const auto u = static_cast<float>(x), v = static_cast<float>(y);
            mesh.verts.push_back({u, v, 0});
            map.verts.push_back({u / static_cast<float>(columns), v / static_cast<float>(rows), 0});
        }
    }
    const auto width = static_cast<std::uint32_t>(columns + 1);
    for (std::uint32_t y = 0; y < static_cast<std::uint32_t>(rows); ++y) {
        for (std::uint32_t x = 0; x + 1 < width; ++x) {
            const std::uint32_t corner = y * width + x;
            for (const auto& face : {host::Face{{corner, corner + 1, corner + width + 1}, 1, 0},
                                     host::Face{{corner, corner + width + 1, corner + width}, 1, 0}}) {
                mesh.faces.push_back(face);
                map.faces.push_back({{face.v[0], face.v[1], face.v[2]}});
            }
        }
    }
    mesh.maps.push_back(std::move(map));
    return mesh;
}

}  // namespace support
