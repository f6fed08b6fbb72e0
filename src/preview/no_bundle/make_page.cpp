#include "preview/make_page.h"

namespace preview {

std::optional<std::string> MakePage(std::string_view) {
    return std::nullopt;
}

}  // namespace preview
