#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <variant>

class Export;
struct eExportOptions;

// The options dialog without its window: what its controls are, what they show, and what its button takes
// over. Every face of the export (a window, a command line) goes through it, so all check and tell the same.

// The most bytes that the path of an option may have. Whoever sets a longer one is told; none is ever cut.
inline constexpr std::size_t kLongestOptionPath = 260;

enum class eDialogControlKind { CheckBox, Edit, Spinner, Button };

// What the controls hold. Texts are as the user types them, in code page 1251.
struct eDialogFields {
    bool exportMesh = false;
    bool exportAnimation = false;
    bool exportIK = false;
    bool exportGeometry = false;
    bool exportLightsCameras = false;
    std::string resourceRoot;
    std::string commonTextureSource;
    std::string commonTextureTarget;
    std::string frameStart;  // decimal, or hexadecimal with "0x"
    std::string frameEnd;
    bool currentRangeOnly = false;
    bool selectedOnly = false;
    bool reverseAnimation = false;
    int staticFrame = 0;  // of the spinner, within the host's animation range
};

// A control and the field that it holds, if any.
struct eDialogControl {
    int id;
    eDialogControlKind kind;
    const char* text;  // of the control itself or of its label; code page 1251
    bool shown;
    std::variant<std::monostate, bool eDialogFields::*, std::string eDialogFields::*, int eDialogFields::*>
        field;
};

// In the order of the dialog.
std::span<const eDialogControl> DialogControls();

// What the dialog shows at its start. The spinner's limits are the run's frameStart and frameEnd, its value
// the one next to 0 that they allow.
eDialogFields ShowDialogFields(const Export& run);

// The button "export": takes the fields over into the run in the dialog's order. A path that is empty, or
// longer than kLongestOptionPath, shows its error over `parent` (a window handle or null) and the result is
// false: the dialog stays open, with what was stored so far.
bool TakeDialogFields(Export& run, const eDialogFields& fields, void* parent);

// The same test of the paths for options that no dialog has shown. False, with the error, if a run must not
// begin with them.
bool CheckOptionPaths(const eExportOptions& options, void* parent);
