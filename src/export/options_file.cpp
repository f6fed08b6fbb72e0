#include "export/options_file.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "io/streams/stream_file.h"
#include "io/streams/stream_memory.h"
#include "io/streams/whole_file.h"
#include "platform/file_layer.h"
#include "platform/folder_lock.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/write_fence.h"
#include "run/export.h"

namespace {

constexpr std::int32_t kVersion = 6;
constexpr std::size_t kTextSize = 1024;
constexpr int kFileSize = 3106;
constexpr std::int32_t kWrittenOne = 1;  // a field that nobody reads

// The layout; `file` is a reader or a writer and has one operation per kind of field.
//
// | Offset | Size | Field                     | From version |
// |      0 |    4 | version                   |            1 |
// |      4 | 14*1 | exportMesh to optionN     |            1 |
// |     18 |    4 | ambientPercent            |            1 |
// |     22 |    4 | 1                         |            1 |
// |     26 |    1 | optionO                   |            2 |
// |     27 |    4 | optionP                   |            3 |
// |     31 | 1024 | resourceRoot              |            3 |
// |   1055 |    1 | reverseAnimation          |            3 |
// |   1056 |    1 | selectedOnly              |            3 |
// |   1057 | 1024 | commonTextureSource       |            4 |
// |   2081 |    1 | currentRangeOnly          |            5 |
// |   2082 | 1024 | commonTextureTarget       |            6 |
template <class File, class Options>
void PassFields(File& file, int version, Options& options) {
    if (version >= 1) {
        file.Flag(options.exportMesh);
        file.Flag(options.exportAnimation);
        file.Flag(options.optionC);
        file.Flag(options.optionD);
        file.Flag(options.optionE);
        file.Flag(options.exportIK);
        file.Flag(options.optionG);
        file.Flag(options.optionH);
        file.Flag(options.exportGeometry);
        file.Flag(options.optionJ);
        file.Flag(options.optionK);
        file.Flag(options.exportLightsCameras);
        file.Flag(options.optionM);
        file.Flag(options.optionN);
        file.Integer(options.ambientPercent);
        file.One();
    }
    if (version >= 2) {
        file.Flag(options.optionO);
    }
    if (version >= 3) {
        file.Integer(options.optionP);
        file.Text(options.resourceRoot);
        file.Flag(options.reverseAnimation);
        file.Flag(options.selectedOnly);
    }
    if (version >= 4) {
        file.Text(options.commonTextureSource);
    }
    if (version >= 5) {
        file.Flag(options.currentRangeOnly);
    }
    if (version >= 6) {
        file.Text(options.commonTextureTarget);
    }
}

// Stops at the first field that a broken file lacks; this one and all behind it keep their values.
class eOptionsReader {
public:
    explicit eOptionsReader(xIo::eFileStream& source) : stream(source) {}

    void Flag(int& field) {
        if (Holds(1)) {
            field = stream.ReadValue<std::uint8_t>();
        }
    }
    void Flag(bool& field) {
        if (Holds(1)) {
            field = stream.ReadValue<std::uint8_t>() != 0;
        }
    }
    void Integer(std::int32_t& field) {
        if (Holds(sizeof field)) {
            field = stream.ReadValue<std::int32_t>();
        }
    }
    void One() {
        std::int32_t ignored = 0;
        Integer(ignored);
    }
    void Text(eName& field) {
        if (Holds(kTextSize)) {
            std::array<char, kTextSize> bytes;
            stream.Read(bytes.data(), kTextSize);
            field = eName(std::string(bytes.begin(), std::ranges::find(bytes, '\0')));
        }
    }

private:
    bool Holds(std::size_t size) {
        isComplete = isComplete && stream.Remaining() >= static_cast<int>(size);
        return isComplete;
    }

    xIo::eFileStream& stream;
    bool isComplete = true;
};

class eOptionsWriter {
public:
    explicit eOptionsWriter(xIo::eStream& target) : stream(target) {}

    void Flag(int field) { stream.WriteByte(static_cast<std::uint8_t>(field)); }
    void Integer(std::int32_t field) { stream.WriteValue(field); }
    void One() { stream.WriteValue(kWrittenOne); }
    void Text(const eName& field) {
        std::array<char, kTextSize> bytes{};
        field.Text().copy(bytes.data(), kTextSize - 1);
        stream.Write(bytes.data(), kTextSize);
    }

private:
    xIo::eStream& stream;
};

bool IsStored(const std::string& path, std::span<const std::uint8_t> content) {
    xIo::eFileStream stream;
    if (!stream.Open(path, xIo::streamRead) || stream.Remaining() != static_cast<int>(content.size())) {
        return false;
    }
    std::vector<std::uint8_t> stored(content.size());
    stream.Read(stored.data(), static_cast<int>(stored.size()));
    return std::ranges::equal(stored, content);
}

// Two runs that store at the same time do so one after the other: they share the file's .tmp.
bool Store(const std::string& path, std::span<const std::uint8_t> content) {
    constexpr std::chrono::seconds kLongestWait(10);
    platform::eFolderLock lock;
    std::string owner;
    const bool isLocked = platform::Files().IsLasting() && platform::IsWriteAllowed(path);
    if (isLocked && lock.Take(platform::NativeParent(platform::DiskPath(path)), kLongestWait, owner) ==
                        platform::eLockAnswer::InUse) {
        return false;
    }
    return xIo::StoreWholeFile(path, content).IsOk();
}

}  // namespace

std::string OptionsFilePath(const Export& run) {
    return run.host->GetDir(host::Interface::kPluginConfigDir) + "\\ZYREXPORT.CFG";
}

void LoadOptions(Export& run) {
    xIo::eFileStream stream;
    if (!stream.Open(OptionsFilePath(run), xIo::streamRead)) {
        return;
    }
    eOptionsReader reader(stream);
    std::int32_t version = 0;
    reader.Integer(version);
    if (version <= kVersion) {
        PassFields(reader, version, run.options);
    }
}

bool SaveOptions(const Export& run) {
    xIo::eMemoryStream content(kFileSize);
    eOptionsWriter writer(content);
    writer.Integer(kVersion);
    PassFields(writer, kVersion, run.options);
    // A file that is stored anew at each run would make everything that hangs on it out of date.
    return IsStored(OptionsFilePath(run), content.Content()) ||
           Store(OptionsFilePath(run), content.Content());
}
