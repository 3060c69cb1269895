// A09: awards.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA09() {
  static const PageDesign design = {
      .set = "A09",
      .title = "专业获奖信息",
      .hint =
          "限填近五年自然科学类所获国家三大奖，省、部级一、二、三等奖以及社会科学类所获"
          "国家及省、部级奖项",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Text("A09_A0901", "成果名称", kColumns.whole.At(Line(0))),
          Text("A09_A0902", "奖励名称", kColumns.whole.At(Line(1))),
          Text("A09_A0904", "批准机关", kColumns.left.At(Line(2))),
          Text("A09_A0905", "排名", kColumns.right.At(Line(2), kNumberWidth), kEnd),
          Text("A09_A0906", "等级", kColumns.left.At(Line(3)), kEnd),
          Year("A09_A0907", "年 份", kColumns.right, Line(3)),
          Text("A09_A0908", "证书编号", kColumns.left.At(Line(4)), kEnd),
          Text("A09_A0909", "主要合作者", kColumns.right.At(Line(4)), kEnd),
          Text("A09_A0910", "奖励级别", kColumns.left.At(Line(5))),
      },
      // clang-format on
      .grid = GridFrom(6),
  };
  return design;
}

}  // namespace dossierkit::designs
