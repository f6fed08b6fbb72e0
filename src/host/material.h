#pragma once

#include <string>
#include <vector>

#include "host/scene_element.h"
#include "host/shade.h"
#include "host/values.h"

namespace host {

class Texmap;

// A file that the scene uses.
class AssetUser {
public:
    virtual ~AssetUser() = default;
    // The full path, bytes in code page 1251; empty if the host knows none.
    virtual std::string GetFullFilePath() const = 0;
    // Every path where the host has looked for a file that is missing, bytes in code page 1251; empty where
    // it does not say.
    virtual std::vector<std::string> TriedPaths() const { return {}; }
};

// Receives the files of EnumAuxFiles one by one.
class AssetEnumCallback {
public:
    virtual ~AssetEnumCallback() = default;
    virtual void RecordAsset(const AssetUser& asset) = 0;
};

// What materials and texture maps have in common.
class MtlBase : public ReferenceTarget {
public:
    // Without flags only files that exist are listed.
    static constexpr std::uint32_t kListMissingFiles = 0x100;

    virtual const std::string& GetName() const = 0;
    // Settles the parameters for the time and narrows `valid` to the interval in which they hold.
    virtual void Update(TimeValue t, Interval& valid) = 0;

    virtual int NumSubTexmaps() const { return 0; }
    virtual Texmap* GetSubTexmap(int) const { return nullptr; }

    // Lists the files of this element and of what it refers to.
    virtual void EnumAuxFiles(AssetEnumCallback&, std::uint32_t /*flags*/) const {}
};

// The parameters of a material: read by their number; false if there is no such parameter of that type.
class IParamBlock {
public:
    virtual ~IParamBlock() = default;
    virtual bool GetValue(int id, TimeValue t, int& value) const = 0;
    virtual bool GetValue(int id, TimeValue t, float& value) const = 0;
    virtual bool GetValue(int id, TimeValue t, Texmap*& value) const = 0;
};

class Mtl : public MtlBase {
public:
    // Bit of Requirements.
    static constexpr std::uint32_t kTwoSided = 0x1;

    std::uint32_t SuperClassID() const override { return kMaterialSuperClass; }

    virtual bool IsMultiMtl() const { return false; }
    virtual int NumSubMtls() const { return 0; }
    // May be null.
    virtual Mtl* GetSubMtl(int) const { return nullptr; }

    virtual IParamBlock* GetParamBlock(int) const { return nullptr; }

    virtual Color GetAmbient(int /*mtlNum*/, bool /*backFace*/) const { return {}; }
    virtual Color GetDiffuse(int /*mtlNum*/, bool /*backFace*/) const { return {}; }
    virtual Color GetSpecular(int /*mtlNum*/, bool /*backFace*/) const { return {}; }
    virtual float GetShininess(int /*mtlNum*/, bool /*backFace*/) const { return 0; }
    virtual float GetShinStr(int /*mtlNum*/, bool /*backFace*/) const { return 0; }
    // 0 opaque, 1 invisible.
    virtual float GetXParency(int /*mtlNum*/, bool /*backFace*/) const { return 0; }
    // Bit mask for a sub-material, or for the whole material with -1.
    virtual std::uint32_t Requirements(int /*subMtl*/) const { return 0; }

    // Fills context.out.
    virtual void Shade(ShadeContext& context) = 0;
};

// The standard material, class kStandardClass: the only one whose map amounts can be read.
class StdMtl : public Mtl {
public:
    // The map channel that belongs to a sub-map index.
    virtual int StdIDToChannel(int id) const = 0;
    virtual bool MapEnabled(int channel) const = 0;
    virtual float GetTexmapAmt(int channel, TimeValue t) const = 0;
};

class Texmap : public MtlBase {
public:
    std::uint32_t SuperClassID() const override { return kTexmapSuperClass; }

    // Where GetUVWSource takes the coordinates from.
    enum UvwSource { kExplicit = 0, kObjectXYZ = 1, kVertexColor = 2, kWorldXYZ = 3 };

    virtual Matrix3 GetUVTransform() const { return {}; }
    virtual int GetUVWSource() const { return kObjectXYZ; }
    virtual int GetMapChannel() const { return 1; }
    virtual void LoadMapFiles(TimeValue) {}

    // What a bitmap map makes of its picture on the way to EvalColor, its crop and output curve, as a text;
    // empty for a picture shown whole and unchanged. Equal texts stand for equal settings.
    virtual std::string PictureSettings() const { return {}; }

    virtual AColor EvalColor(ShadeContext& context) = 0;
    virtual float EvalMono(ShadeContext& context) = 0;
};

inline constexpr ClassId kStandardClass{2, 0};
inline constexpr ClassId kMultiClass{0x200, 0};
inline constexpr ClassId kTwoLayerClass{0x140575, 0};
inline constexpr ClassId kSorrelClass{0x71CA8543, 0x0C80AD68};

inline constexpr ClassId kBitmapClass{0x240, 0};
inline constexpr ClassId kNormalBumpClass{0x243E22C6, 0x63F6A014};
inline constexpr ClassId kMixClass{0x230, 0};
inline constexpr ClassId kRgbMultiplyClass{0x290, 0};
inline constexpr ClassId kVertexColorMapClass{0x934851, 0};

// Numbers of the sub-maps of a material.
inline constexpr int kDiffuseMap = 1;
inline constexpr int kSpecularLevelMap = 3;
inline constexpr int kBumpMap = 8;

}  // namespace host
