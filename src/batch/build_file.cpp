#include "batch/build_file.h"

#include <string_view>

#include "batch/build_folder.h"
#include "batch/shell_word.h"

namespace batch {

namespace {

// `$out` is always the report, or the list of models. Exit status 3 tells of errors that the report has; a
// scene that can't be read, status 2, is told by its export. What a run hangs on is told on lines with a
// prefix, which may hold any letters, where a depfile breaks at some. What an earlier run has left must not
// pass for the result of one that fails. An export that a farm has done is only entered.
constexpr const char* kRules = R"(ninja_required_version = 1.10
msvc_deps_prefix = source: 
tell = sed -n '/^missing: /!s/^/source: /p'

rule models
  command = rm -f $out; { $call --models $out --sources $sources > $log 2>&1 || [ $$? -eq 2 ]; } && $tell $sources
  deps = msvc
  description = models of $scene

rule export
  command = [ -s $done ] || $export; { read s < $done; } 2> /dev/null && rm -f $done && { [ $$s -eq 0 ] || [ $$s -eq 3 ]; } && $tell $sources
  deps = msvc
  description = $scene
)";

// A text in which the letters of `special` and the dollar stand for themselves.
std::string Escaped(const std::string& text, std::string_view special) {
    std::string escaped;
    for (const char letter : text) {
        escaped += letter == '$' || special.find(letter) != special.npos ? "$" : "";
        escaped += letter;
    }
    return escaped;
}

std::string NinjaValue(const std::string& text) {
    return Escaped(text, "");
}

std::string NinjaPath(const std::string& path) {
    return Escaped(path, " :");
}

std::string CallOf(const eBuildWork& work, const char* command, const eBatchScene& scene) {
    std::string call = "cd " + ShellWord(work.folder) + " && " + ShellWord(work.program) + " " + command +
                       " " + ShellWord(scene.path);
    for (const std::vector<std::string>* flags : {&work.flags, &scene.flags}) {
        for (const std::string& flag : *flags) {
            call += " " + ShellWord(flag);
        }
    }
    return call;
}

std::string Edge(const char* rule, const eStepFiles& files, const eBatchScene& scene) {
    return "\nbuild " + NinjaPath(files.result) + ": " + rule + " " + NinjaPath(scene.path) +
           "\n  scene = " + NinjaValue(scene.path) + "\n  sources = " + NinjaValue(ShellWord(files.sources));
}

std::string ModelsEdge(const eBuildWork& work, const eBatchScene& scene, const eStepFiles& files) {
    return Edge("models", files, scene) + "\n  log = " + NinjaValue(ShellWord(files.log)) +
           "\n  call = " + NinjaValue(CallOf(work, "plan", scene)) + "\n";
}

std::string ExportEdge(const eBuildWork& work, const eBatchScene& scene, const eSceneFiles& files) {
    return Edge("export", files.exports, scene) + "\n  done = " + NinjaValue(ShellWord(files.done)) +
           "\n  export = " + NinjaValue(ExportText(work, scene)) + "\n";
}

std::string Phony(const char* name, const std::string& inputs) {
    return std::string("\nbuild ") + name + ": phony" + inputs + "\n";
}

}  // namespace

std::string ExportText(const eBuildWork& work, const eBatchScene& scene) {
    const eSceneFiles files = FilesOf(work.buildFolder, scene.path);
    return "{ rm -f " + ShellWord(files.exports.result) + "; ( " + CallOf(work, "export", scene) +
           " --keep-options --quiet --report " + ShellWord(files.exports.result) + " --sources " +
           ShellWord(files.exports.sources) +
           (work.keepsManifests ? " --manifest " + ShellWord(files.manifest) : "") + " > " +
           ShellWord(files.exports.log) + " 2>&1 ); s=$?; [ $s -ge 128 ] || echo $s > " +
           ShellWord(files.done) + "; }";
}

std::string BuildFileText(const eBuildWork& work) {
    std::string text = kRules;
    std::string models;
    std::string reports;
    for (const eBatchScene& scene : work.scenes) {
        const eSceneFiles files = FilesOf(work.buildFolder, scene.path);
        text += ModelsEdge(work, scene, files.models);
        text += ExportEdge(work, scene, files);
        models += " $\n  " + NinjaPath(files.models.result);
        reports += " $\n  " + NinjaPath(files.exports.result);
    }
    return text + Phony("models", models) + Phony("exports", reports);
}

}  // namespace batch
