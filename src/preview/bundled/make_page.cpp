#include "preview/make_page.h"

#include "preview/base64.h"
#include "preview/page_parts.h"

namespace preview {

std::optional<std::string> MakePage(std::string_view glb) {
    std::string page;
    for (const std::string_view piece : kPageBeforeModel) {
        page += piece;
    }
    page += Base64(glb);
    for (const std::string_view piece : kPageBehindModel) {
        page += piece;
    }
    return page;
}

}  // namespace preview
