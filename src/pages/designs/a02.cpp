// A02: education.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA02() {
  static const PageDesign design = {
      .set = "A02",
      .title = "主要学习经历（从中专、大专或大学填起）",
      .hint = "从中专、大专或大学填起，包括国外学习经历",
      .move_question = MoveQuestion::kSave,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Month("A02_A0201", "起始年月", kColumns.left, Line(0)),
          Month("A02_A0201A", "截止年月", kColumns.right, Line(0)),
          Text("A02_A0202", "就读院校", kColumns.whole.At(Line(1)), " "),
          Text("A02_A0203", "专业", kColumns.left.At(Line(2))),
          Text("A02_A0204", "学位", kColumns.right.At(Line(2)), kEnd),
      },
      // clang-format on
      .grid = GridFrom(3),
  };
  return design;
}

}  // namespace dossierkit::designs
