// Which cell of the grids drawn holds a point: the cells a reader is told
// of, the cursor's place and a number's name all come from here.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "platform/surface.h"

namespace quill {
namespace {

TEST(Surface, APointBelongsToTheNewestGridCellHoldingIt) {
  Surface surface;
  surface.addGrid({8, 8, 24, 18, 5, 5, 1, 1});
  surface.addGrid({104, 8, 24, 18, 3, 2, 1, 1});  // over the first grid's last columns
  constexpr float kHuge = std::numeric_limits<float>::max();
  const struct {
    float x, y;
    std::optional<GridCell> cell;
  } points[] = {
      {8, 8, GridCell{0, 0, 0}},           {7.99F, 8, std::nullopt},
      {103.99F, 97.99F, GridCell{0, 4, 3}}, {127.99F, 97.99F, GridCell{0, 4, 4}},
      {128, 8, GridCell{1, 0, 1}},          {176, 8, std::nullopt},
      {8, 98, std::nullopt},                {kHuge, kHuge, std::nullopt},
      {-kHuge, 8, std::nullopt},            {std::nanf(""), 8, std::nullopt},
  };
  for (const auto& [x, y, cell] : points) EXPECT_EQ(surface.cellAt(x, y), cell) << x << "," << y;

  surface.nameCell(50, 30, "17");
  surface.nameCell(500, 30, "outside");  // nothing to name
  EXPECT_EQ(surface.cellName({0, 1, 1}), "17");
  EXPECT_EQ(surface.cellName({0, 5, 0}), "");
  EXPECT_EQ(surface.cellName({7, 0, 0}), "");
  surface.placeCellCursor(50, 30);
  surface.clear();
  EXPECT_FALSE(surface.cellCursor());
  EXPECT_EQ(surface.cellName({0, 1, 1}), "");
}

}  // namespace
}  // namespace quill
