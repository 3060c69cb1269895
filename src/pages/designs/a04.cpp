// A04: part-time posts.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA04() {
  static const PageDesign design = {
      .set = "A04",
      .title = "主要兼职(限5项，国内外社会兼职、学术团体任职情况)",
      .hint = "限五项，国内外社会兼职、学术团体任职情况",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Month("A04_A0401", "起始年月", kColumns.left, Line(0)),
          Month("A04_A0402", "截止时间", kColumns.right, Line(0)),
          Text("A04_A0403", "任职单位名称", kColumns.whole.At(Line(1))),
          Text("A04_A0404", "职务名称", kColumns.left.At(Line(2))),
      },
      // clang-format on
      .grid = GridFrom(3),
  };
  return design;
}

}  // namespace dossierkit::designs
