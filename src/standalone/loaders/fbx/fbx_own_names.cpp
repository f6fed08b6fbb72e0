#include "standalone/loaders/fbx/fbx_own_names.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace standalone {
namespace {

constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

class eOwnNames {
public:
    explicit eOwnNames(const eFbxModels& file) {
        for (const eFbxModel& model : file.models) {
            taken.emplace(model.nameInFile);
        }
    }

    // A name of the length that nobody has; empty where all are taken.
    std::string Take(std::size_t length) {
        std::uint64_t& next = counters[length];
        while (true) {
            std::string name(length, kDigits[0]);
            std::uint64_t rest = next++;
            for (auto digit = name.rbegin(); digit != name.rend(); ++digit) {
                *digit = kDigits[rest % kDigits.size()];
                rest /= kDigits.size();
            }
            if (rest != 0) {
                return {};
            }
            if (taken.insert(name).second) {
                return name;
            }
        }
    }

private:
    std::unordered_set<std::string> taken;
    std::unordered_map<std::size_t, std::uint64_t> counters;  // by length
};

}  // namespace

std::optional<std::string> WithOwnFbxNames(std::string_view bytes, eFbxModels& file) {
    std::optional<std::string> copy;
    eOwnNames names(file);
    std::unordered_set<std::string_view> seen;
    for (eFbxModel& model : file.models) {
        model.libraryName = model.nameInFile;
        if (seen.insert(model.nameInFile).second) {
            continue;
        }
        const std::string own = names.Take(model.nameInFile.size());
        if (own.empty()) {
            continue;
        }
        if (!copy) {
            copy = bytes;
        }
        copy->replace(static_cast<std::size_t>(model.nameInFile.data() - bytes.data()), own.size(), own);
        model.libraryName = own;
    }
    return copy;
}

}  // namespace standalone
