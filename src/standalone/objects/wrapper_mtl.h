#pragma once

#include "host/material.h"
#include "standalone/objects/element.h"
#include "standalone/scene_data.h"

namespace standalone {

class eScene;

// A material made of others: it asks one of them for what it does not say itself.
class eWrapperMtl : public eElement<host::Mtl> {
public:
    // The record must outlive the material.
    eWrapperMtl(eScene& scene, std::size_t place, const eMaterialData& data);

    const std::string& GetName() const override { return mtlData.name; }
    void Update(host::TimeValue t, host::Interval& valid) override;

    host::Color GetAmbient(int mtlNum, bool backFace) const override;
    host::Color GetDiffuse(int mtlNum, bool backFace) const override;
    host::Color GetSpecular(int mtlNum, bool backFace) const override;
    float GetShininess(int mtlNum, bool backFace) const override;
    float GetShinStr(int mtlNum, bool backFace) const override;
    float GetXParency(int mtlNum, bool backFace) const override;
    // Those of all parts together.
    std::uint32_t Requirements(int subMtl) const override;
    void Shade(host::ShadeContext& context) override;

    void EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const override;
    int NumRefs() const override { return NumSubMtls(); }
    host::ReferenceTarget* GetReference(int reference) const override { return GetSubMtl(reference); }

protected:
    // The part that answers for the sub-material number; null if there is none, then the answer is `Grey` and
    // nothing else.
    virtual host::Mtl* Answering(int mtlNum) const = 0;
    static constexpr host::Color kGrey{0.5F, 0.5F, 0.5F};

    host::Mtl* Material(int number) const;
    host::Texmap* Map(int number) const;

private:
    eScene& scene;
    const eMaterialData& mtlData;
};

// Several materials, one for each material id of the faces.
class eMultiMtl : public eWrapperMtl {
public:
    eMultiMtl(eScene& ownScene, std::size_t place, const eMaterialData& data, const eMultiMaterial& kind)
        : eWrapperMtl(ownScene, place, data), multi(kind) {}

    host::ClassId ClassID() const override { return host::kMultiClass; }
    bool IsMultiMtl() const override { return true; }
    int NumSubMtls() const override { return static_cast<int>(multi.materials.size()); }
    host::Mtl* GetSubMtl(int index) const override;
    // Of one sub-material, or of all with -1.
    std::uint32_t Requirements(int subMtl) const override;

protected:
    host::Mtl* Answering(int mtlNum) const override;

private:
    const eMultiMaterial& multi;
};

// Two materials one above the other; the first that is set answers.
class eTwoLayerMtl : public eWrapperMtl {
public:
    eTwoLayerMtl(eScene& ownScene, std::size_t place, const eMaterialData& data,
                 const eTwoLayerMaterial& kind)
        : eWrapperMtl(ownScene, place, data), layers(kind) {}

    host::ClassId ClassID() const override { return host::kTwoLayerClass; }
    int NumSubMtls() const override { return 2; }
    host::Mtl* GetSubMtl(int index) const override {
        return Material(layers.materials[static_cast<std::size_t>(index)]);
    }

protected:
    host::Mtl* Answering(int mtlNum) const override;

private:
    const eTwoLayerMaterial& layers;
};

// The Sorrel material: another material with six parameters of the engine.
class eSorrelMtl : public eWrapperMtl, public host::IParamBlock {
public:
    eSorrelMtl(eScene& ownScene, std::size_t place, const eMaterialData& data, const eSorrelMaterial& kind)
        : eWrapperMtl(ownScene, place, data), sorrel(kind) {}

    host::ClassId ClassID() const override { return host::kSorrelClass; }
    int NumSubMtls() const override { return 1; }
    host::Mtl* GetSubMtl(int) const override { return Material(sorrel.material); }
    int NumSubTexmaps() const override;
    host::Texmap* GetSubTexmap(int map) const override;

    host::IParamBlock* GetParamBlock(int block) const override;
    bool GetValue(int id, host::TimeValue t, int& value) const override;
    bool GetValue(int id, host::TimeValue t, float& value) const override;
    bool GetValue(int id, host::TimeValue t, host::Texmap*& value) const override;

    void EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const override;
    // The material, mask, environment map.
    int NumRefs() const override { return 3; }
    host::ReferenceTarget* GetReference(int reference) const override;

protected:
    host::Mtl* Answering(int) const override { return GetSubMtl(0); }

private:
    const eSorrelMaterial& sorrel;
};

}  // namespace standalone
