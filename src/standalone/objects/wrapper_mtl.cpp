#include "standalone/objects/wrapper_mtl.h"

#include "standalone/objects/mapped_mtl.h"
#include "standalone/objects/scene.h"

namespace standalone {

eWrapperMtl::eWrapperMtl(eScene& ownScene, std::size_t place, const eMaterialData& data)
    : eElement(ownScene.hold, place), scene(ownScene), mtlData(data) {}

host::Mtl* eWrapperMtl::Material(int number) const {
    return scene.Material(number);
}

host::Texmap* eWrapperMtl::Map(int number) const {
    return scene.Map(number);
}

void eWrapperMtl::Update(host::TimeValue t, host::Interval& valid) {
    for (int i = 0; i < NumSubMtls(); ++i) {
        if (host::Mtl* part = GetSubMtl(i)) {
            part->Update(t, valid);
        }
    }
}

host::Color eWrapperMtl::GetAmbient(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetAmbient(0, backFace) : host::Color{};
}

host::Color eWrapperMtl::GetDiffuse(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetDiffuse(0, backFace) : kGrey;
}

host::Color eWrapperMtl::GetSpecular(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetSpecular(0, backFace) : host::Color{};
}

float eWrapperMtl::GetShininess(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetShininess(0, backFace) : 0;
}

float eWrapperMtl::GetShinStr(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetShinStr(0, backFace) : 0;
}

float eWrapperMtl::GetXParency(int mtlNum, bool backFace) const {
    const host::Mtl* part = Answering(mtlNum);
    return part != nullptr ? part->GetXParency(0, backFace) : 0;
}

std::uint32_t eWrapperMtl::Requirements(int) const {
    std::uint32_t all = 0;
    for (int i = 0; i < NumSubMtls(); ++i) {
        const host::Mtl* part = GetSubMtl(i);
        all |= part != nullptr ? part->Requirements(-1) : 0;
    }
    return all;
}

void eWrapperMtl::Shade(host::ShadeContext& context) {
    if (host::Mtl* part = Answering(0)) {
        part->Shade(context);
    } else {
        ShadeDiffuse(context, kGrey, nullptr, 0, 1);
    }
}

void eWrapperMtl::EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const {
    for (int i = 0; i < NumSubMtls(); ++i) {
        if (const host::Mtl* part = GetSubMtl(i)) {
            part->EnumAuxFiles(callback, flags);
        }
    }
}

// An empty list is asked for place 0 all the same.
host::Mtl* eMultiMtl::GetSubMtl(int index) const {
    const auto place = static_cast<std::size_t>(index);
    return place < multi.materials.size() ? Material(multi.materials[place]) : nullptr;
}

host::Mtl* eMultiMtl::Answering(int mtlNum) const {
    return multi.materials.empty() ? nullptr : GetSubMtl(mtlNum % NumSubMtls());
}

std::uint32_t eMultiMtl::Requirements(int subMtl) const {
    if (subMtl < 0) {
        return eWrapperMtl::Requirements(subMtl);
    }
    const host::Mtl* part = Answering(subMtl);
    return part != nullptr ? part->Requirements(-1) : 0;
}

host::Mtl* eTwoLayerMtl::Answering(int) const {
    host::Mtl* const first = GetSubMtl(0);
    return first != nullptr ? first : GetSubMtl(1);
}

int eSorrelMtl::NumSubTexmaps() const {
    const host::Mtl* part = GetSubMtl(0);
    return part != nullptr ? part->NumSubTexmaps() : 0;
}

host::Texmap* eSorrelMtl::GetSubTexmap(int map) const {
    const host::Mtl* part = GetSubMtl(0);
    return part != nullptr ? part->GetSubTexmap(map) : nullptr;
}

host::IParamBlock* eSorrelMtl::GetParamBlock(int block) const {
    // The block is asked as a part of the material and read only.
    return block == 0 ? const_cast<eSorrelMtl*>(this) : nullptr;
}

namespace {

enum eParameter { kBlend = 1, kModulate2x, kEnvironment, kStrength, kMask, kEnvironmentMap };

}  // namespace

bool eSorrelMtl::GetValue(int id, host::TimeValue, int& value) const {
    switch (id) {
        case kBlend:
            value = sorrel.blend;
            return true;
        case kModulate2x:
            value = sorrel.modulate2x;
            return true;
        case kEnvironment:
            value = sorrel.environment;
            return true;
        default:
            return false;
    }
}

bool eSorrelMtl::GetValue(int id, host::TimeValue, float& value) const {
    if (id != kStrength) {
        return false;
    }
    value = sorrel.strength;
    return true;
}

bool eSorrelMtl::GetValue(int id, host::TimeValue, host::Texmap*& value) const {
    if (id != kMask && id != kEnvironmentMap) {
        return false;
    }
    value = Map(id == kMask ? sorrel.mask : sorrel.environmentMap);
    return true;
}

void eSorrelMtl::EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const {
    eWrapperMtl::EnumAuxFiles(callback, flags);
    for (const int map : {sorrel.mask, sorrel.environmentMap}) {
        if (const host::Texmap* texmap = Map(map)) {
            texmap->EnumAuxFiles(callback, flags);
        }
    }
}

host::ReferenceTarget* eSorrelMtl::GetReference(int reference) const {
    switch (reference) {
        case 0:
            return GetSubMtl(0);
        case 1:
            return Map(sorrel.mask);
        default:
            return Map(sorrel.environmentMap);
    }
}

}  // namespace standalone
