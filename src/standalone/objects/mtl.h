#pragma once

#include <memory>

#include "host/material.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

// The material of a record, which must outlive it.
std::unique_ptr<host::Mtl> MakeMtl(eScene& scene, std::size_t place, const eMaterialData& data);

}  // namespace standalone
