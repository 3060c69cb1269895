// A06: conferences.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA06() {
  static const PageDesign design = {
      .set = "A06",
      .title = "参加重要学术会议情况",
      .hint = "有论文宣读或收入论文集",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Month("A06_A0601", "时间", kColumns.left, Line(0)),
          Text("A06_A0603", "会议名称", kColumns.whole.At(Line(1))),
          Text("A06_A0602", "主办单位", kColumns.left.At(Line(2))),
          Text("A06_A0604", "会议地点", kColumns.right.At(Line(2))),
          Text("A06_A0605", "论文题目", kColumns.whole.At(Line(3))),
      },
      // clang-format on
      .grid = GridFrom(4),
  };
  return design;
}

}  // namespace dossierkit::designs
