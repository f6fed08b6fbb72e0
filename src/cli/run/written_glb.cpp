#include "cli/run/written_glb.h"

#include <optional>

#include "cli/flags/language_flag.h"
#include "cli/flags/option_path.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"

namespace cli {

void AddWrittenModelFlags(CLI::App& command, eWrittenModelFlags& flags) {
    command
        .add_option("MODEL", flags.model,
                    "The folder of a model in the resource tree, or its .mdl where a folder has several")
        ->required();
    command.add_option("--fps", flags.options.framesPerSecond, "Frames per second of the clips (30 without)")
        ->check(CLI::Range(0.001, 100000.0));
    command
        .add_option("--metres-per-unit", flags.options.metresPerUnit,
                    "Size of a scene unit, in which support points are stored (1 without)")
        ->check(CLI::Range(1e-6, 1e6));
    command
        .add_option("--common", flags.commonTextures,
                    "Folder of the common textures; else texture/common in the nearest folder above")
        ->type_name("DIR");
    AddLanguageFlag(command);
}

gltf::eGlbFile ReadWrittenGlb(const eWrittenModelFlags& flags) {
    gltf::eGlbOptions options = flags.options;
    const std::optional<std::string> place = FolderOption(flags.model);
    const std::optional<std::string> common =
        flags.commonTextures.empty() ? std::string() : FolderOption(flags.commonTextures);
    gltf::eGlbFile glb;
    if (!place || !common) {
        glb.problem = Utf8Words(ePhrase::PathUnusable, place ? flags.commonTextures : flags.model);
    } else {
        options.commonTextures = *common;
        glb = gltf::MakeGlb(*place, options);
    }
    for (const eBilingual& warning : glb.warnings) {
        TellWarning(warning.At(flags.model));
    }
    if (glb.content.empty()) {
        TellError(glb.problem);
    }
    return glb;
}

int FinishWrittenModel(const gltf::eGlbFile& glb, const std::string& target, const std::string& content) {
    if (const eBilingual problem = WriteNativeFile(target, content); !problem.IsEmpty()) {
        TellError(problem.At(target));
        return kExitFatal;
    }
    eBilingual counts = Utf8Words(ePhrase::CountBone, glb.bones);
    counts.AddToList(Utf8Words(ePhrase::CountMesh, glb.meshes));
    counts.AddToList(Utf8Words(ePhrase::CountTriangle, glb.triangles));
    counts.AddToList(Utf8Words(ePhrase::CountClip, glb.clips));
    counts.AddToList(Utf8Words(ePhrase::CountByte, content.size()));
    Print(counts.At(target));
    return kExitDone;
}

}  // namespace cli
