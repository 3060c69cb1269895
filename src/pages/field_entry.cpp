// A page's fields while somebody works in them: the mark of edits, the help, the check on leaving, the codes.
#include "codes/fm_grp_cod.h"
#include "codes/lookup_code.h"
#include "pages/check_field_rule.h"
#include "pages/control_place.h"
#include "pages/ctrl_user.h"
#include "platform/environment/dates.h"
#include "platform/environment/format.h"
#include "platform/environment/text.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

// Shows the message, if there is one, and keeps the focus in the field.
void Refuse(const std::string& message, bool& Cancel) {
  if (message.empty()) return;
  TheRuntime().desktop.MsgBox(message, toolkit::kOkOnly, "错误信息");
  Cancel = true;
}

void CheckMasked(const cFieldItem& item, toolkit::MaskEdBox& box, bool& Cancel) {
  if (box.Text().empty() || box.Text() == box.BlankMask()) return;
  if (environment::LowerCase(item.FieldType) == "datetime") {
    const std::string entered = environment::Replace(box.Text(), box.PromptChar(), "");
    if (!environment::IsDate(entered)) {
      Refuse(item.ItemDesc + "录入数据不规范！", Cancel);
      return;
    }
    box.SetText(environment::Format(entered, box.Format()));
  } else if (box.Text().find(box.PromptChar()) != std::string::npos) {
    Refuse(item.ItemDesc + "录入数据不规范！", Cancel);
    return;
  }
  Refuse(CheckFieldRule(item, box.Text()), Cancel);
}

void SetCode(cFieldItem& item, toolkit::TextBox& box, const std::string& code, const std::string& caption) {
  item.Dmcod = code;
  item.Dmcpt = caption;
  box.SetText(caption);
}

// Lets the user choose, from what the two variables of the picker start with. Anything but a whole
// choice empties the field.
void ChooseCode(cFieldItem& item, toolkit::TextBox& box, const std::string& search, const std::string& code,
                const std::string& caption) {
  fmGrpCod& picker = CodePicker();
  picker.DmGrp = item.CodeTable;
  picker.SearchText = search;
  picker.Cancelled = true;
  picker.Dmcod = code;
  picker.Dmcpt = caption;
  picker.ShowModal();
  if (!picker.Dmcod.empty() && !picker.Dmcpt.empty()) {
    SetCode(item, box, picker.Dmcod, picker.Dmcpt);
  } else {
    SetCode(item, box, "", "");
  }
}

void ResolveCode(cFieldItem& item, toolkit::TextBox& box) {
  const std::string caption = LookupCode(item, box.Text());
  if (!caption.empty()) {
    box.SetText(caption);
  } else {
    ChooseCode(item, box, box.Text(), "", "");
  }
}

void CheckTextBox(cFieldItem& item, toolkit::TextBox& box, bool& Cancel) {
  if (box.Text().empty()) {
    item.Dmcpt.clear();
    item.Dmcod = "";
  } else if (!item.CodeTable.empty()) {
    ResolveCode(item, box);
  } else {
    Refuse(CheckFieldRule(item, box.Text()), Cancel);
  }
}

}  // namespace

void ctrlUser::cItems_Change(toolkit::Control& ctl) {
  if (mFilling_) return;
  const bool counts = ctl.GetKind() == toolkit::Kind::kMaskEdBox || ctl.GetKind() == toolkit::Kind::kTextBox;
  if (counts && IsValueControl(ctl)) wh_info_.IsChange = true;
}

void ctrlUser::cItems_GotFocus(toolkit::Control& ctl) {
  labExplain_->SetCaption("");
  if (IsValueControl(ctl)) labExplain_->SetCaption(field_items_->Item(KeyOf(ctl))->FldExplain);
  if (auto* masked = dynamic_cast<toolkit::MaskEdBox*>(&ctl); masked && design_.caret_step)
    masked->SetSelStart(0);
}

void ctrlUser::cItems_LostFocus(toolkit::Control&) { labExplain_->SetCaption(""); }

void ctrlUser::cItems_Validate(toolkit::Control& ctl, bool& Cancel) {
  if (!wh_info_.IsChange || mFilling_ || !IsValueControl(ctl)) return;
  environment::At(PlaceOf(ctl, "检查录入的内容"), [&] {
    const auto item = field_items_->Item(KeyOf(ctl));
    if (auto* masked = dynamic_cast<toolkit::MaskEdBox*>(&ctl)) {
      CheckMasked(*item, *masked, Cancel);
    } else if (auto* text = dynamic_cast<toolkit::TextBox*>(&ctl)) {
      CheckTextBox(*item, *text, Cancel);
    }
  });
}

void ctrlUser::cItems_Dblclick(toolkit::Control& ctl) {
  auto* box = dynamic_cast<toolkit::TextBox*>(&ctl);
  if (!box || !IsValueControl(ctl)) return;
  environment::At(PlaceOf(ctl, "选择代码"), [&] {
    const auto item = field_items_->Item(KeyOf(ctl));
    if (!item->CodeTable.empty()) ChooseCode(*item, *box, "", environment::TextOf(item->Dmcod), item->Dmcpt);
  });
}

}  // namespace dossierkit
