#pragma once

#include <string>

#include "io/streams/stream.h"
#include "io/streams/temporary_name.h"
#include "platform/file.h"

namespace xIo {

// The buffer size of all file streams of the export.
inline constexpr int fileBufferSize = 0x8000;

// A file on disk. A file that is written has its name with ".tmp" behind until it is closed, and takes its
// final name then in one step: the final name always holds a complete file. Where the file there has the
// same bytes and such files are left as they are (gathered_files.h), the .tmp goes instead, and the file is
// told as kept. The null device and streams with streamDirect go without that step.
//
// The first failed read, write or close is remembered and ends the work on the disk. When a file that was
// written is closed with a failure, the user is told the file and the reason, the .tmp stays as it is and the
// final name keeps its old content.
class eFileStream : public eStream {
public:
    eFileStream() = default;
    ~eFileStream() override;  // closes

    // flags: streamRead to streamDirect. False if the file can't be opened; every write is dropped then. With
    // streamPrompt the user is asked whether to try again, and a refusal is fatal. A path that the write
    // fence does not allow is told and never asked.
    bool Open(const std::string& path, std::uint32_t openFlags, int bufferSize = fileBufferSize);
    // The same for a path as the operating system spells it.
    bool OpenNative(const std::string& path, std::uint32_t openFlags, int bufferSize = fileBufferSize);
    // True if all went well: what was written is complete under the final name. A rename that fails asks the
    // user whether to try again, and a refusal is fatal. Nothing to do on a closed stream.
    bool Close();
    // Closes a file that is written without giving it its final name, and removes the .tmp.
    void Abandon();
    bool IsOpen() const { return file.IsOpen(); }

    // The first failure of the medium; ok while there is none.
    const platform::eIoStatus& Status() const { return status; }

    void Flush() override;
    void Truncate() override;

protected:
    void Fill() override;

private:
    bool OpenPaths(std::uint32_t openFlags, int bufferSize);
    bool OpenMedium(std::int64_t& length);
    platform::eIoStatus TryToOpen(std::int64_t& length);
    const char* OpenSuffix() const { return UsesTemporary() ? temporarySuffix : ""; }
    void SetBuffer(int length);
    void GiveFinalName();
    void KeepStandingFile();
    bool UsesTemporary() const;
    bool IsWorking() const { return file.IsOpen() && status.IsOk(); }
    bool SeekMedium(std::int64_t position);
    void Remember(const platform::eIoStatus& result);

    std::string finalPath;  // as it is told
    std::string diskPath;   // where it lies, looked up once at open
    platform::ePathForm pathForm = platform::ePathForm::Resource;
    platform::eFile file;
    platform::eIoStatus status;
    std::int64_t mediumPosition = 0;
};

// Asks the user what to do about the file that can't be opened or can't get its final name: returns to try
// again. A refusal is fatal.
void AskToRetry(const std::string& name, const platform::eIoStatus& status);

}  // namespace xIo
