#include "batch/build_file.h"

#include <string_view>

#include "batch/build_folder.h"

namespace batch {

namespace {

// `$out` is always the report, or the list of models. Exit status 3 tells of errors that the report has; a
// scene that can't be read, status 2, is told by its export. What a run hangs on is told on lines with a
// prefix, which may hold any letters, where a depfile breaks at some. What an earlier run has left must not
// pass for the result of one that fails.
constexpr const char* kRules = R"(ninja_required_version = 1.10
msvc_deps_prefix = source: 
tell = sed -n '/^missing: /!s/^/source: /p'

rule models
  command = rm -f $out; { $call --models $out --sources $sources > $log 2>&1 || [ $$? -eq 2 ]; } && $tell $sources
  deps = msvc
  description = models of $scene

rule export
  command = rm -f $out; { $call --keep-options --quiet --report $out --sources $sources > $log 2>&1 || [ $$? -eq 3 ]; } && $tell $sources
  deps = msvc
  description = $scene
)";

// In quotes that leave every letter as it is.
std::string ShellWord(const std::string& word) {
    std::string text = "'";
    for (const char letter : word) {
        text += letter == '\'' ? "'\\''" : std::string(1, letter);
    }
    return text + "'";
}

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

std::string Edge(const char* rule, const eStepFiles& files, const eBatchScene& scene,
                 const std::string& call) {
    return "\nbuild " + NinjaPath(files.result) + ": " + rule + " " + NinjaPath(scene.path) +
           "\n  call = " + NinjaValue(call) + "\n  scene = " + NinjaValue(scene.path) +
           "\n  sources = " + NinjaValue(ShellWord(files.sources)) +
           "\n  log = " + NinjaValue(ShellWord(files.log)) + "\n";
}

std::string Phony(const char* name, const std::string& inputs) {
    return std::string("\nbuild ") + name + ": phony" + inputs + "\n";
}

}  // namespace

std::string BuildFileText(const eBuildWork& work) {
    std::string text = kRules;
    std::string models;
    std::string reports;
    for (const eBatchScene& scene : work.scenes) {
        const eSceneFiles files = FilesOf(work.buildFolder, scene.path);
        text += Edge("models", files.models, scene, CallOf(work, "plan", scene));
        text += Edge("export", files.exports, scene,
                     CallOf(work, "export", scene) +
                         (work.keepsManifests ? " --manifest " + ShellWord(files.manifest) : ""));
        models += " $\n  " + NinjaPath(files.models.result);
        reports += " $\n  " + NinjaPath(files.exports.result);
    }
    return text + Phony("models", models) + Phony("exports", reports);
}

}  // namespace batch
