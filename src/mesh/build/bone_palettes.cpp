#include "mesh/build/bone_palettes.h"

#include <bitset>

#include "scene/export_bone.h"

namespace {

using eBoneSet = std::bitset<kBonesPerSkin + 1>;

constexpr std::int32_t kNoPalette = -1;

template <class Visit>
void ForEachNumber(const eExportMesh& mesh, const eExportFace& face, Visit visit) {
    for (const std::uint32_t vertex : face.v) {
        for (const std::uint8_t number : mesh.vertexSkins[vertex].bones) {
            visit(number);
        }
    }
}

// The numbers of a face that a palette lacks; 0, no bone, counts like any other.
int CountFresh(const eExportMesh& mesh, const eExportFace& face, const eBoneSet& used) {
    std::uint8_t fresh[3 * kInfluencesPerCorner];
    int count = 0;
    ForEachNumber(mesh, face, [&](std::uint8_t number) {
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
std::size_t FillPalette(eExportMesh& mesh, std::int32_t number, eBoneSet& used) {
    int capacity = kBonesPerPalette;
    std::size_t left = 0;
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        if (mesh.facePalettes[face] != kNoPalette) {
            continue;
        }
        const int fresh = CountFresh(mesh, mesh.faces[face], used);
        if (fresh > capacity) {
            ++left;
            continue;
        }
        if (fresh != 0) {
            ForEachNumber(mesh, mesh.faces[face], [&](std::uint8_t bone) { used.set(bone); });
            capacity -= fresh;
        }
        mesh.facePalettes[face] = number;
    }
    return left;
}

eBonePalette MakePalette(const eBoneSet& used) {
    eBonePalette palette;
    for (std::size_t number = 0; number < used.size(); ++number) {
        if (used[number]) {
            palette.entries[palette.count++] = static_cast<std::uint8_t>(number);
        }
    }
    return palette;
}

}  // namespace

void BuildBonePalettes(eExportBone& bone) {
    bone.mesh.facePalettes.assign(bone.mesh.faces.size(), kNoPalette);
    for (std::size_t left = bone.mesh.faces.size(); left != 0;) {
        eBoneSet used;
        left = FillPalette(bone.mesh, static_cast<std::int32_t>(bone.palettes.size()), used);
        bone.palettes.push_back(MakePalette(used));
    }
}
