// A11: achievements of the candidate's field.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kWideLabelWidth);

const PageDesign& DesignA11() {
  static const PageDesign design = {
      .set = "A11",
      .title = "对专业领域成果的介绍(限5项)",
      .hint = "候选人对近两年国内外本专业领域具有创新性和较大影响力成果的介绍，不超过五项",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = false,
      // clang-format off
      .fields = {
          Text("A11_A1101", "成果名称", kColumns.whole.At(Line(0))),
          Year("A11_A1102", "完成年份", kColumns.left, Line(1)),
          Text("A11_A1103", "主要完成人", kColumns.right.At(Line(1)), kEnd),
          MultiLine("A11_A1104", "对成果的简要评价", kColumns.whole.Tall(Line(2), Lines(5))),
      },
      // clang-format on
      .grid = GridFrom(7),
  };
  return design;
}

}  // namespace dossierkit::designs
