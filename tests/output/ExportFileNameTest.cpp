#include "ExportFileName.h"

#include <gtest/gtest.h>

namespace backplot {
namespace {

TEST(ExportFileName, ExtensionOnlyWhenThereIsNoDotAnywhere)
{
    EXPECT_EQ(WithDefaultExtension("/out/part", ".dxf"), "/out/part.dxf");
    EXPECT_EQ(WithDefaultExtension("/out/part.txt", ".dxf"), "/out/part.txt");
    EXPECT_EQ(WithDefaultExtension("/v1.2/part", ".dxf"), "/v1.2/part"); // a dot in a folder counts
    EXPECT_EQ(WithDefaultExtension("/out/part.", ".bmp"), "/out/part.");
    EXPECT_EQ(WithDefaultExtension("part", ".bmp"), "part.bmp");
}

} // namespace
} // namespace backplot
