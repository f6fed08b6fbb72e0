#include "standalone/objects/light_object.h"

#include "standalone/objects/light_desc.h"
#include "standalone/objects/scene.h"

namespace standalone {

eLight::eLight(eScene& ownScene, std::size_t place, const eLightObject& light)
    : eElement(ownScene.hold, place), scene(ownScene), data(light) {}

host::LightState eLight::EvalLightState(host::TimeValue) const {
    host::LightState state;
    state.type = static_cast<int>(data.kind);
    state.color = data.color;
    state.on = data.on;
    state.hotsize = data.hotspot;
    state.fallsize = data.falloff;
    state.useAtten = data.attenuation.has_value();
    if (data.attenuation) {
        state.attenStart = data.attenuation->start;
        state.attenEnd = data.attenuation->end;
    }
    return state;
}

host::LightDesc* eLight::CreateLightDesc(host::INode& node) {
    host::ExclList listed;
    listed.flags = data.include ? host::ExclList::kInclude : 0;
    for (const int number : data.listedNodes) {
        listed.nodes.push_back(scene.Node(number));
    }
    return new eLightDesc(node, data, std::move(listed));
}

}  // namespace standalone
