#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "io/repository/repository.h"
#include "io/sdl/sdl_parser.h"

namespace xIo::xSdl {

// Reads SDL text: what the writer writes, and what hand-written files add to it.
//
//   ("name" args(1 "two" size(3 4)))   the text of a define, its %1%, %2%, %size% replaced
//   (define "name" ...)                keeps the text up to the matching parenthesis
//   (include "file" args(...))         the text of another file; relative names belong to that file's folder
//   (mod "name" ...), (mod not "name" ...)   the tokens inside only if the mod is loaded, or is not
//   (1 + 2 * 3)                        a number, worked out from left to right
//   {#tag ...}                         a block that is left out, but inside a mod test that held
//
// Every error is fatal (Fail) and names the source, its line, and the lines around it. Files are opened
// through the repository. Memory: the texts of the sources that are open, and the defines. One thread.
class eReader {
public:
    eReader() = default;
    // After Open: fatal unless the file's block closes here. Not while an exception is under way.
    ~eReader() noexcept(false);
    eReader(const eReader&) = delete;
    eReader& operator=(const eReader&) = delete;

    // Each of the three once, on a new reader.
    //
    // Reads a file that is one block, and enters the block: the first identifier is its name.
    void Open(const std::string& path);
    // Reads a file with any tokens from its first one on.
    void OpenTokens(const std::string& path);
    // The same of a text that is at hand; `name` stands in reports.
    void OpenText(const std::string& name, std::string text);

    // The next token, controls resolved; escapes of strings are undone. Its text is valid up to the next
    // call. kTokenEnd behind the last one, as often as asked.
    const eToken& Next();
    // The next call of Next gives the present token again.
    void Unget();
    bool PeekIs(eTokenType type);

    // Each takes the next token, which must be of that type. An identifier is given in lower case.
    std::string Ident();
    std::string String();
    std::int32_t Integer();
    float Number();
    void BlockBegin();
    void BlockEnd();
    // Reads past the end of the block that the reader stands in, without a look at what it holds.
    void SkipBlock();

    // The mods that the thread has loaded, for the "mod" blocks.
    struct eLoadingMods {
        std::vector<std::string> names;
    };
    static eLoadingMods& LoadingMods();

private:
    struct eDefine {
        std::string text;
        int line = 1;  // where it begins in its source
    };
    using eParameters = std::map<std::string, std::string>;
    // An open parenthesis, and how many sources were open there.
    struct eControl {
        enum eKind { numberControl, modControl } kind;
        std::size_t source;
    };
    struct eSource {
        std::unique_ptr<eParser> parser;
        std::unique_ptr<xRepository::eFolderScope> folder;  // of a file: where its relative names belong
    };

    eParser& Parser() { return *sources.back().parser; }
    const eToken& Resolve();
    const eToken& Give(const eToken& token);
    const eToken& GiveString(const eToken& token);
    const eToken& Expect(eTokenType type, const char* message);
    void CountBlocks(eTokenType type, int step);
    bool IsInsideMod() const;
    void CheckLastBlock();

    void PushFile(const std::string& name, std::string text);
    void PushText(const std::string& name, std::string text, int firstLine);
    void CheckSourceDepth() const;
    bool PopSource();
    void PushControl(eControl::eKind kind);
    // The kind of the control that a closing parenthesis of the present source closes.
    eControl::eKind ClosingControl() const;

    // True if the control gave a value, which is then the present token.
    bool OpenControl();
    void CallDefine(const std::string& name);
    void Include();
    void Define();
    void Mod();
    void ReadArithmetic(const eToken& first);
    // Up to the parenthesis that closes the present one; `atEnd` is the error of a text that ends before.
    void SkipParentheses(const char* atEnd);
    std::string ControlName();
    // The parameters behind "args", up to the end of the control, and that end.
    eParameters ReadParameters();
    void ReadParameter(const eToken& first, eParameters& parameters, int& ordinal);
    std::string ReadValues();
    std::string Replaced(const std::string& source, std::string text, const eParameters& parameters);
    bool ReplaceAll(std::string& text, const std::string& parameter, const std::string& value);
    // Books text that a control adds to what the file itself holds.
    void Charge(std::size_t bytes);

    std::map<std::string, eDefine> defines;
    std::vector<eSource> sources;
    std::vector<eControl> controls;
    std::size_t unfolded = 0;  // what was booked by Charge
    int depth = 0;             // open blocks
    bool mustClose = false;    // an opened file's block has to close at the end
    eToken current;
    std::string plainText;  // what `current` refers to where the source has other bytes
    bool ungot = false;
};

}  // namespace xIo::xSdl
