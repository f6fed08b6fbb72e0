#include "material/queries/shade_context.h"

SContext::SContext(const eSceneLights& lights) : lights_(&lights) {
    nLights = static_cast<int>(lights.size());
}
