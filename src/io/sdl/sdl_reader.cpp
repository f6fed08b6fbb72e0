#include "io/sdl/sdl_reader.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/diagnostics.h"
#include "base/format.h"
#include "base/number_text.h"
#include "base/thread_storage.h"
#include "io/sdl/sdl_arithmetic.h"

namespace xIo::xSdl {
namespace {

// More includes and defines inside one another than any file has: they go round in a circle.
constexpr std::size_t kDeepestSource = 64;
// An arithmetic block in another one is read by a call in a call.
constexpr std::size_t kDeepestControl = 256;
// The most text to which defines and includes of one reader may unfold; a few defines that each call the next
// one twice would grow beyond any memory. What a source costs beside its text is counted, too.
constexpr std::size_t kMostUnfolded = std::size_t{1} << 26;
constexpr std::size_t kCostOfSource = 256;
// Bytes looked through for a parameter that count as one byte of text.
constexpr std::size_t kCostOfSearch = 8;

[[noreturn]] void Error(const char* message) {
    Fail(__FILE__, __LINE__, message);
}

bool IsNumber(const eToken& token) {
    return token.type == kTokenInteger || token.type == kTokenReal;
}

bool IsString(const eToken& token) {
    return token.type == kTokenString || token.type == kTokenSingleString;
}

// What a parameter may consist of.
bool IsValue(const eToken& token) {
    return IsNumber(token) || IsString(token) || token.type == kTokenIdent || token.type == kTokenOperator ||
           token.type == kTokenPercentName;
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

// The byte that the writer has written as a backslash and this letter; 0 for a letter that it never writes.
char EscapedBy(char letter) {
    switch (letter) {
        case '\\':
        case '"':
            return letter;
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return '\0';
    }
}

// Undoes the escapes of the writer. Any other backslash is one that somebody typed, and stays.
std::string Unescaped(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isMark = text[i] == '\\' && i + 1 < text.size();
        const char escaped = isMark ? EscapedBy(text[i + 1]) : '\0';
        plain += escaped != '\0' ? escaped : text[i];
        i += escaped != '\0' ? 1 : 0;
    }
    return plain;
}

// As a parameter's text: a string keeps its quotes.
std::string ValueText(const eToken& token) {
    return IsString(token) ? (format("\"%1%\"") % token.text).Text() : std::string(token.text);
}

std::string ReadText(eStream& stream) {
    const int length = stream.Remaining();
    std::string text(static_cast<std::size_t>(length), '\0');
    stream.Read(text.data(), length);
    return text;
}

}  // namespace

eReader::~eReader() noexcept(false) {
    if (mustClose && !xDebug::IsExceptionUnderWay() && std::uncaught_exceptions() == 0) {
        CheckLastBlock();
    }
}

void eReader::CheckLastBlock() {
    if (depth > 0 && (Next().type != kTokenBlockEnd || depth > 0)) {
        Error("SDL: block terminator expected");
    }
}

eReader::eLoadingMods& eReader::LoadingMods() {
    static eThreadStorage<eLoadingMods> mods;
    return mods.Get();
}

void eReader::Open(const std::string& path) {
    OpenTokens(path);
    if (Next().type != kTokenBlockBegin) {
        Error("SDL: invalid file");
    }
    mustClose = true;
}

void eReader::OpenTokens(const std::string& path) {
    const std::string name = xRepository::Resolve(path);
    PushFile(name, ReadText(*xRepository::OpenResolved(name)));
}

void eReader::OpenText(const std::string& name, std::string text) {
    PushText(name, std::move(text), 1);
}

const eToken& eReader::Next() {
    if (!ungot) {
        Resolve();
    }
    ungot = false;
    CountBlocks(current.type, 1);
    return current;
}

void eReader::Unget() {
    CountBlocks(current.type, -1);
    ungot = true;
}

void eReader::CountBlocks(eTokenType type, int step) {
    depth += type == kTokenBlockBegin ? step : type == kTokenBlockEnd ? -step : 0;
}

bool eReader::PeekIs(eTokenType type) {
    const bool isType = Next().type == type;
    Unget();
    return isType;
}

const eToken& eReader::Expect(eTokenType type, const char* message) {
    if (Next().type != type) {
        Error(message);
    }
    return current;
}

std::string eReader::Ident() {
    return LowerCase(Expect(kTokenIdent, "SDL: ident expected").text);
}

std::string eReader::String() {
    if (!IsString(Next())) {
        Error("SDL: string expected");
    }
    return std::string(current.text);
}

std::int32_t eReader::Integer() {
    return Expect(kTokenInteger, "SDL: integer expected").integer;
}

float eReader::Number() {
    if (!IsNumber(Next())) {
        Error("SDL: number expected");
    }
    return current.real;
}

void eReader::BlockBegin() {
    Expect(kTokenBlockBegin, "SDL: block start expected");
}

void eReader::BlockEnd() {
    Expect(kTokenBlockEnd, "SDL: block terminator expected");
}

void eReader::SkipBlock() {
    const int outside = depth - 1;
    if (ungot) {
        Next();
    }
    int parentheses = 0;
    while (depth > outside) {
        const eTokenType type = Parser().Next().type;
        CountBlocks(type, 1);
        if (type == kTokenOpen) {
            ++parentheses;
        } else if (type == kTokenClose && parentheses > 0) {
            --parentheses;
        } else if (type == kTokenClose) {
            // The block is left inside of a mod test that began before.
            if (ClosingControl() != eControl::modControl) {
                Error("SDL: unexpected \")\"");
            }
            controls.pop_back();
        } else if (type == kTokenEnd && (parentheses > 0 || !PopSource())) {
            Error("SDL: block terminator expected");
        }
    }
}

const eToken& eReader::Give(const eToken& token) {
    current = token;
    return current;
}

const eToken& eReader::GiveString(const eToken& token) {
    current = token;
    if (token.text.find('\\') != std::string_view::npos) {
        plainText = Unescaped(token.text);
        current.text = plainText;
    }
    return current;
}

bool eReader::IsInsideMod() const {
    return std::ranges::find(controls, eControl::modControl, &eControl::kind) != controls.end();
}

// Tokens come from the innermost source; controls are carried out until one gives a token.
const eToken& eReader::Resolve() {
    for (;;) {
        const eToken& token = Parser().Next();
        switch (token.type) {
            case kTokenEnd:
                if (!PopSource()) {
                    return Give(token);
                }
                break;
            case kTokenString:
            case kTokenSingleString:
                return GiveString(token);
            case kTokenBlockBegin:
                if (token.text.find('#') == std::string_view::npos || IsInsideMod()) {
                    return Give(token);
                }
                ++depth;
                SkipBlock();
                break;
            case kTokenOpen:
                if (OpenControl()) {
                    return current;
                }
                break;
            case kTokenClose:
                if (ClosingControl() == eControl::numberControl) {
                    return Give(token);
                }
                controls.pop_back();
                break;
            default:
                return Give(token);
        }
    }
}

void eReader::PushFile(const std::string& name, std::string text) {
    CheckSourceDepth();
    eSource source;
    source.parser = std::make_unique<eParser>(name, std::move(text));
    source.folder = std::make_unique<xRepository::eFolderScope>(xRepository::FolderOf(name));
    sources.push_back(std::move(source));
}

void eReader::PushText(const std::string& name, std::string text, int firstLine) {
    CheckSourceDepth();
    sources.push_back({std::make_unique<eParser>(name, std::move(text), firstLine), nullptr});
}

void eReader::CheckSourceDepth() const {
    if (sources.size() == kDeepestSource) {
        Error("SDL: includes and defines are nested too deeply");
    }
}

// False at the end of the outermost source, which stays, so that reports can name it.
bool eReader::PopSource() {
    if (!controls.empty() && controls.back().source == sources.size()) {
        Error("SDL: expected \")\"");
    }
    if (sources.size() == 1) {
        return false;
    }
    sources.pop_back();
    return true;
}

void eReader::PushControl(eControl::eKind kind) {
    if (controls.size() == kDeepestControl) {
        Error("SDL: parentheses are nested too deeply");
    }
    controls.push_back({kind, sources.size()});
}

eReader::eControl::eKind eReader::ClosingControl() const {
    if (controls.empty() || controls.back().source != sources.size()) {
        Error("SDL: unexpected \")\"");
    }
    return controls.back().kind;
}

bool eReader::OpenControl() {
    const eToken token = Parser().Next();
    if (IsString(token)) {
        CallDefine(Unescaped(token.text));
        return false;
    }
    if (IsNumber(token)) {
        ReadArithmetic(token);
        return true;
    }
    if (token.type != kTokenIdent) {
        Error("SDL: invalid control block");
    }
    const std::string word = LowerCase(token.text);
    if (word == "include") {
        Include();
    } else if (word == "define") {
        Define();
    } else if (word == "mod") {
        Mod();
    } else {
        Error("SDL: unknown control block");
    }
    return false;
}

void eReader::CallDefine(const std::string& name) {
    const auto define = defines.find(name);
    if (define == defines.end()) {
        Error("SDL: define not found");
    }
    const eParameters parameters = ReadParameters();
    const std::string source = (format("define '%1%'") % name).Text();
    Charge(define->second.text.size() + kCostOfSource);
    PushText(source, Replaced(source, define->second.text, parameters), define->second.line);
}

void eReader::Include() {
    const std::string name = xRepository::Resolve(ControlName());
    const eParameters parameters = ReadParameters();
    CheckSourceDepth();
    const std::unique_ptr<eStream> stream = xRepository::OpenResolved(name);
    Charge(static_cast<std::size_t>(stream->Remaining()) + kCostOfSource);
    PushFile(name, Replaced(name, ReadText(*stream), parameters));
}

void eReader::Define() {
    const std::string name = ControlName();
    const int line = Parser().Line();
    const std::size_t begin = Parser().Position();
    SkipParentheses("SDL: block terminator expected");
    defines[name] = {std::string(Parser().Source(begin, Parser().Position() - 1)), line};
}

std::string eReader::ControlName() {
    const eToken& token = Parser().Next();
    if (!IsString(token)) {
        Error("SDL: string expected");
    }
    return Unescaped(token.text);
}

void eReader::Mod() {
    eToken token = Parser().Next();
    const bool isReversed = token.type == kTokenIdent && LowerCase(token.text) == "not";
    if (isReversed) {
        token = Parser().Next();
    }
    if (!IsString(token)) {
        Error("SDL: unexpected token");
    }
    const std::vector<std::string>& mods = LoadingMods().names;
    const bool isLoaded = std::ranges::find(mods, Unescaped(token.text)) != mods.end();
    if (isLoaded != isReversed) {
        PushControl(eControl::modControl);
    } else {
        SkipParentheses("SDL: expected \")\"");
    }
}

void eReader::SkipParentheses(const char* atEnd) {
    for (int open = 1; open > 0;) {
        const eTokenType type = Parser().Next().type;
        if (type == kTokenEnd) {
            Error(atEnd);
        }
        open += type == kTokenOpen ? 1 : type == kTokenClose ? -1 : 0;
    }
}

void eReader::ReadArithmetic(const eToken& first) {
    PushControl(eControl::numberControl);
    eNumber result = NumberOf(first);
    while (Resolve().type != kTokenClose) {
        const char operation = current.text.size() == 1 ? current.text[0] : '\0';
        if (current.type != kTokenOperator || !IsArithmetic(operation)) {
            Error("SDL: Unsupported operation");
        }
        if (!IsNumber(Resolve())) {
            Error("SDL: number expected");
        }
        const eNumber operand = NumberOf(current);
        if (operation == '/' && operand.real == 0) {
            Error("SDL: division by zero");
        }
        result = Calculate(result, operation, operand);
    }
    controls.pop_back();
    plainText = NumberText(result);
    current.type = result.isInteger ? kTokenInteger : kTokenReal;
    current.text = plainText;
    current.real = result.real;
    current.integer = result.integer;
}

eReader::eParameters eReader::ReadParameters() {
    eParameters parameters;
    eToken token = Parser().Next();
    if (token.type == kTokenIdent && LowerCase(token.text) == "args") {
        if (Parser().Next().type != kTokenOpen) {
            Error("SDL: invalid parameters syntax, missed \"(\"");
        }
        int ordinal = 1;
        for (token = Parser().Next(); token.type != kTokenClose; token = Parser().Next()) {
            ReadParameter(token, parameters, ordinal);
        }
        token = Parser().Next();
    }
    if (token.type != kTokenClose) {
        Error("SDL: expected \")\"");
    }
    return parameters;
}

// A plain value has its place as its name; a name is followed by its values in parentheses.
void eReader::ReadParameter(const eToken& first, eParameters& parameters, int& ordinal) {
    if (!IsValue(first)) {
        Error("SDL: invalid parameters syntax, missed \")\"");
    }
    if (first.type == kTokenIdent) {
        if (Parser().Next().type == kTokenOpen) {
            parameters[std::string(first.text)] = ReadValues();
            return;
        }
        Parser().Unget();
    }
    parameters[IntegerText(ordinal++)] = ValueText(first);
}

std::string eReader::ReadValues() {
    std::string values;
    for (eToken token = Parser().Next(); token.type != kTokenClose; token = Parser().Next()) {
        if (!IsValue(token)) {
            Error("SDL: invalid parameters syntax, missed \")\"");
        }
        values += (values.empty() ? "" : " ") + ValueText(token);
    }
    return values;
}

std::string eReader::Replaced(const std::string& source, std::string text, const eParameters& parameters) {
    std::string unused;
    for (const auto& [parameter, value] : parameters) {
        if (!ReplaceAll(text, parameter, value)) {
            unused += (unused.empty() ? "" : " ") + parameter;
        }
    }
    if (!unused.empty()) {
        const auto warning = format("SDL: unused parameter(s) for parser \"%1%\" : %2%") % source % unused;
        Warn(__FILE__, __LINE__, warning.Text());
    }
    return text;
}

// True if the parameter occurs.
bool eReader::ReplaceAll(std::string& text, const std::string& parameter, const std::string& value) {
    const std::string mark = "%" + parameter + "%";
    std::size_t at = text.find(mark);
    if (at == std::string::npos) {
        Charge(text.size() / kCostOfSearch);
        return false;
    }
    std::string result;
    std::size_t begin = 0;
    for (; at != std::string::npos; at = text.find(mark, begin)) {
        Charge(value.size());
        result.append(text, begin, at - begin).append(value);
        begin = at + mark.size();
    }
    text = result.append(text, begin);
    Charge(text.size() / kCostOfSearch);
    return true;
}

void eReader::Charge(std::size_t bytes) {
    unfolded += bytes;
    if (unfolded > kMostUnfolded) {
        Error("SDL: includes and defines unfold to more than 64 megabytes");
    }
}

}  // namespace xIo::xSdl
