#include "inspect/inspect.h"

#include <cstring>

#include "inspect/animation_view.h"
#include "inspect/bmp_view.h"
#include "inspect/copied_picture_view.h"
#include "inspect/dds_view.h"
#include "inspect/material_view.h"
#include "inspect/mesh_view.h"
#include "inspect/model_view.h"
#include "inspect/sdl_tree.h"
#include "mesh/file/mesh_format.h"
#include "messages/utf8_words.h"

namespace inspect {

namespace {

bool BeginsWith(std::span<const std::uint8_t> content, std::string_view tag) {
    return content.size() >= tag.size() && std::memcmp(content.data(), tag.data(), tag.size()) == 0;
}

bool EndsWith(const std::string& name, std::string_view ending) {
    return name.ends_with(ending);
}

eDescription DescribeText(const std::string& name, const eSdlBlock& file) {
    if (file.Find("skeleton") != nullptr) {
        return DescribeModel(file);
    }
    return EndsWith(name, ".material") ? DescribeMaterials(file) : DescribeEntity(file);
}

eInspection InspectText(const std::string& name, std::span<const std::uint8_t> content) {
    eInspection result;
    const std::string text(content.begin(), content.end());
    std::string problem;
    const eSdlBlock file = ReadSdlTree(name, text, problem);
    result.problem = problem.empty() && file.Blocks().empty() ? Utf8Words(ePhrase::PathNoneOfOurs)
                                                              : eBilingual{problem, problem};
    if (result.problem.IsEmpty()) {
        result.description = DescribeText(name, file);
    }
    return result;
}

}  // namespace

eInspection InspectContent(const std::string& name, std::span<const std::uint8_t> content) {
    if (content.empty()) {
        return {.description = {}, .problem = Utf8Words(ePhrase::TargetEmpty)};
    }
    std::string problem;
    eInspection result;
    if (IsCopiedPicture(name, content)) {
        result.description = DescribeCopiedPicture(content, problem);
    } else if (BeginsWith(content, "EANM")) {
        result.description = DescribeAnimation(content, problem);
    } else if (BeginsWith(content, mesh_format::kFileTag)) {
        result.description = DescribeMeshes(content, problem);
    } else if (BeginsWith(content, "DDS ")) {
        result.description = DescribeDds(content, problem);
    } else if (BeginsWith(content, "BM")) {
        result.description = DescribeBmp(content, problem);
    } else {
        return InspectText(name, content);
    }
    result.problem = {problem, problem};
    return result;
}

}  // namespace inspect
