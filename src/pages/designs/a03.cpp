// A03: work experience.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA03() {
  static const PageDesign design = {
      .set = "A03",
      .title = "工作经历",
      .hint = "包括国内外经历",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Month("A03_A0301", "起始年月", kColumns.left, Line(0)),
          Month("A03_A0301A", "截止年月", kColumns.right, Line(0)),
          Text("A03_A0302", "工作单位", kColumns.whole.At(Line(1))),
          Text("A03_A0304", "职称", kColumns.left.At(Line(2))),
          Text("A03_A0303", "行政职务", kColumns.right.At(Line(2)), kEnd),
      },
      // clang-format on
      .grid = GridFrom(3),
  };
  return design;
}

}  // namespace dossierkit::designs
