#include "section/Label.h"

#include <gtest/gtest.h>

#include "section/TestFiles.h"

namespace section {
namespace {

TEST(Label, TellsNameSizeAndLayers) {
    const Mesh mesh(test::Tetrahedron());
    EXPECT_EQ(LabelOf(Model("some/where/a.stl", mesh, Cut{.m_count = 2})),
              "a.stl, 1 × 2 × 4, 2 layers");
    EXPECT_EQ(LabelOf(Model("{width}.stl", mesh, Cut{.m_step = 4.0})),
              "{width}.stl, 1 × 2 × 4, 1 layer");
}

}  // namespace
}  // namespace section
