#include "platform/write_fence.h"

#include <string>
#include <vector>

#include "platform/native_fence.h"
#include "platform/posix/native_path.h"

namespace platform {
namespace {

struct eRoot {
    std::string path;
    ePathForm form;
};

std::vector<eRoot>& Roots() {
    static std::vector<eRoot> roots;
    return roots;
}

// A root is looked up each time: it may have been created under another spelling since.
std::string NativeRoot(const eRoot& root) {
    std::string native;
    return MakeNative(root.path, root.form, native).IsOk() ? native : std::string();
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
    Roots().push_back({std::string(path), form});
}

void ClearWriteRoots() {
    Roots().clear();
}

bool IsNativeWriteAllowed(const std::string& native) {
    if (Roots().empty() || IsNullDevice(native)) {
        return true;
    }
    for (const eRoot& root : Roots()) {
        const std::string nativeRoot = NativeRoot(root);
        if (LiesIn(native, nativeRoot) || IsTemporaryOf(native, nativeRoot)) {
            return true;
        }
    }
    return false;
}

bool IsNativeFolderAllowed(const std::string& native) {
    if (IsNativeWriteAllowed(native)) {
        return true;
    }
    for (const eRoot& root : Roots()) {
        if (LiesIn(NativeRoot(root), native)) {
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
