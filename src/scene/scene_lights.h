#pragma once

#include <memory>
#include <vector>

#include "host/shade.h"

// The lights of the scene as the run prepared them.
using eSceneLights = std::vector<std::unique_ptr<host::LightDesc>>;
