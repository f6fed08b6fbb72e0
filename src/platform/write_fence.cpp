#include "platform/write_fence.h"

#include <string>
#include <vector>

#include "platform/file_layer.h"
#include "platform/native_fence.h"
#include "platform/native_path.h"
#include "platform/process_state.h"

namespace platform {
namespace {

std::vector<eWriteRoot>& Roots() {
    return ProcessState().writeRoots;
}

// Empty if it lies nowhere. A root is looked up until it is there: it may be created under another spelling.
std::string NativeRoot(eWriteRoot& root) {
    if (!root.found.empty()) {
        return root.found;
    }
    std::string native;
    if (!MakeNative(root.path, root.form, native).IsOk()) {
        return {};
    }
    std::string key = NativeCaseKey(native);
    root.found = DiskLayer().KindOf(native) != eEntryKind::None ? key : std::string();
    return key;
}

bool LiesIn(const std::string& path, const std::string& root) {
    if (root.empty() || !path.starts_with(root)) {
        return false;
    }
    return path.size() == root.size() || root.ends_with('/') || path[root.size()] == '/';
}

// A root that is a file is written through its .tmp beside it.
bool IsTemporaryOf(const std::string& path, const std::string& root) {
    return !root.empty() && path == root + ".tmp";
}

}  // namespace

void AddWriteRoot(std::string_view path, ePathForm form) {
    Roots().push_back({.path = std::string(path), .form = form, .found = {}});
}

void ClearWriteRoots() {
    Roots().clear();
}

bool IsWriteFenced() {
    return !Roots().empty();
}

bool IsNativeWriteAllowed(const std::string& native) {
    if (Roots().empty() || IsNullDevice(native)) {
        return true;
    }
    const std::string key = NativeCaseKey(native);
    for (eWriteRoot& root : Roots()) {
        const std::string nativeRoot = NativeRoot(root);
        if (LiesIn(key, nativeRoot) || IsTemporaryOf(key, nativeRoot)) {
            return true;
        }
    }
    return false;
}

bool IsNativeFolderAllowed(const std::string& native) {
    if (IsNativeWriteAllowed(native)) {
        return true;
    }
    for (eWriteRoot& root : Roots()) {
        if (LiesIn(NativeRoot(root), NativeCaseKey(native))) {
            return true;
        }
    }
    return false;
}

bool IsWriteAllowed(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? IsNativeWriteAllowed(native) : Roots().empty();
}

}  // namespace platform
