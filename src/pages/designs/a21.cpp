// A21: patents.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA21() {
  static const PageDesign design = {
      .set = "A21",
      .title = "已授权专利情况（按重要性填写近五年主要专利）",
      .hint = "限五项，国内外社会兼职、学术团体任职情况",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = false,
      // clang-format off
      .fields = {
          Text("A21_A2111", "授权国家", kColumns.left.At(Line(0))),
          Text("A21_A2107", "专利保护期", kColumns.right.At(Line(0))),
          Text("A21_A2101", "专利名称", kColumns.whole.At(Line(1))),
          Text("A21_A2104", "专利类别", kColumns.left.At(Line(2))),
          Text("A21_A2112", "专利所有者", kColumns.right.At(Line(2))),
          Text("A21_A2113", "排名", kColumns.left.At(Line(3), kNumberWidth)),
      },
      // clang-format on
      .grid = GridFrom(4),
  };
  return design;
}

}  // namespace dossierkit::designs
