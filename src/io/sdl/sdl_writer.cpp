#include "io/sdl/sdl_writer.h"

#include <array>
#include <cmath>

#include "base/diagnostics.h"
#include "base/format.h"
#include "base/number_text.h"

namespace xIo::xSdl {
namespace {

// The letter behind the backslash for each byte that is escaped, 0 for all others.
constexpr std::array<char, 256> MakeEscapes() {
    std::array<char, 256> letters{};
    letters['\\'] = '\\';
    letters['"'] = '"';
    letters['\n'] = 'n';
    letters['\r'] = 'r';
    letters['\t'] = 't';
    return letters;
}

constexpr std::array<char, 256> escapes = MakeEscapes();

char EscapeOf(char byte) {
    return escapes[static_cast<unsigned char>(byte)];
}

}  // namespace

struct eWriter::eState {
    std::uint16_t depth = 0;
    bool separatorPending = false;
    bool lineEndPending = false;
    bool hexNext = false;
    // Per open block its start in the text; above it, negative, the position where it was still empty.
    std::vector<std::int32_t> marks;
    eMemoryStream buffer{1024, 1024};

    void Put(std::string_view bytes) { buffer.Write(bytes.data(), static_cast<int>(bytes.size())); }
    void StartToken();
    void PutEscaped(std::string_view text);
    bool TakeBackEmptyBlock();
};

void eWriter::eState::StartToken() {
    if (lineEndPending) {
        if (buffer.Size() != 0) {
            Put("\r\n");
        }
        separatorPending = false;
        lineEndPending = false;
        for (int tab = 0; tab < depth; ++tab) {
            buffer.WriteByte('\t');
        }
    }
    if (separatorPending) {
        separatorPending = false;
        buffer.WriteByte(' ');
    }
}

void eWriter::eState::PutEscaped(std::string_view text) {
    std::size_t plainBegin = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (const char letter = EscapeOf(text[index]); letter != 0) {
            Put(text.substr(plainBegin, index - plainBegin));
            const char pair[] = {'\\', letter};
            Put({pair, sizeof pair});
            plainBegin = index + 1;
        }
    }
    Put(text.substr(plainBegin));
}

// At the end of a block: if nothing was written since DropIfEmpty, the text is cut where the block began.
bool eWriter::eState::TakeBackEmptyBlock() {
    if (marks.empty() || marks.back() >= 0) {
        return false;
    }
    const std::int32_t emptyPosition = -marks.back();
    marks.pop_back();
    if (marks.empty() || emptyPosition != buffer.Position()) {
        return false;
    }
    buffer.Seek(marks.back(), fromStart);
    buffer.Truncate();
    marks.pop_back();
    return true;
}

eWriter::eWriter() = default;
eWriter::~eWriter() {
    Close();
}

bool eWriter::OpenFile(const std::string& path) {
    Close();
    ownFile = std::make_unique<eFileStream>();
    ownFile->Open(path, streamWrite | streamTruncate | streamPrompt);
    target = ownFile.get();
    state = std::make_unique<eState>();
    return true;
}

void eWriter::Attach(eStream* stream) {
    Close();
    target = stream;
    state = std::make_unique<eState>();
}

bool eWriter::Close() {
    if (!IsOpen()) {
        return true;
    }
    state->separatorPending = false;
    if (state->buffer.Size() != 0) {
        state->StartToken();
    }
    state->buffer.Seek(0, fromStart);
    target->WriteFrom(state->buffer, -1);
    state.reset();
    target = nullptr;
    const bool complete = ownFile == nullptr || ownFile->Close();
    ownFile.reset();
    return complete;
}

eWriter& eWriter::Word(std::string_view text) {
    state->StartToken();
    state->Put(text);
    state->separatorPending = true;
    return *this;
}

eWriter& eWriter::String(std::string_view text) {
    state->StartToken();
    state->buffer.WriteByte('"');
    state->PutEscaped(text);
    state->buffer.WriteByte('"');
    state->separatorPending = true;
    return *this;
}

eWriter& eWriter::Integer(std::int32_t value) {
    char text[numberTextSize];
    const char* end = state->hexNext ? WriteHexText(text, static_cast<std::uint32_t>(value))
                                     : WriteIntegerText(text, value);
    state->hexNext = false;
    return Word({text, end});
}

eWriter& eWriter::Real(float value) {
    char text[numberTextSize];
    if (std::isfinite(value)) {
        return Word({text, WriteRealText(text, value)});
    }
    const std::string shown(text, WriteRealText(text, value));
    Warn(__FILE__, __LINE__,
         (format("Saving invalid floating number %1%. It was truncated to 0") % shown).Text());
    return Word("0");
}

eWriter& eWriter::BlockBegin() {
    state->marks.push_back(state->buffer.Position());
    state->StartToken();
    ++state->depth;
    state->buffer.WriteByte('{');
    return *this;
}

eWriter& eWriter::BlockEnd() {
    --state->depth;
    if (state->TakeBackEmptyBlock()) {
        return *this;
    }
    if (!state->marks.empty()) {
        state->marks.pop_back();
    }
    state->separatorPending = false;
    state->StartToken();
    state->buffer.WriteByte('}');
    return *this;
}

eWriter& eWriter::BlockEndLine() {
    BlockEnd();
    return EndLine();
}

eWriter& eWriter::EndLine() {
    state->lineEndPending = true;
    return *this;
}

eWriter& eWriter::Hexadecimal() {
    state->hexNext = true;
    return *this;
}

eWriter& eWriter::Decimal() {
    state->hexNext = false;
    return *this;
}

eWriter& eWriter::DropIfEmpty() {
    state->marks.push_back(-state->buffer.Position());
    return *this;
}

}  // namespace xIo::xSdl
