#include "scene/skeleton/matrix_text.h"

#include <gtest/gtest.h>

#include "run/model_texts.h"
#include "support/scene_builder.h"
#include "support/skeleton_walk.h"

namespace {

std::string MatrixText(const host::Matrix3& matrix) {
    support::eSceneBuilder scene;
    scene.Settings().unitMetres = 0.01;
    support::eSkeletonWalk walk(scene.Build());
    xIo::eMemoryStream stream;
    walk.run.texts->mdlWriter = std::make_unique<xIo::xSdl::eWriter>();
    walk.run.texts->mdlWriter->Attach(&stream);
    WriteMatrix(walk.run, matrix);
    walk.run.texts->mdlWriter.reset();
    return support::TextOf(stream);
}

// Would catch rounding to even, towards 0, or to another number of decimals.
TEST(MatrixText, PointsHaveFourDecimals) {
    EXPECT_EQ(MatrixText(host::TransMatrix({12.3456F, 1e-03F, -12.345F})),
              "{Position 0.1235 \t 0 \t -0.1235}\n");
    EXPECT_EQ(MatrixText(host::TransMatrix({0.005F, -0.005F, 299.996F})),
              "{Position 0.0001 \t -0.0001 \t 3}\n");
}

// Would catch a form chosen by exact comparison, or a translation that stays in scene units.
TEST(MatrixText, TheShortestFormStands) {
    const host::Matrix3 turned({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {100, 0, 0});
    EXPECT_EQ(MatrixText(turned),
              "{matrix34\n\t0 \t 1 \t 0\n\t-1 \t 0 \t 0\n\t0 \t 0 \t 1\n\t1 \t 0 \t 0\n}\n");
    EXPECT_EQ(MatrixText(host::TransMatrix({100, 0, -50})), "{Position 1 \t 0 \t -0.5}\n");
    EXPECT_EQ(MatrixText({{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {5e-7F, 0, 0}}),
              "{orientation\n\t0 \t 1 \t 0\n\t-1 \t 0 \t 0\n\t0 \t 0 \t 1\n}\n");
    EXPECT_EQ(MatrixText({{1, 5e-7F, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 5e-7F}}), "");
}

// Would catch a test that lets a sheared or scaled bone through, or refuses rounding.
TEST(MatrixText, OnlyOrthonormalRowsPass) {
    EXPECT_TRUE(IsOrthonormal({{1, 5e-6F, 0}, {0, 1, 0}, {0, 0, -1}, {7, 8, 9}}));
    EXPECT_FALSE(IsOrthonormal({{1.001F, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}));
    EXPECT_FALSE(IsOrthonormal({{1, 0, 0}, {0, 1, 0}, {0.6F, 0, 0.8F}, {0, 0, 0}}));
}

}  // namespace
