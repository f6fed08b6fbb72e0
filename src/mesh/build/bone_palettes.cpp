#include "mesh/build/bone_palettes.h"

#include <array>
#include <vector>

#include "scene/export_bone.h"

namespace {

using eBoneSet = std::array<bool, kBonesPerSkin + 1>;  // by bone number

constexpr std::int32_t kNoPalette = -1;

// A palette that takes faces, in the order in which they are offered.
class ePaletteFaces {
public:
    explicit ePaletteFaces(const eExportMesh& ownMesh)
        : mesh(ownMesh), isServed(ownMesh.vertexSkins.size()) {}

    const eBoneSet& Used() const { return used; }

    // False if the bones of the face find no room.
    bool Take(const eExportFace& face) {
        eNumbers fresh;
        for (const std::uint32_t vertex : face.v) {
            if (isServed[vertex] == 0) {
                AddFresh(mesh.vertexSkins[vertex], fresh);
            }
        }
        if (fresh.count > capacity) {
            return false;
        }
        capacity -= fresh.count;
        for (int i = 0; i < fresh.count; ++i) {
            used[fresh.list[i]] = true;
        }
        for (const std::uint32_t vertex : face.v) {
            isServed[vertex] = 1;
        }
        return true;
    }

private:
    struct eNumbers {
        std::uint8_t list[3 * kInfluencesPerCorner];
        int count = 0;
    };

    // The numbers that the palette lacks; 0, no bone, counts like any other.
    void AddFresh(const eExportVertexSkin& skin, eNumbers& fresh) const {
        for (const std::uint8_t number : skin.bones) {
            bool isFresh = !used[number];
            for (int i = 0; isFresh && i < fresh.count; ++i) {
                isFresh = fresh.list[i] != number;
            }
            if (isFresh) {
                fresh.list[fresh.count++] = number;
            }
        }
    }

    const eExportMesh& mesh;
    eBoneSet used{};
    int capacity = kBonesPerPalette;
    std::vector<std::uint8_t> isServed;  // by vertex, 1 where its bones are among those used
};

// Gives the palette every unassigned face that fits; the number of faces left.
std::size_t FillPalette(eExportMesh& mesh, std::int32_t number, ePaletteFaces& palette) {
    std::size_t left = 0;
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        if (mesh.facePalettes[face] != kNoPalette) {
            continue;
        }
        if (palette.Take(mesh.faces[face])) {
            mesh.facePalettes[face] = number;
        } else {
            ++left;
        }
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
        ePaletteFaces palette(bone.mesh);
        left = FillPalette(bone.mesh, static_cast<std::int32_t>(bone.palettes.size()), palette);
        bone.palettes.push_back(MakePalette(palette.Used()));
    }
}
