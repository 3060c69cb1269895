// A13: training of talents.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

static constexpr Columns kColumns = ColumnsOf(kWideLabelWidth);

const PageDesign& DesignA13() {
  static const PageDesign design = {
      .set = "A13",
      .title = "培养人才情况",
      .hint = "",
      .move_question = MoveQuestion::kContinue,
      .caret_step = false,
      .key_preview = false,
      // clang-format off
      .fields = {
          Text("A13_A1302", "硕士数量", kColumns.left.At(Line(0), kNumberWidth)),
          Text("A13_A1303", "专业技术骨干数量", kColumns.right.At(Line(0), kNumberWidth)),
          Text("A13_A1301", "博士数量", kColumns.left.At(Line(1), kNumberWidth)),
          Text("A13_A1304", "其他人员数量", kColumns.right.At(Line(1), kNumberWidth)),
          MultiLineBy("A13_A1305", "A13_A1305_cc", BoxUnder(CaptionOver(2))),
      },
      // clang-format on
      .fixed_labels = {{"A13_A1305_cc", "培养人才情况概述及今后人才培养和创新团队建设的设想（限300字）",
                        CaptionOver(2)}},
      .grid = kStubGrid,
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
