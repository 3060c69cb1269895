// A14: views on the state and trends of the field.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

const PageDesign& DesignA14() {
  static const PageDesign design = {
      .set = "A14",
      .title = "候选人对所从事领域的现状和发展趋势的认识",
      .hint =
          "候选人对所从事专业领域的现状及发展趋势的认识。概要介绍,限500字以内。包括对科研"
          "方向以及技术开发和应用推广等工作的看法",
      .move_question = MoveQuestion::kContinue,
      .caret_step = false,
      .key_preview = false,
      // clang-format off
      .fields = {
          MultiLineBy("A14_A1401", "A14_A1401_cc", BoxUnder(CaptionOver(0))),
      },
      // clang-format on
      .fixed_labels = {{"A14_A1401_cc",
                        "概要介绍，限500字以内。包括对科研方向以及技术开发和应用推广等工作的看法。",
                        CaptionOver(0)}},
      .grid = kStubGrid,
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
