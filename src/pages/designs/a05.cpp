// A05: visits, further studies and training.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA05() {
  static const PageDesign design = {
      .set = "A05",
      .title = "国内外访问、进修、培训经历",
      .hint = "",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Month("A05_A0501", "起始年月", kColumns.left, Line(0)),
          Month("A05_A0502", "截止年月", kColumns.right, Line(0)),
          Text("A05_A0503", "访问机构名称", kColumns.whole.At(Line(1))),
          Text("A05_A0506", "身份", kColumns.left.At(Line(2))),
          Text("A05_A0504", "地点", kColumns.right.At(Line(2))),
          MultiLine("A05_A0505", "有关内容", kColumns.whole.Tall(Line(3), Lines(4))),
      },
      // clang-format on
      .grid = GridFrom(7),
  };
  return design;
}

}  // namespace dossierkit::designs
