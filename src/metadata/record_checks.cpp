#include "metadata/record_checks.h"

#include "platform/environment/dates.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"

namespace dossierkit {
namespace {

constexpr std::size_t kGreatestLength = 255;  // whatever the field's own length

}  // namespace

bool IsFilled(const toolkit::MaskEdBox& box) { return !box.Text().empty() && box.Text() != box.BlankMask(); }

void RecordChecks::Add(const std::string& first_form, const std::string& later_form) {
  if (error_text_.empty()) {
    error_text_ = first_form;
  } else {
    error_text_ += "\r\n" + later_form;
  }
}

void RecordChecks::CheckText(const cFieldItem& item, const std::string& text) {
  const std::string& label = item.ItemDesc;
  const std::string type = environment::LowerCase(item.FieldType);
  if (type == "varchar") {
    if (environment::Length(text) > kGreatestLength) {
      const std::string message = label + " 数据应该小于256个字符长度";
      Add(message, message);
    }
    if (walk_ != Walk::kReplace && item.ItemName == "A0131") CheckIdNumberLength(text);
  } else if (type == "int" && !text.empty()) {
    if (!environment::IsNumeric(text)) {
      const std::string message = label + " 数据应该输入数字";
      Add(message, message);
    } else {
      // The conversion itself fails beyond the range, so that the message is never shown.
      const std::int32_t number = environment::ToInt16(text);
      if (number < -32768 || number > 32767) {
        const std::string message = label + " 数据应该在 -32768到32767范围内";
        Add(message, message);
      }
    }
  } else if (type == "datetime" && !text.empty()) {
    if (!environment::IsDate(text)) {
      Add(label + " 数据应该是日期型，例如1990年03月", label + "  数据应该是日期型，例如1990年03月");
    }
    if (walk_ == Walk::kUpdate && item.ItemName == "A0104") birth_date_ = text;
  }
  if (!item.IsNUll && text.empty()) Add(label + " 为必填项", label + "  为必填项");
}

void RecordChecks::CheckIdNumberLength(const std::string& text) {
  const std::size_t length = environment::Length(text);
  if (length == 15 || length == 18) {
    id_number_ = text;
  } else {
    // Required: whatever was said before is lost here.
    error_text_ = "身份证号码必须为15或18位";
  }
}

void RecordChecks::CheckMasked(const cFieldItem& item, const toolkit::MaskEdBox& box) {
  const std::string& label = item.ItemDesc;
  const std::string type = environment::LowerCase(item.FieldType);
  const bool filled = IsFilled(box);
  if (type == "varchar" && filled && box.Text().find(box.PromptChar()) != std::string::npos) {
    const std::string message = label + " 数据数据填写不完整";
    Add(message, message);
  }
  if (type == "datetime" && filled) {
    if (!environment::IsDate(box.Text())) {
      Add(label + " 数据应该是日期型，例如1990年03月", label + "  数据应该是日期型，例如1990年03月");
    }
    if (walk_ != Walk::kReplace && item.ItemName == "A0104") birth_date_ = box.Text();
  }
  if (!item.IsNUll && !filled) Add(label + " 为必填项", label + "  为必填项");
}

void RecordChecks::CheckBirthDate() {
  if (walk_ == Walk::kReplace) return;
  std::string in_number = id_number_;
  if (environment::Length(id_number_) == 15) in_number = "19" + environment::Middle(id_number_, 6, 6);
  if (environment::Length(id_number_) == 18) in_number = environment::Middle(id_number_, 6, 8);
  const std::string entered = birth_date_.empty() ? "" : environment::Format(birth_date_, "yyyyMMdd");
  if (!in_number.empty() && in_number != entered) {
    const std::string message = "身份证号中的出生日期与您实际填写的出生日期不对应，请确认。";
    Add(message, message);
  }
}

}  // namespace dossierkit
