// A01: basic information, with the photograph.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

// Two columns: the first seven lines stand beside the photograph, the rest have the whole width.
static constexpr int kInfoLeft = kFieldsLeft + kFramePadding;
static constexpr int kInfoRight = kFieldsRight - kFramePadding;
static constexpr int kByPhoto = kPhotoPlace.left - kGutter;
static constexpr int kLeftEnd = kInfoLeft + 3570;
static constexpr Column kLeft = {kInfoLeft, kLabelWidth, kLeftEnd};
static constexpr Column kRightByPhoto = {kLeftEnd + kGutter, kLabelWidth, kByPhoto};
static constexpr Column kWholeByPhoto = {kInfoLeft, kLabelWidth, kByPhoto};
static constexpr Column kRight = {kLeftEnd + kGutter, kLabelWidth, kInfoRight};
static constexpr Column kWhole = {kInfoLeft, kLabelWidth, kInfoRight};

const PageDesign& DesignA01() {
  static const PageDesign design = {
      .set = "A01",
      .title = "",
      .hint = "",
      .move_question = MoveQuestion::kSave,
      .caret_step = true,
      .key_preview = false,
      .photo = true,
      // clang-format off
      .fields = {
          Text("A01_A0101", "姓    名", kLeft.At(Line(0)), kBegin),
          Text("A01_A0102", "性   别", kRightByPhoto.At(Line(0))),
          Text("A01_A0103", "民    族", kLeft.At(Line(1))),
          Text("A01_A0114", "户籍所在地", kRightByPhoto.At(Line(1))),
          Masked("A01_A0104", "出生日期", kLeft.At(Line(2), kDayWidth), kDayMask),
          Text("A01_A0105", "党    派", kRightByPhoto.At(Line(2))),
          Text("A01_A0106", "文化程度", kLeft.At(Line(3))),
          Text("A01_A0107", "学    位", kRightByPhoto.At(Line(3))),
          Text("A01_A0140", "毕业院校", kWholeByPhoto.At(Line(4))),
          Month("A01_A0108", "毕业时间", kLeft, Line(5)),
          Text("A01_A0109", "所学专业", kRightByPhoto.At(Line(5))),
          Text("A01_A0110", "从事专业", kLeft.At(Line(6))),
          Month("A01_A0116", "参加工作时间", kRightByPhoto, Line(6)),
          Text("A01_A0115", "工作单位", kWhole.At(Line(7))),
          Text("A01_A0113", "行政职务", kLeft.At(Line(8))),
          Text("A01_A0121", "通讯地址", kRight.At(Line(8))),
          Masked("A01_A0117", "邮政编码", kLeft.At(Line(9), kPostcodeWidth), kPostcodeMask),
          Text("A01_A0118", "办公电话", kRight.At(Line(9))),
          Text("A01_A0119", "手机号码", kLeft.At(Line(10))),
          Text("A01_A0120", "E-Mail", kRight.At(Line(10))),
          Text("A01_A0112", "专业技术职务", kLeft.At(Line(11))),
          Text("A01_A0122", "专业分类", kRight.At(Line(11))),
          Text("A01_A0123", "单位类别", kLeft.At(Line(12))),
          Text("A01_A0124", "单位性质", kRight.At(Line(12))),
          Text("A01_A0125", "单位隶属", kLeft.At(Line(13))),
          Text("A01_A0128", "特贴年份", kRight.At(Line(13), kYearWidth)),
          Text("A01_A0129", "优青年份", kLeft.At(Line(14), kYearWidth)),
          Text("A01_A0127", "卓荐年份", kRight.At(Line(14), kYearWidth)),
          Text("A01_A0131", "身份证号", kLeft.At(Line(15))),
      },
      // clang-format on
      .grid = kStubGrid,
      .grid_visible = false,
  };
  return design;
}

}  // namespace dossierkit::designs
