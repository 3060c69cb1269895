// B01: recommendation by the unit.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kLabelWidth);

// A caption too long to stand beside its box stands above it.
static constexpr Place kAppraisal = {CaptionOver(1), BoxUnder(CaptionOver(1))};

const PageDesign& DesignB01() {
  static const PageDesign design = {
      .set = "B01",
      .title = "单位推荐情况",
      .hint = "",
      .move_question = MoveQuestion::kContinue,
      .caret_step = false,
      .key_preview = true,
      // clang-format off
      .fields = {
          Text("B01_B0101", "归口推荐部门", kColumns.whole.At(Line(0))),
          MultiLine("B01_B0102", "提名单位对候选人主要业绩和贡献的概要评价", kAppraisal),
      },
      // clang-format on
      .grid = GridFrom(11),
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
