#include "tests/random/messages.h"

#include <algorithm>
#include <vector>

#include "platform/environment/text.h"
#include "tests/random/pattern.h"

namespace dossierkit::random {

const char* const kNoRow =
    "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。";

namespace {

enum class Needs { kNothing, kEdits, kLabel, kFailure, kPicker };

struct Box {
  Pattern text;
  int flags;
  const char* title;
  Needs needs = Needs::kNothing;
};

constexpr int kOk = 0;
constexpr int kYesOrNo = 4;
constexpr int kQuestion = 36;
constexpr int kExclamation = 48;
constexpr int kInformation = 64;
const char* const kWindow = "人员维护";
const char* const kNoTitle = "DossierKit";
const char* const kWrong = "错误信息";
const char* const kPreview = "照片预览";

const std::vector<Box>& Boxes() {
  const auto box = [](const char* text, int flags, const char* title, Needs needs = Needs::kNothing) {
    return Box{Pattern(text), flags, title, needs};
  };
  static const std::vector<Box> boxes = {
      // The window.
      box("无法维护此人信息。可能不存在此人Id号或Id号重复。", kOk, kWindow),
      box("必须先维护基本信息集，然后再维护其它信息集。", kOk, kWindow),
      box("此信息集最多只能录入{n}条记录。", kOk, kWindow),
      box("数据被修改且未保存，是否保存？", kYesOrNo, kWindow, Needs::kEdits),
      box("数据被修改且未保存，是否保存？", kYesOrNo, kNoTitle, Needs::kEdits),
      box("此操作将删除此人所有信息，是否删除？", kYesOrNo, kWindow),
      box("是否删除此条记录？", kYesOrNo, kWindow),
      box("数据已被修改并且未被保存，是否取消？", kYesOrNo, kWindow, Needs::kEdits),
      box("数据被修改但未保存，是否保存？", kYesOrNo, kWindow, Needs::kEdits),
      // A move in the record list.
      box("数据已被修改并未保存，是否继续？", kYesOrNo, kNoTitle, Needs::kEdits),
      box("数据已被修改并未保存，是否保存？", kYesOrNo, kNoTitle, Needs::kEdits),
      // A field that is left.
      box("{label}录入数据不规范！", kOk, kWrong, Needs::kLabel),
      box("{label}长度应该为{any}位。", kOk, kWrong, Needs::kLabel),
      box("{label}应该在{any}至{any}之间。", kOk, kWrong, Needs::kLabel),
      // Statements that fail in a trap, and numbers that do.
      box("{any}", kOk, "信息保存", Needs::kFailure),
      box("溢出", kOk, "信息保存"),
      box(kNoRow, kOk, "信息保存"),
      box("{any}", kExclamation, "信息校对", Needs::kFailure),
      // The picker.
      box("请选择代码。", kOk, kNoTitle),
      box("对象变量或 With 块变量未设置", kExclamation, "", Needs::kPicker),
      // Photographs.
      box("请选择需要更新照片的人员！", kInformation, "更新照片"),
      box("更新照片出错！原因是：文件未找到", kInformation, "更新照片"),
      box("更新照片出错！原因是：无效图片", kInformation, "更新照片"),
      box("所选照片文件不能大于300K,请重新选择", kExclamation, "选择照片"),
      box("确定替换现有照片文件吗？", kQuestion, kPreview),
      box("更新此人员的照片出错！原因是：拒绝的权限", kInformation, kPreview),
      box("更新此人员的照片出错！原因是：路径未找到", kInformation, kPreview),
  };
  return boxes;
}

bool Fulfilled(Needs needs, const Match& match, const headless::Message& message, const Circumstances& now) {
  switch (needs) {
    case Needs::kNothing: return true;
    case Needs::kEdits: return now.edited;
    case Needs::kLabel: return now.is_label(match.label);
    case Needs::kFailure: return now.is_failure(message.text);
    case Needs::kPicker: return !now.picker_caption.empty() && message.title == now.picker_caption;
  }
  return false;
}

const char* const kBirthDate = "身份证号中的出生日期与您实际填写的出生日期不对应，请确认。";

// The lines of a refused record. The words of two differ by a blank from the second line on.
bool IsRefusal(const std::string& text, const Circumstances& now) {
  static const std::vector<Pattern> kEither = {
      Pattern("{label} 数据应该小于256个字符长度"),
      Pattern("{label} 数据应该输入数字"),
      Pattern("{label} 数据数据填写不完整"),
  };
  static const std::vector<Pattern> kFirst = {
      Pattern("{label} 数据应该是日期型，例如1990年03月"),
      Pattern("{label} 为必填项"),
  };
  static const std::vector<Pattern> kLater = {
      Pattern("{label}  数据应该是日期型，例如1990年03月"),
      Pattern("{label}  为必填项"),
  };
  const std::vector<std::string> lines = environment::Split(text, "\r\n");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto fits = [&](const Pattern& pattern) {
      Match match;
      return pattern.Matches(lines[i], match) && now.is_label(match.label);
    };
    const bool fixed = lines[i] == kBirthDate || (i == 0 && lines[i] == "身份证号码必须为15或18位");
    if (!fixed && !std::ranges::any_of(kEither, fits) && !std::ranges::any_of(i == 0 ? kFirst : kLater, fits))
      return false;
  }
  return !lines.empty();
}

}  // namespace

std::string ComplaintAbout(const headless::Message& message, const Circumstances& now) {
  if (message.title == kWrong && message.flags == kOk && IsRefusal(message.text, now)) return {};
  for (const Box& box : Boxes()) {
    Match match;
    if (message.flags != box.flags || (box.needs != Needs::kPicker && message.title != box.title)) continue;
    if (box.text.Matches(message.text, match) && Fulfilled(box.needs, match, message, now)) return {};
  }
  return "[" + message.title + "] " + message.text + " (" + std::to_string(message.flags) + ")" +
         (now.edited ? "" : ", on a page without edits");
}

}  // namespace dossierkit::random
