#include "standalone/loaders/scene_document/scene_document_write_objects.h"

#include "standalone/loaders/scene_document/scene_document_words.h"
#include "standalone/loaders/scene_document/scene_document_write_mesh.h"

namespace standalone {
namespace {

// What an object has besides its type.
struct eObjectMembers {
    eDocumentOutput& output;
    eJsonWriter& json = output.json;

    void operator()(const eHelperObject&) {}
    void operator()(const eTargetObject&) {}

    void operator()(const eBoxObject& box) {
        json.Member("width", box.width);
        json.Member("length", box.length);
        json.Member("height", box.height);
    }

    void operator()(const eSphereObject& sphere) {
        json.Member("radius", sphere.radius);
        json.MemberUnless(eSphereObject{}.segments, "segments", sphere.segments);
    }

    void operator()(const eCylinderObject& cylinder) {
        json.Member("radius", cylinder.radius);
        json.Member("height", cylinder.height);
        json.MemberUnless(eCylinderObject{}.sides, "sides", cylinder.sides);
    }

    void operator()(const eMeshObject& mesh) { WriteMesh(json, mesh); }

    void operator()(const eRectangleObject& rectangle) {
        json.Member("width", rectangle.width);
        json.Member("length", rectangle.length);
    }

    void operator()(const eCircleObject& circle) { json.Member("radius", circle.radius); }

    void operator()(const eLineObject& line) {
        json.Key("splines");
        json.BeginList();
        for (const eSpline& spline : line.splines) {
            json.BeginObject();
            json.Member("points", spline.points);
            json.MemberUnless(eSpline{}.closed, "closed", spline.closed);
            json.EndObject();
        }
        json.EndList();
    }

    void operator()(const eCameraObject& camera) {
        const eCameraObject standard;
        json.MemberUnless(standard.fov, "fov", camera.fov);
        json.MemberUnless(standard.targetDistance, "targetDistance", camera.targetDistance);
    }

    void operator()(const eLightObject& light) {
        const eLightObject standard;
        json.Member("kind", kLightWords[static_cast<std::size_t>(light.kind)]);
        json.MemberUnless(standard.on, "on", light.on);
        json.MemberUnless(standard.color, "color", light.color);
        json.MemberUnless(standard.multiplier, "multiplier", light.multiplier);
        json.MemberUnless(standard.hotspot, "hotspot", light.hotspot);
        json.MemberUnless(standard.falloff, "falloff", light.falloff);
        if (light.attenuation) {
            json.Key("attenuation");
            json.BeginObject();
            json.Member("start", light.attenuation->start);
            json.Member("end", light.attenuation->end);
            json.EndObject();
        }
        if (light.include || !light.listedNodes.empty()) {
            json.Key(light.include ? "include" : "exclude");
            WriteNodeReferences(output, light.listedNodes);
        }
        json.MemberUnless(standard.affectDiffuse, "affectDiffuse", light.affectDiffuse);
        json.MemberUnless(standard.affectSpecular, "affectSpecular", light.affectSpecular);
        json.MemberUnless(standard.ambientOnly, "ambientOnly", light.ambientOnly);
    }

    void operator()(const eOtherObject& other) {
        json.Member("superClass", other.superClass);
        json.Member("classId", other.classId);
    }
};

void WriteVertexWeights(eJsonWriter& json, const eSkinModifier& skin) {
    json.Key("weights");
    json.BeginList();
    for (std::size_t vertex = 0; vertex + 1 < skin.firstWeight.size(); ++vertex) {
        json.BeginList();
        for (std::uint32_t i = skin.firstWeight[vertex]; i < skin.firstWeight[vertex + 1]; ++i) {
            json.BeginList();
            json.Value(skin.weights[i].bone);
            json.Value(skin.weights[i].weight);
            json.EndList();
        }
        json.EndList();
    }
    json.EndList();
}

struct eModifierMembers {
    eDocumentOutput& output;
    eJsonWriter& json = output.json;

    void operator()(const eSkinModifier& skin) {
        json.Key("bones");
        WriteNodeReferences(output, skin.bones);
        WriteVertexWeights(json, skin);
        json.MemberUnless(0.0, "bindFrame", skin.bindFrame);
        if (!skin.bindMatrices.empty()) {
            json.Member("bindMatrices", skin.bindMatrices);
        }
    }

    void operator()(const eOtherModifier& other) { json.Member("classId", other.classId); }
};

}  // namespace

void WriteObject(eDocumentOutput& output, const eObjectData& object) {
    eJsonWriter& json = output.json;
    json.BeginObject();
    json.Member("type", kObjectWords[object.kind.index()]);
    std::visit(eObjectMembers{output}, object.kind);
    if (!object.modifiers.empty()) {
        json.Key("modifiers");
        json.BeginList();
        for (const eModifierKind& modifier : object.modifiers) {
            json.BeginObject();
            json.Member("type", kModifierWords[modifier.index()]);
            std::visit(eModifierMembers{output}, modifier);
            json.EndObject();
        }
        json.EndList();
    }
    json.EndObject();
}

}  // namespace standalone
