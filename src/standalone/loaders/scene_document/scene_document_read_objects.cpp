#include "standalone/loaders/scene_document/scene_document_read_objects.h"

#include <algorithm>
#include <array>

#include "standalone/loaders/scene_document/scene_document_read_mesh.h"
#include "standalone/loaders/scene_document/scene_document_read_modifiers.h"
#include "standalone/loaders/scene_document/scene_document_words.h"

namespace standalone {
namespace {

eObjectKind ReadHelper(eDocumentContext&, eMembers&) {
    return eHelperObject{};
}

eObjectKind ReadTarget(eDocumentContext&, eMembers&) {
    return eTargetObject{};
}

eObjectKind ReadBox(eDocumentContext&, eMembers& members) {
    eBoxObject box;
    members.RequiredSize("width", box.width);
    members.RequiredSize("length", box.length);
    members.RequiredSize("height", box.height);
    return box;
}

eObjectKind ReadSphere(eDocumentContext& context, eMembers& members) {
    eSphereObject sphere;
    members.RequiredSize("radius", sphere.radius);
    if (members.Optional("segments", 8, kMaxSphereSegments, sphere.segments) && sphere.segments % 4 != 0) {
        context.json.Report(members.Find("segments"), eMessageId::DocumentMultiple);
    }
    return sphere;
}

eObjectKind ReadCylinder(eDocumentContext&, eMembers& members) {
    eCylinderObject cylinder;
    members.RequiredSize("radius", cylinder.radius);
    members.RequiredSize("height", cylinder.height);
    members.Optional("sides", 3, kMaxCylinderSides, cylinder.sides);
    return cylinder;
}

eObjectKind ReadMeshObject(eDocumentContext& context, eMembers& members) {
    eMeshObject mesh;
    ReadMesh(context.json, members, mesh);
    return mesh;
}

eObjectKind ReadRectangle(eDocumentContext&, eMembers& members) {
    eRectangleObject rectangle;
    members.RequiredSize("width", rectangle.width);
    members.RequiredSize("length", rectangle.length);
    return rectangle;
}

eObjectKind ReadCircle(eDocumentContext&, eMembers& members) {
    eCircleObject circle;
    members.RequiredSize("radius", circle.radius);
    return circle;
}

eObjectKind ReadLine(eDocumentContext& context, eMembers& members) {
    eLineObject line;
    for (const eJsonIndex element : context.json.Elements(members.Demand("splines"))) {
        eSpline& spline = line.splines.emplace_back();
        eMembers parts(context.json, element);
        parts.Required("points", spline.points);
        parts.Optional("closed", spline.closed);
    }
    return line;
}

eObjectKind ReadCamera(eDocumentContext& context, eMembers& members) {
    eCameraObject camera;
    if (members.Optional("fov", camera.fov) && !(camera.fov > 0 && camera.fov < 180)) {
        context.json.Report(members.Find("fov"), eMessageId::DocumentFieldOfView);
    }
    members.Optional("targetDistance", camera.targetDistance);
    return camera;
}

void ReadListedNodes(eDocumentContext& context, eMembers& members, eLightObject& light) {
    const eJsonIndex exclude = members.Find("exclude");
    const eJsonIndex include = members.Find("include");
    if (exclude != kNoJson && include != kNoJson) {
        context.json.Report(members.Object(), eMessageId::DocumentTwoLightLists);
        return;
    }
    light.include = include != kNoJson;
    const eJsonIndex list = light.include ? include : exclude;
    if (list != kNoJson) {
        ReadNodeReferences(context, list, light.listedNodes);
    }
}

eObjectKind ReadLight(eDocumentContext& context, eMembers& members) {
    eLightObject light;
    int kind = 0;
    const eJsonIndex kindWord = members.Demand("kind");
    if (kindWord != kNoJson && context.json.ReadWord(kindWord, kLightWords, kind)) {
        light.kind = static_cast<eLightKind>(kind);
    }
    members.Optional("on", light.on);
    members.Optional("color", light.color);
    members.Optional("multiplier", light.multiplier);
    members.Optional("hotspot", light.hotspot);
    members.Optional("falloff", light.falloff);
    if (const eJsonIndex attenuation = members.Find("attenuation"); attenuation != kNoJson) {
        eMembers reach(context.json, attenuation);
        light.attenuation.emplace();
        reach.Required("start", light.attenuation->start);
        reach.Required("end", light.attenuation->end);
    }
    ReadListedNodes(context, members, light);
    members.Optional("affectDiffuse", light.affectDiffuse);
    members.Optional("affectSpecular", light.affectSpecular);
    members.Optional("ambientOnly", light.ambientOnly);
    return light;
}

eObjectKind ReadOther(eDocumentContext&, eMembers& members) {
    eOtherObject other;
    members.Required("superClass", other.superClass);
    members.Required("classId", other.classId);
    return other;
}

using eReadObject = eObjectKind (*)(eDocumentContext&, eMembers&);

// By the place of the word in kObjectWords.
constexpr std::array<eReadObject, kObjectWords.size()> kObjectReaders = {
    ReadHelper,    ReadTarget, ReadBox,  ReadSphere, ReadCylinder, ReadMeshObject,
    ReadRectangle, ReadCircle, ReadLine, ReadCamera, ReadLight,    ReadOther};

}  // namespace

void ReadObject(eDocumentContext& context, eJsonIndex value, eObjectData& object) {
    int type = 0;
    if (!context.json.ReadType(value, kObjectWords, type)) {
        return;
    }
    eMembers members(context.json, value);
    object.kind = kObjectReaders[static_cast<std::size_t>(type)](context, members);
    if (const eJsonIndex modifiers = members.Find("modifiers"); modifiers != kNoJson) {
        ReadModifiers(context, modifiers, object);
    }
}

}  // namespace standalone
