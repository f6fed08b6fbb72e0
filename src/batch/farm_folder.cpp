#include "batch/farm_folder.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>

#include "batch/build_folder.h"
#include "batch/chunks.h"
#include "batch/shell_word.h"
#include "platform/utf8_path.h"

namespace batch {

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using platform::PathFromUtf8;

// The size of nothing: to begin a run costs as much as this many bytes of a scene.
constexpr std::uint64_t kLeastSize = 1 << 16;

bool Write(const std::string& file, const std::string& text) {
    std::ofstream stream(PathFromUtf8(file), std::ios::binary);
    stream << text;
    stream.close();
    return stream.good();
}

std::uint64_t SizeOf(const std::string& scene) {
    std::error_code error;
    const auto size = fs::file_size(PathFromUtf8(scene), error);
    return kLeastSize + (error ? 0 : size);
}

std::string TaskText(const eBuildWork& work, const std::map<std::string, const eBatchScene*>& scenes,
                     const std::vector<std::string>& handed, const std::vector<std::size_t>& chunk) {
    std::string text;
    for (const std::size_t piece : chunk) {
        const eBatchScene& scene = *scenes.at(handed[piece]);
        const std::string done = ShellWord(FilesOf(work.buildFolder, scene.path).done);
        text += "[ -s " + done + " ] || " + ExportText(work, scene) + "\n";
    }
    return text;
}

// A task that is begun again, because its machine was lost, goes on behind what it has done.
std::string ArrayText(const std::string& farm) {
    return "#!/bin/sh\nexec sh " + ShellWord(farm) + "$SLURM_ARRAY_TASK_ID.sh\n";
}

// Enters what the tasks have done, exports what they have not, and writes the summary.
std::string ClosingText(const eBuildWork& work, const std::string& farm) {
    const std::string build = ShellWord(work.buildFolder);
    const std::string end = ShellWord(farm + "end");
    const std::string soFar = ShellWord(farm + "end.tmp");
    return "#!/bin/sh\ncd " + build + " || exit 1\n" +
           "echo $(find . -name report.done | wc -l) scenes were exported by tasks\n" +
           "ninja --quiet -k 0 exports\necho $? > " + soFar + "\nmv " + soFar + " " + end + "\nexec " +
           ShellWord(work.program) + " batch --state --build " + build + "\n";
}

}  // namespace

std::string FarmFile(const std::string& buildFolder, const std::string& name) {
    return buildFolder + "/slurm/" + name;
}

std::optional<std::size_t> WriteFarmScripts(const eBuildWork& work, const std::vector<std::string>& handed,
                                            std::size_t tasks) {
    std::error_code error;
    const std::string farm = FarmFile(work.buildFolder, "");
    fs::remove_all(PathFromUtf8(farm), error);
    fs::create_directories(PathFromUtf8(farm), error);
    std::map<std::string, const eBatchScene*> scenes;
    for (const eBatchScene& scene : work.scenes) {
        scenes[scene.path] = &scene;
    }
    std::vector<std::uint64_t> sizes;
    std::ranges::transform(handed, std::back_inserter(sizes), SizeOf);
    const std::vector<std::vector<std::size_t>> chunks = ShareOut(sizes, tasks);
    bool isWritten =
        Write(farm + "task.sh", ArrayText(farm)) && Write(farm + "closing.sh", ClosingText(work, farm));
    for (std::size_t index = 0; isWritten && index < chunks.size(); ++index) {
        isWritten =
            Write(farm + std::to_string(index + 1) + ".sh", TaskText(work, scenes, handed, chunks[index]));
    }
    return isWritten ? std::optional(chunks.size()) : std::nullopt;
}

bool KeepFarmRun(const std::string& buildFolder, const eFarmRun& run) {
    ordered_json scenes = ordered_json::array();
    for (const eBatchScene& scene : run.scenes) {
        scenes.push_back(scene.path);
    }
    const ordered_json json = {{"schema", kBatchSchema}, {"array", run.arrayJob}, {"closing", run.closingJob},
                               {"report", run.report},   {"handed", run.handed},  {"before", run.before},
                               {"scenes", scenes}};
    const std::string file = FarmFile(buildFolder, "run.json");
    std::error_code error;
    if (Write(file + ".tmp", json.dump(1) + "\n")) {
        fs::rename(PathFromUtf8(file + ".tmp"), PathFromUtf8(file), error);
        return !error;
    }
    return false;
}

void ForgetFarmRun(const std::string& buildFolder) {
    std::error_code ignored;
    fs::remove(PathFromUtf8(FarmFile(buildFolder, "run.json")), ignored);
}

std::optional<eFarmRun> ReadFarmRun(const std::string& buildFolder) {
    std::ifstream stream(PathFromUtf8(FarmFile(buildFolder, "run.json")), std::ios::binary);
    const ordered_json json = ordered_json::parse(stream, nullptr, false);
    if (!json.is_object()) {
        return std::nullopt;
    }
    try {
        eFarmRun run{.arrayJob = json.at("array"),
                     .closingJob = json.at("closing"),
                     .scenes = {},
                     .handed = json.at("handed"),
                     .before = json.at("before"),
                     .report = json.at("report")};
        for (const ordered_json& path : json.at("scenes")) {
            run.scenes.push_back({path.get<std::string>(), {}});
        }
        return run;
    } catch (const ordered_json::exception&) {  // somebody has edited it
        return std::nullopt;
    }
}

std::optional<int> FarmEnd(const std::string& buildFolder) {
    std::ifstream stream(PathFromUtf8(FarmFile(buildFolder, "end")));
    int status = 0;
    return stream >> status ? std::optional(status) : std::nullopt;
}

std::size_t CountDone(const std::string& buildFolder, const std::vector<std::string>& handed) {
    return static_cast<std::size_t>(std::ranges::count_if(handed, [&](const std::string& scene) {
        std::error_code ignored;
        return fs::exists(PathFromUtf8(FilesOf(buildFolder, scene).done), ignored);
    }));
}

void ForgetUnentered(const std::string& buildFolder, const std::vector<eBatchScene>& scenes) {
    for (const eBatchScene& scene : scenes) {
        std::error_code ignored;
        fs::remove(PathFromUtf8(FilesOf(buildFolder, scene.path).done), ignored);
    }
}

}  // namespace batch
