#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "host/material.h"

// The material of faces that have none: no name, no maps, one colour. In orders that hang on the identity of
// materials it comes last.
class DumMtl : public host::Mtl {
public:
    host::Color diffuse;
    host::Color specular{0.2F, 0.2F, 0.2F};
    float shininess;  // the exponent of the highlight

    explicit DumMtl(const host::Color& color);

    host::ClassId ClassID() const override { return {0x10707F49, 0x040F5940}; }
    std::uintptr_t IdentityOrder() const override { return std::numeric_limits<std::uintptr_t>::max(); }
    const std::string& GetName() const override { return name; }
    void Update(host::TimeValue, host::Interval&) override {}

    host::Color GetAmbient(int, bool) const override { return diffuse; }
    host::Color GetDiffuse(int, bool) const override { return diffuse; }
    host::Color GetSpecular(int, bool) const override { return specular; }

    // Lambert and Phong terms of the context's lights, and three tenths of its ambient light.
    void Shade(host::ShadeContext& context) override;

private:
    std::string name;
};

// The one that stands for faces without material in every mesh of the process.
DumMtl& PlaceholderMaterial();
