// A12: achievements, contributions and conduct.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

// Two lines of text.
static constexpr Rect kExplanation = {kFieldsLeft, kBodyTop, kFieldsWidth, 600};

const PageDesign& DesignA12() {
  static const PageDesign design = {
      .set = "A12",
      .title = "候选人主要成就、贡献及学风道德情况",
      .hint =
          "说明在专业工作中的成就和贡献，以及个人在所承担科研课题、技术项目中发挥作用情况"
          "和解决的主要技术难题，取得的系统性、创造性成果，对科学技术发展的影响及经济效益"
          "或社会效益分析等",
      .move_question = MoveQuestion::kContinue,
      .caret_step = false,
      .key_preview = false,
      // clang-format off
      .fields = {
          MultiLineBy("A12_A1201", "A12_A1201_cc", BoxUnder(kExplanation)),
      },
      // clang-format on
      .fixed_labels = {{"A12_A1201_cc",
                        "限1000字以内，说明在专业工作中的成就和贡献，以及个人在所承担科研课题、技术项目中"
                        "发挥作用情况和解决的主要技术难题，取得的系统性、创造性成果，对科学技术发展的影响及"
                        "经济效益或社会效益分析等。",
                        kExplanation}},
      .grid = kStubGrid,
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
