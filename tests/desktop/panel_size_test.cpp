#include "desktop/panel_size.h"

#include <gtest/gtest.h>

namespace lumisk::desktop {
namespace {

constexpr ContentShape kShapes[] = {ContentShape::Document, ContentShape::Table,
                                    ContentShape::Folder, ContentShape::Message};

TEST(PanelSize, LeavesAFifthOfEveryWorkAreaFree) {
  for (const ContentShape shape : kShapes) {
    for (int width = 320; width < 4000; width += 160) {
      for (int height = 240; height < 2400; height += 120) {
        const Size size = initialSize(shape, {width, height});
        EXPECT_LE(size.width * 10, width * 8);
        EXPECT_LE(size.height * 10, height * 8);
        EXPECT_GT(size.width, 0);
        EXPECT_GT(size.height, 0);
      }
    }
  }
}

TEST(PanelSize, DocumentsAreHighTablesWide) {
  constexpr Size kLarge{4000, 3000};
  const Size document = initialSize(ContentShape::Document, kLarge);
  const Size table = initialSize(ContentShape::Table, kLarge);
  EXPECT_GT(document.height, document.width);
  EXPECT_GT(table.width, table.height);
}

TEST(PanelSize, TheShapeFollowsTheKind) {
  EXPECT_EQ(shapeOf(FileURL::fromPath("/a/b.CSV"), false), ContentShape::Table);
  EXPECT_EQ(shapeOf(FileURL::fromPath("/a/b.md"), false), ContentShape::Document);
  EXPECT_EQ(shapeOf(FileURL::fromPath("/a/b.csv"), true), ContentShape::Folder);
}

}  // namespace
}  // namespace lumisk::desktop
