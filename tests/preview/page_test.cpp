#include <gtest/gtest.h>

#include "preview/base64.h"
#include "preview/make_page.h"

namespace {

TEST(PreviewPage, HoldsTheModelAsText) {
    EXPECT_EQ(preview::Base64(std::string("\0\xFF\x10\x83", 4)), "AP8Qgw==");
    EXPECT_EQ(preview::Base64("glTF!"), "Z2xURiE=");
    EXPECT_EQ(preview::Base64("glTF"
                              "\xFB\xFF"),
              "Z2xURvv/");
    if (const auto page = preview::MakePage("glTF")) {
        EXPECT_NE(page->find("id=\"model\">Z2xURg==</script>"), std::string::npos);
        EXPECT_TRUE(page->starts_with("<!doctype html>"));
        EXPECT_EQ(page->find("src=\"http"), std::string::npos);
    }
}

}  // namespace
