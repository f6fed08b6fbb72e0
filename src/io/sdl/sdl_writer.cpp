#include "io/sdl/sdl_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

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

// A text that grows at its end, in pieces that stay where they are: a long one takes no more room than it
// needs.
class eTextBuffer {
public:
    eTextBuffer() { AddPiece(0, kSmallest); }
    eTextBuffer(const eTextBuffer&) = delete;
    eTextBuffer& operator=(const eTextBuffer&) = delete;

    std::int32_t Size() const {
        return pieces.back().begin + static_cast<std::int32_t>(end - pieces.back().bytes.get());
    }
    // The end of the text, with room for so many bytes; they belong to the text once EndAt has told where
    // they end.
    char* Room(std::size_t count) {
        if (static_cast<std::size_t>(roomEnd - end) < count) {
            Grow(count);
        }
        return end;
    }
    void EndAt(char* newEnd) { end = newEnd; }

    // To an earlier size.
    void CutTo(std::int32_t size) {
        while (pieces.back().begin > size) {
            pieces.pop_back();
        }
        const ePiece& last = pieces.back();
        end = last.bytes.get() + (size - last.begin);
        roomEnd = last.bytes.get() + last.room;
    }

    void WriteTo(eStream& stream) const {
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const std::int32_t pieceEnd = i + 1 < pieces.size() ? pieces[i + 1].begin : Size();
            stream.Write(pieces[i].bytes.get(), pieceEnd - pieces[i].begin);
        }
    }

private:
    static constexpr std::size_t kSmallest = 4096, kLargest = std::size_t{1} << 18;

    struct ePiece {
        std::int32_t begin = 0;  // in the text
        std::unique_ptr<char[]> bytes;
        std::size_t room = 0;
    };

    void Grow(std::size_t count) {
        const std::int32_t size = Size();
        if (count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - size)) {
            Fail(__FILE__, __LINE__, "a text can't hold 2 GiB");
        }
        AddPiece(size, std::max(count, std::clamp(static_cast<std::size_t>(size), kSmallest, kLargest)));
    }

    void AddPiece(std::int32_t begin, std::size_t room) {
        pieces.push_back({begin, std::make_unique_for_overwrite<char[]>(room), room});
        CutTo(begin);
    }

    std::vector<ePiece> pieces;
    char* end = nullptr;  // in the last piece
    char* roomEnd = nullptr;
};

char* Append(char* out, std::string_view bytes) {
    return std::copy(bytes.begin(), bytes.end(), out);
}

}  // namespace

struct eWriter::eState {
    std::uint16_t depth = 0;
    bool separatorPending = false;
    bool lineEndPending = false;
    bool hexNext = false;
    // Per open block its start in the text; above it, negative, the position where it was still empty.
    std::vector<std::int32_t> marks;
    eTextBuffer text;

    // Writes what is due in front of a token, and gives the place for it with so much room.
    char* StartToken(std::size_t room) {
        constexpr std::size_t kLineEnd = 2;
        char* out = text.Room(room + kLineEnd + depth);
        if (lineEndPending) {
            return StartLine(out);
        }
        if (separatorPending) {
            *out++ = ' ';
            separatorPending = false;
        }
        return out;
    }
    char* StartLine(char* out);
    void EndToken(char* end) {
        text.EndAt(end);
        separatorPending = true;
    }
    bool TakeBackEmptyBlock();
};

char* eWriter::eState::StartLine(char* out) {
    if (text.Size() != 0) {
        out = Append(out, "\r\n");
    }
    lineEndPending = false;
    separatorPending = false;
    return std::fill_n(out, depth, '\t');
}

// At the end of a block: if nothing was written since DropIfEmpty, the text is cut where the block began.
bool eWriter::eState::TakeBackEmptyBlock() {
    if (marks.empty() || marks.back() >= 0) {
        return false;
    }
    const std::int32_t emptyPosition = -marks.back();
    marks.pop_back();
    if (marks.empty() || emptyPosition != text.Size()) {
        return false;
    }
    text.CutTo(marks.back());
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
    eTextBuffer& text = state->text;
    if (text.Size() != 0) {
        text.EndAt(state->StartToken(0));
    }
    text.WriteTo(*target);
    state.reset();
    target = nullptr;
    const bool complete = ownFile == nullptr || ownFile->Close();
    ownFile.reset();
    return complete;
}

eWriter& eWriter::Word(std::string_view text) {
    state->EndToken(Append(state->StartToken(text.size()), text));
    return *this;
}

eWriter& eWriter::String(std::string_view text) {
    char* out = state->StartToken(2 * text.size() + 2);
    *out++ = '"';
    for (const char byte : text) {
        const char letter = EscapeOf(byte);
        if (letter != 0) {
            *out++ = '\\';
        }
        *out++ = letter != 0 ? letter : byte;
    }
    *out++ = '"';
    state->EndToken(out);
    return *this;
}

eWriter& eWriter::Integer(std::int32_t value) {
    char* const out = state->StartToken(numberTextSize);
    state->EndToken(state->hexNext ? WriteHexText(out, static_cast<std::uint32_t>(value))
                                   : WriteIntegerText(out, value));
    state->hexNext = false;
    return *this;
}

eWriter& eWriter::Real(float value) {
    if (std::isfinite(value)) {
        state->EndToken(WriteRealText(state->StartToken(numberTextSize), value));
        return *this;
    }
    Warn(__FILE__, __LINE__,
         (format("Saving invalid floating number %1%. It was truncated to 0") % RealText(value)).Text());
    return Word("0");
}

eWriter& eWriter::Rounded(float value) {
    if (const float scaled = value * roundedScale; !std::isfinite(scaled)) {
        return Real(scaled);
    }
    state->EndToken(WriteRoundedText(state->StartToken(numberTextSize), value));
    return *this;
}

eWriter& eWriter::BlockBegin() {
    state->marks.push_back(state->text.Size());
    char* const out = state->StartToken(1);
    *out = '{';
    state->text.EndAt(out + 1);
    ++state->depth;
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
    char* const out = state->StartToken(1);
    *out = '}';
    state->text.EndAt(out + 1);
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
    state->marks.push_back(-state->text.Size());
    return *this;
}

}  // namespace xIo::xSdl
