#pragma once

#include <cstdint>
#include <string>

// One material of the engine. A texture field holds the game name of the texture without extension; empty
// means that the slot is unused.
struct eExportMaterial {
    std::string name;
    std::string type;   // "simple", "multiply", "blend", "bump" or "envmap"
    std::string blend;  // "none", "test", "blend", "add" or "sub"
    std::string diffuse;
    std::string diffuse1;  // second layer
    std::string bump;      // normal map
    std::string specular;  // specular level map
    std::string mask;      // mask of an envmap material
    std::string envmap;
    float amount = 1.0F;               // strength of the environment map
    std::uint32_t color = 0xFFFFFFFF;  // specular colour, A R G B
    bool modulate2x = false;           // the second layer is multiplied in at double strength
};
