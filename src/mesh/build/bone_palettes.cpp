#include "mesh/build/bone_palettes.h"

#include <bitset>
#include <vector>

#include "scene/export_bone.h"

namespace {

using eBoneSet = std::bitset<kBonesPerSkin + 1>;

template <class Visit>
void ForEachNumber(eExportFaceSkin& face, Visit visit) {
    for (auto& corner : face.bones) {
        for (std::uint8_t& number : corner) {
            visit(number);
        }
    }
}

// The numbers of a face that a palette lacks; 0, no bone, counts like any other.
int CountFresh(eExportFaceSkin& face, const eBoneSet& used) {
    std::uint8_t fresh[3 * kInfluencesPerCorner];
    int count = 0;
    ForEachNumber(face, [&](std::uint8_t number) {
        bool isFresh = !used[number];
        for (int i = 0; isFresh && i < count; ++i) {
            isFresh = fresh[i] != number;
        }
        if (isFresh) {
            fresh[count++] = number;
        }
    });
    return count;
}

// Gives the palette every unassigned face that fits; the number of faces left.
std::size_t FillPalette(std::vector<eExportFaceSkin>& faces, int number, eBoneSet& used) {
    int capacity = kBonesPerPalette;
    std::size_t left = 0;
    for (eExportFaceSkin& face : faces) {
        if (face.palette >= 0) {
            continue;
        }
        const int fresh = CountFresh(face, used);
        if (fresh > capacity) {
            ++left;
            continue;
        }
        ForEachNumber(face, [&](std::uint8_t bone) { used.set(bone); });
        capacity -= fresh;
        face.palette = number;
    }
    return left;
}

eBonePalette MakePalette(const eBoneSet& used, std::uint8_t (&placeOf)[kBonesPerSkin + 1]) {
    eBonePalette palette;
    for (std::size_t number = 0; number < used.size(); ++number) {
        if (used[number]) {
            placeOf[number] = palette.count;
            palette.entries[palette.count++] = static_cast<std::uint8_t>(number);
        }
    }
    return palette;
}

}  // namespace

void BuildBonePalettes(eExportBone& bone) {
    std::vector<eExportFaceSkin>& faces = bone.mesh.faceSkins;
    for (std::size_t left = faces.size(); left != 0;) {
        const int number = static_cast<int>(bone.palettes.size());
        eBoneSet used;
        left = FillPalette(faces, number, used);
        std::uint8_t placeOf[kBonesPerSkin + 1] = {};
        bone.palettes.push_back(MakePalette(used, placeOf));
        for (eExportFaceSkin& face : faces) {
            if (face.palette == number) {
                ForEachNumber(face, [&](std::uint8_t& entry) { entry = placeOf[entry]; });
            }
        }
    }
}
