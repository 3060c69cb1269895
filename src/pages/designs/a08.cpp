// A08: projects and achievements.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kWideLabelWidth);

const PageDesign& DesignA08() {
  static const PageDesign design = {
      .set = "A08",
      .title = "主持或参加完成和专业成果",
      .hint =
          "主持或参加完成开拓性或创新性的专业成果，包括具有创新性或开拓性的科研课题；"
          "新技术、新方法的开发、应用、引进、推广项目；重大工程的规划、设计、研制、建造、"
          "运行和管理项目；以及新产品研制、发明创造（专利）、论著等项目；",
      .move_question = MoveQuestion::kContinue,
      .caret_step = true,
      .key_preview = true,
      // clang-format off
      .fields = {
          Text("A08_A0801", "成果（项目）名称", kColumns.whole.At(Line(0))),
          Month("A08_A0802", "完成时间", kColumns.left, Line(1)),
          Text("A08_A0803", "创新性成果", kColumns.whole.At(Line(2))),
          Text("A08_A0804", "经济或社会效益", kColumns.whole.At(Line(3))),
          Text("A08_A0806", "合作者", kColumns.left.At(Line(4))),
          Text("A08_A0805", "角色", kColumns.right.At(Line(4))),
      },
      // clang-format on
      .grid = GridFrom(5),
  };
  return design;
}

}  // namespace dossierkit::designs
