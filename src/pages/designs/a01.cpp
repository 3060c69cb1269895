// A01: basic information, with the photograph.
#include "pages/designs/designs.h"
#include "pages/designs/layout.h"

namespace dossierkit::designs {

// Two columns: the first seven lines stand beside the photograph, the rest have the whole width.
static constexpr Column kLeft = {450, kLabelWidth, 3990};
static constexpr Column kRightByPhoto = {4140, kLabelWidth, 7335};
static constexpr Column kWholeByPhoto = {450, kLabelWidth, 7335};
static constexpr Column kRight = {4140, kLabelWidth, 9300};
static constexpr Column kWhole = {450, kLabelWidth, 9300};

static constexpr int InfoLine(int n) { return Line(n, kPhotoPlace.top); }

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
          Text("A01_A0101", "姓    名", kLeft.At(InfoLine(0)), kBegin),
          Text("A01_A0102", "性   别", kRightByPhoto.At(InfoLine(0))),
          Text("A01_A0103", "民    族", kLeft.At(InfoLine(1))),
          Text("A01_A0114", "户籍所在地", kRightByPhoto.At(InfoLine(1))),
          Masked("A01_A0104", "出生日期", kLeft.At(InfoLine(2), kDayWidth), kDayMask),
          Text("A01_A0105", "党    派", kRightByPhoto.At(InfoLine(2))),
          Text("A01_A0106", "文化程度", kLeft.At(InfoLine(3))),
          Text("A01_A0107", "学    位", kRightByPhoto.At(InfoLine(3))),
          Text("A01_A0140", "毕业院校", kWholeByPhoto.At(InfoLine(4))),
          Month("A01_A0108", "毕业时间", kLeft, InfoLine(5)),
          Text("A01_A0109", "所学专业", kRightByPhoto.At(InfoLine(5))),
          Text("A01_A0110", "从事专业", kLeft.At(InfoLine(6))),
          Month("A01_A0116", "参加工作时间", kRightByPhoto, InfoLine(6)),
          Text("A01_A0115", "工作单位", kWhole.At(InfoLine(7))),
          Text("A01_A0113", "行政职务", kLeft.At(InfoLine(8))),
          Text("A01_A0121", "通讯地址", kRight.At(InfoLine(8))),
          Masked("A01_A0117", "邮政编码", kLeft.At(InfoLine(9), kPostcodeWidth), kPostcodeMask),
          Text("A01_A0118", "办公电话", kRight.At(InfoLine(9))),
          Text("A01_A0119", "手机号码", kLeft.At(InfoLine(10))),
          Text("A01_A0120", "E-Mail", kRight.At(InfoLine(10))),
          Text("A01_A0112", "专业技术职务", kLeft.At(InfoLine(11))),
          Text("A01_A0122", "专业分类", kRight.At(InfoLine(11))),
          Text("A01_A0123", "单位类别", kLeft.At(InfoLine(12))),
          Text("A01_A0124", "单位性质", kRight.At(InfoLine(12))),
          Text("A01_A0125", "单位隶属", kLeft.At(InfoLine(13))),
          Text("A01_A0128", "特贴年份", kRight.At(InfoLine(13), kYearWidth)),
          Text("A01_A0129", "优青年份", kLeft.At(InfoLine(14), kYearWidth)),
          Text("A01_A0127", "卓荐年份", kRight.At(InfoLine(14), kYearWidth)),
          Text("A01_A0131", "身份证号", kLeft.At(InfoLine(15))),
      },
      // clang-format on
      .grid = kStubGrid,
      .grid_visible = false,
      .explain = kExplain,
      .hints = kHints,
  };
  return design;
}

}  // namespace dossierkit::designs
