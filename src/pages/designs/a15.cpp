// A15: present and planned work.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

const PageDesign& DesignA15() {
  static const PageDesign design = {
      .set = "A15",
      .title = "近期从事或拟从事的主要业务工作",
      .hint = "包括科研课题、技术开发项目、论著等",
      .move_question = MoveQuestion::kContinue,
      .caret_step = false,
      .key_preview = false,
      // clang-format off
      .fields = {
          Text("A15_A1501", "项目名称", kColumns.whole.At(Line(0))),
          Text("A15_A1502", "任务来源", kColumns.whole.At(Line(1))),
          Text("A15_A1503", "技术路线", kColumns.whole.At(Line(2))),
          Text("A15_A1505", "合作者", kColumns.whole.At(Line(3)), kEnd),
          MultiLine("A15_A1504", "意义", kColumns.whole.Tall(Line(4), Lines(4))),
      },
      // clang-format on
      .grid = GridFrom(8),
  };
  return design;
}

}  // namespace dossierkit::designs
