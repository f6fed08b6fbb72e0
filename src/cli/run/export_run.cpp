#include "cli/run/export_run.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "answers/manifest_text.h"
#include "base/ansi.h"
#include "base/diagnostics.h"
#include "cli/flags/config_folder.h"
#include "cli/flags/option_path.h"
#include "cli/run/depfile.h"
#include "cli/run/run_record.h"
#include "cli/run/run_summary.h"
#include "cli/run/scene_file.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/malformed_name.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "cli/terminal/version.h"
#include "export/options_file.h"
#include "export/run_start.h"
#include "export/scan.h"
#include "mesh/strips/strip_messages.h"
#include "messages/io_reason.h"
#include "platform/dependency_layer.h"
#include "platform/drive_table.h"
#include "platform/file_layer.h"
#include "platform/folder.h"
#include "platform/folder_memory.h"
#include "platform/native_path.h"
#include "platform/own_program.h"
#include "platform/path_lookup.h"
#include "platform/temporary_folder.h"
#include "platform/terminal.h"
#include "platform/utf8_path.h"
#include "platform/write_fence.h"
#include "run/export.h"
#include "run/run_flags.h"
#include "standalone/plugin_module.h"
#include "standalone/standalone_host.h"
#include "standalone/terminal/terminal_face.h"

namespace cli {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kNative = platform::ePathForm::Native;

bool MapDrives(const std::vector<std::string>& drives) {
    for (const std::string& drive : drives) {
        const bool isWellFormed =
            drive.size() > 2 && drive[1] == '=' && platform::HasDrive(drive.substr(0, 1) + ":");
        if (!isWellFormed || !std::filesystem::is_directory(platform::PathFromUtf8(drive.substr(2)))) {
            isWellFormed ? TellError(ePhrase::PathNoFolder, "--drive " + drive)
                         : TellError(ePhrase::UsageDrive, drive);
            return false;
        }
        const std::filesystem::path folder =
            std::filesystem::absolute(platform::PathFromUtf8(drive.substr(2)));
        platform::MapDrive(drive[0], platform::Utf8FromPath(folder));
    }
    return true;
}

bool LoadPlugin(const std::string& file, standalone::PluginModule& plugin) {
    const eBilingual problem = file.empty() ? eBilingual() : plugin.Load(file);
    if (!problem.IsEmpty()) {
        TellError(problem);
    }
    return problem.IsEmpty();
}

// True if the platform can reach the resource root; otherwise the user is told.
bool IsReachable(const eName& resourceRoot) {
    const std::string& path = resourceRoot.Text();
    std::string onDisk;
    if (platform::FindOnDisk(path, onDisk).reason != platform::eIoReason::NoDrive) {
        return true;
    }
    TellError(ePhrase::RootOutOfReach, ToUtf8(path), path.substr(0, 1));
    return false;
}

// Lets a folder in memory stand in for the drive of the path if that is not there; true if it does.
bool LendDrive(const std::string& path) {
    std::string onDisk;
    const bool isMissing = platform::FindOnDisk(path, onDisk).reason == platform::eIoReason::NoDrive;
    if (isMissing) {
        platform::MakeFolder(NoFolder(), kNative);
        platform::MapDrive(path[0], NoFolder());
    }
    return isMissing;
}

// False if it can't be written; the user has been told.
bool KeepText(ePhrase what, const std::string& path, const std::string& text) {
    const eBilingual problem = WriteNativeFile(path, text);
    if (!problem.IsEmpty()) {
        TellError(ePhrase::ResultNotWritten, Utf8Words(what), path, problem);
    }
    return problem.IsEmpty();
}

// Writes the report if one is wanted; false as above.
bool KeepReport(const eExportFlags& flags, const eRunRecord& record) {
    return flags.report.empty() || KeepText(ePhrase::ResultReport, flags.report, ReportText(record));
}

// Notes what the run asks of the disk, if anybody wants to know.
class eDependencyWatch {
public:
    explicit eDependencyWatch(bool isWanted) {
        if (isWanted) {
            platform::UseFileLayer(&layer.emplace());
        }
    }
    ~eDependencyWatch() { platform::UseFileLayer(nullptr); }
    eDependencyWatch(const eDependencyWatch&) = delete;
    eDependencyWatch& operator=(const eDependencyWatch&) = delete;

    std::optional<platform::eDependencyLayer> layer;
};

std::vector<std::string> ResultsOf(const eRunRecord& record) {
    std::vector<std::string> results;
    for (const auto& [path, action] : record.files) {
        if (action != platform::eFileAction::Deleted && action != platform::eFileAction::Lost) {
            results.push_back(path);
        }
    }
    return results;
}

// Writes what the run hangs on, in the forms that are wanted; false as above.
bool KeepDependencies(const eExportFlags& flags, const eRunRecord& record, const eDependencyWatch& watch,
                      const std::vector<std::string>& others) {
    if (!watch.layer) {
        return true;
    }
    const eSources sources = SourcesOf(record, *watch.layer, others);
    const bool isListed =
        flags.sources.empty() || KeepText(ePhrase::ResultSources, flags.sources, SourceListText(sources));
    return (flags.depfile.empty() ||
            KeepText(ePhrase::ResultDepfile, flags.depfile, DepfileText(ResultsOf(record), sources))) &&
           isListed;
}

// What the run has made its files from, but for the program and the options: they change without a change of
// the scene.
eSources OwnSources(const Export& run, const eRunRecord& record, const platform::eDependencyLayer& layer) {
    eSources sources = SourcesOf(record, layer, {});
    const std::string options = platform::DiskPath(OptionsFilePath(run));
    sources.files.erase(options);
    sources.missing.erase(options);
    return sources;
}

// Where a run is watched, standard output is for the answer.
void PrintOnStandardError(const char* text) {
    std::fputs(text, stderr);
}

// One call of the exporter, with everything that watches it.
class eExportCall {
public:
    // Without a module the program's own exporter works.
    eExportCall(const eExportFlags& exportFlags, Clock::time_point start, eRunRecord soFar,
                standalone::eSceneData scene, const standalone::PluginModule* module, eDryRun* dryRun,
                const eDependencyWatch& dependencies)
        : flags(exportFlags),
          plugin(module),
          dry(dryRun),
          watch(dependencies),
          begin(start),
          record(std::move(soFar)),
          face(Terminal(exportFlags, dryRun)),
          host(std::move(scene)),
          fatalReport(*this) {
        host.SetProgressSink(&face);
        host.SetCancelSource(platform::WasInterrupted);
        previousObserver =
            platform::SetFileObserver([this](platform::eFileAction action, const std::string& path) {
                record.NoteFile(action, path);
                if (flags.verbose) {
                    TellFile(action, path);
                }
            });
        previousLog = xDebug::SetLogSink([this](const std::string& text) { TakeLogRecord(text); });
        previousHandler = xDebug::SetErrorHandler(&fatalReport);
        platform::RememberFolders(true);
        if (dry != nullptr) {
            if (!dry->findsModelsOnly) {
                platform::UseFileLayer(&dry->files);
            }
            exporter->journal = &dry->journal;
            stripMessageSink = PrintOnStandardError;
        } else if (!flags.manifest.empty()) {
            exporter->journal = &journal.emplace();
        }
    }
    ~eExportCall() {
        stripMessageSink = previousStripSink;
        xDebug::SetErrorHandler(previousHandler);
        xDebug::SetLogSink(previousLog);
        platform::SetFileObserver(previousObserver);
        platform::ClearWriteRoots();
        platform::RememberFolders(false);
    }
    eExportCall(const eExportCall&) = delete;
    eExportCall& operator=(const eExportCall&) = delete;

    int Run() {
        if (!PrepareConfig() || (flags.silent && !PrepareRoot(exporter->options.resourceRoot))) {
            return kExitUsage;
        }
        longestLockWait = flags.longestWait;
        const bool isAccepted = plugin != nullptr ? ExportByModule() : ExportByOwn();
        record.cancelled = platform::WasInterrupted();
        Finish(isAccepted ? ExitCode() : kExitUsage);
        return record.exitCode;
    }

private:
    // A fatal error ends the process: the report is written before.
    class eFatalReport : public xDebug::eErrorHandler {
    public:
        explicit eFatalReport(eExportCall& exportCall) : call(exportCall) {}
        void ShowError(const std::string& text) override {
            eErrorHandler::ShowError(text);
            call.Finish(kExitFatal);
        }

    private:
        eExportCall& call;
    };

    static standalone::eTerminal Terminal(const eExportFlags& flags, const eDryRun* dryRun) {
        static std::ostream nowhere(nullptr);
        standalone::eTerminal terminal = standalone::StandardTerminal();
        if (dryRun != nullptr && dryRun->isMute) {
            terminal.output = &nowhere;
        }
        terminal.onlyErrors = flags.quiet;
        terminal.speaksRussian = TerminalLanguage() == eLanguage::Russian;
        return terminal;
    }

    std::uint32_t OptionsWord() const { return flags.exportSelected ? kExportSelectedOption : 0; }

    bool IsAccepted(Export& run) { return ApplyFlags(run, flags) && PrepareRoot(run.options.resourceRoot); }

    // False if the flags were refused; so below.
    bool ExportByOwn() {
        bool isAccepted = true;
        const bool goesOn = dry == nullptr || !dry->endsAtOptions;
        exporter->optionsDialog = [&](Export& run) {
            isAccepted = IsAccepted(run);
            return isAccepted && goesOn;
        };
        if (flags.verbose) {
            exporter->meshOrderObserver = TellMeshOrder;
        }
        if (dry != nullptr && dry->findsModelsOnly) {
            FindModels();
        } else {
            exporter->DoExport(flags.scene.c_str(), nullptr, &host, flags.silent, OptionsWord());
        }
        return isAccepted;
    }

    // The beginning of an export.
    void FindModels() {
        BeginRun(*exporter, &host, flags.silent, OptionsWord());
        if (SettleOptions(*exporter)) {
            ClearRun(*exporter);
            ScanScene(*exporter);
        }
    }

    // The module begins with the stored options, so the flags are stored before.
    bool ExportByModule() {
        BeginRun(*exporter, &host, flags.silent, OptionsWord());
        if (!flags.silent) {
            LoadOptions(*exporter);
            if (!IsAccepted(*exporter)) {
                return false;
            }
            if (!SaveOptions(*exporter)) {
                TellError(ePhrase::OptionsNotKept, ConfigFolder(flags.config));
                return false;
            }
        }
        const std::unique_ptr<host::SceneExport> moduleExporter = plugin->NewExporter();
        if (moduleExporter == nullptr) {
            TellError(ePhrase::PluginMakesNone, flags.plugin);
            return false;
        }
        moduleExporter->DoExport(flags.scene.c_str(), nullptr, &host, flags.silent, OptionsWord());
        LoadOptions(*exporter);
        return true;
    }

    // A folder that is made for the user has the spelling that he typed.
    std::error_code MakeFolders(const std::string& path) const {
        std::error_code error;
        if (dry == nullptr) {
            std::filesystem::create_directories(platform::PathFromUtf8(path), error);
        }
        return error;
    }

    bool PrepareConfig() {
        const std::string folder = ConfigFolder(flags.config);
        if (folder.empty()) {
            TellError(ePhrase::OptionsNowhere);
            return false;
        }
        const std::optional<std::string> ansi = FolderOption(folder);
        const std::error_code error = MakeFolders(folder);
        if (!ansi || error) {
            TellError(ansi ? ReasonWords(error).At("--config " + folder)
                           : MalformedNameProblem("--config " + folder));
            return false;
        }
        host.SetConfigFolder(*ansi);
        return true;
    }

    // Nothing is written anywhere else: a scene is data from outside.
    bool PrepareRoot(const eName& resourceRoot) {
        isDriveLent = dry != nullptr && dry->needsNoRoot && LendDrive(resourceRoot.Text());
        if (!IsReachable(resourceRoot)) {
            return false;
        }
        if (flags.resourceRoot && !platform::HasDrive(*flags.resourceRoot)) {
            // Where it can't be made, the first file that can't be written tells.
            MakeFolders(*flags.resourceRoot);
        }
        if (!flags.noFence) {
            platform::AddWriteRoot(resourceRoot.Text());
            if (!flags.keepOptions) {
                platform::AddWriteRoot(ConfigFolder(flags.config), kNative);
            }
        }
        return true;
    }

    // Warnings of the base library are shown like the boxes; of a fatal error the box tells already.
    void TakeLogRecord(const std::string& text) {
        if (!text.starts_with("==")) {
            face.TellWarning(text.substr(0, text.find_last_not_of("\r\n") + 1));
        }
    }

    int ExitCode() const {
        if (record.cancelled) {
            return kExitCancelled;
        }
        return face.ErrorCount() > 0 ? kExitErrors : kExitDone;
    }

    void Finish(int exitCode) {
        record.options = exporter->options;
        record.models = exporter->modelReports;
        for (const standalone::eShownMessage& message : face.Messages()) {
            record.messages.push_back(Utf8Message(message));
        }
        record.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        record.exitCode = exitCode;
        platform::ClearWriteRoots();
        if (dry != nullptr) {
            if (isDriveLent) {
                platform::ClearDrives();  // paths are told as the options have them
            }
            dry->tell(*exporter, record);
            KeepDependencies(flags, record, watch, OtherSources());
            return;
        }
        const bool isReported = KeepReport(flags, record);
        const bool isListed = KeepManifest(exitCode);
        if ((!KeepDependencies(flags, record, watch, OtherSources()) || !isReported || !isListed) &&
            exitCode == kExitDone) {
            record.exitCode = kExitErrors;
        }
        if (!flags.quiet) {
            Print(SummaryOf(record, plugin == nullptr));
        }
    }

    // Of a run that has come to its end, if one is wanted; false if it can't be written, which is told.
    bool KeepManifest(int exitCode) const {
        if (!journal || (exitCode != kExitDone && exitCode != kExitErrors)) {
            return true;
        }
        const eSources sources = OwnSources(*exporter, record, *watch.layer);
        answers::eManifest manifest =
            answers::MakeManifest(*exporter, *journal, sources.files, sources.missing);
        manifest.program = std::string("zyrexport ") + kVersion;
        manifest.scene = platform::AbsoluteNative(flags.scene);
        const std::string folder = platform::NativeParent(platform::AbsoluteNative(flags.manifest));
        return KeepText(ePhrase::ResultManifest, flags.manifest, answers::ManifestText(manifest, folder));
    }

    // What the run hangs on that it hasn't read itself.
    std::vector<std::string> OtherSources() const {
        std::vector<std::string> others = {platform::OwnProgram(),
                                           platform::DiskPath(OptionsFilePath(*exporter))};
        if (plugin != nullptr) {
            others.push_back(platform::AbsoluteNative(flags.plugin));
        }
        return others;
    }

    const eExportFlags& flags;
    const standalone::PluginModule* const plugin;
    eDryRun* const dry;  // null: the files are written
    const eDependencyWatch& watch;
    const Clock::time_point begin;       // before the scene was read
    eRunRecord record;                   // holds what was told of the scene from the start
    std::optional<eRunJournal> journal;  // for a manifest
    standalone::eTerminalFace face;
    standalone::StandaloneHost host;
    const std::unique_ptr<Export> exporter = std::make_unique<Export>();  // with a module: for the options
    eFatalReport fatalReport;
    bool isDriveLent = false;
    platform::eFileObserver previousObserver;
    const eStripMessageSink previousStripSink = stripMessageSink;
    xDebug::eLogSink previousLog;
    xDebug::eErrorHandler* previousHandler = nullptr;
};

int Run(const eExportFlags& flags, eDryRun* dry) {
    standalone::PluginModule plugin;
    if (!MapDrives(flags.drives) || !LoadPlugin(flags.plugin, plugin)) {
        return kExitUsage;
    }
    const Clock::time_point begin = Clock::now();
    eDependencyWatch watch(!flags.depfile.empty() || !flags.sources.empty() || !flags.manifest.empty());
    standalone::eLoadResult loaded = ReadScene(flags.scene, flags.sceneFlags, flags.quiet);
    eRunRecord record;
    record.scene = flags.scene;
    record.messages = SceneMessages(flags.scene, loaded);
    if (!loaded.scene) {
        record.exitCode = kExitUsage;
        KeepReport(flags, record);
        KeepDependencies(flags, record, watch, {platform::OwnProgram()});
        return record.exitCode;
    }
    if (watch.layer && loaded.scene->temporaryFiles) {
        watch.layer->Disregard(loaded.scene->temporaryFiles->Path());
    }
    platform::CatchInterrupts();
    eExportCall call(flags, begin, std::move(record), std::move(*loaded.scene),
                     flags.plugin.empty() ? nullptr : &plugin, dry, watch);
    return call.Run();
}

}  // namespace

int RunExport(const eExportFlags& flags) {
    return Run(flags, nullptr);
}

int RunWithoutWriting(const eExportFlags& flags, eDryRun& dry) {
    return Run(flags, &dry);
}

}  // namespace cli
