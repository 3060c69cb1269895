// A10: papers and books.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);
static constexpr Place kNote = kColumns.whole.Tall(Line(4), Lines(4));

const PageDesign& DesignA10() {
  static const PageDesign design = {
      .set = "A10",
      .title = "论文和著作目录",
      .hint =
          "填写在国内一级学报，省、部级一级以上刊物和国外较著名的刊物发表的论文，正式出版"
          "的专著并包括重要总结、技术报告、设计方案、研究报告等。",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Text("A10_A1001", "名称", kColumns.whole.At(Line(0))),
          Year("A10_A1002", "发表年份", kColumns.left, Line(1)),
          Text("A10_A1003", "角色", kColumns.right.At(Line(1))),
          Text("A10_A1005", "主要合作者", kColumns.left.At(Line(2))),
          Text("A10_A1004", "排名", kColumns.right.At(Line(2), kNumberWidth)),
          Text("A10_A1006", "出版机构", kColumns.whole.At(Line(3))),
          MultiLineBy("A10_A1007", "Label5", kNote.box),
      },
      // clang-format on
      .fixed_labels = {{"Label5", "情况说明", kNote.label}},
      .grid = GridFrom(8),
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
