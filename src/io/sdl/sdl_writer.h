// SDL text: tokens between braces, the name of a block being the first token inside it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "io/streams/stream_file.h"
#include "io/streams/stream_memory.h"

namespace xIo::xSdl {

// The layout is fixed to the byte: one blank between tokens, none inside a brace, none behind a closing one,
// tabs for the depth, CR LF on every platform. The text is held in memory until Close, so that blocks can be
// taken back and the target stays untouched should the run die.
//
//   writer.BlockBegin().Word("bone").String(name).EndLine();
//   writer.BlockBegin().Word("speed").Real(1.5f).BlockEndLine();
//   writer.BlockEndLine();
class eWriter {
public:
    eWriter();
    ~eWriter();  // closes
    eWriter(const eWriter&) = delete;
    eWriter& operator=(const eWriter&) = delete;

    // Opens the file through the .tmp step; a failure asks the user, and a refusal is fatal (stream_file.h).
    bool OpenFile(const std::string& path);
    // Writes to a stream that stays the caller's and must outlive Close.
    void Attach(eStream* target);
    // Hands the text to the target; an own file is closed and takes its final name. Nothing to do on a writer
    // that is not open. False if the file could not be completed; the user has been told.
    bool Close();
    bool IsOpen() const { return state != nullptr; }

    // The bytes as they are.
    eWriter& Word(std::string_view text);
    // In double quotes, with backslash, double quote, LF, CR and TAB escaped.
    eWriter& String(std::string_view text);
    // Decimal, or hexadecimal once after Hexadecimal.
    eWriter& Integer(std::int32_t value);
    // Six significant digits (number_text.h). A NaN or an infinity warns and is written as 0.
    eWriter& Real(float value);
    // The same of the number rounded to four decimals, half away from 0.
    eWriter& Rounded(float value);

    eWriter& BlockBegin();
    eWriter& BlockEnd();
    eWriter& BlockEndLine();
    eWriter& EndLine();

    eWriter& Hexadecimal();
    eWriter& Decimal();
    // Behind a block's header tokens: should nothing more be written in the block, its end takes it all back.
    eWriter& DropIfEmpty();

private:
    struct eState;
    std::unique_ptr<eState> state;
    eStream* target = nullptr;
    std::unique_ptr<eFileStream> ownFile;
};

}  // namespace xIo::xSdl
