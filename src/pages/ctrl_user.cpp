// The page template: its creation, how the metadata is applied to the controls, its keys.
#include "pages/ctrl_user.h"

#include "metadata/field_items.h"
#include "pages/control_place.h"
#include "photos/photo_files.h"
#include "platform/environment/format.h"
#include "platform/environment/text.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

constexpr toolkit::Color kLightBlue = 16572617;  // the box of a coded field

enum ShortCut { kCtrlN = 78, kCtrlS = 83, kCtrlComma = 188, kCtrlPoint = 190 };

void FillCheckBox(toolkit::CheckBox& box, const cFieldItem& item) {
  const std::string stored = environment::TextOf(item.Dmcod);
  box.SetValue(stored.empty() || stored == "0" || stored == "False" ? 0 : 1);
}

void FillCaption(toolkit::Label& label, const cFieldItem& item) {
  label.SetCaption(item.ItemDesc);
  label.SetFontBold(!item.IsNUll);
}

}  // namespace

ctrlUser::~ctrlUser() = default;

void ctrlUser::UserControl_Initialize() {
  toolkit::ControlWindow* window = Window();
  stored.InitProperties(window ? window->AsControl().GetFont() : toolkit::Font());
  cItems_ = std::make_unique<ControlItems>();
  for (const auto& control : Controls()) cItems_->AddControl(control);
  hooks_.push_back(cItems_->Change.Subscribe([this](toolkit::Control& ctl) { cItems_Change(ctl); }));
  hooks_.push_back(cItems_->GotFocus.Subscribe([this](toolkit::Control& ctl) { cItems_GotFocus(ctl); }));
  hooks_.push_back(cItems_->LostFocus.Subscribe([this](toolkit::Control& ctl) { cItems_LostFocus(ctl); }));
  hooks_.push_back(cItems_->Validate.Subscribe(
      [this](toolkit::Control& ctl, bool& Cancel) { cItems_Validate(ctl, Cancel); }));
  hooks_.push_back(cItems_->DblClick.Subscribe([this](toolkit::Control& ctl) { cItems_Dblclick(ctl); }));
  hooks_.push_back(DGItems_->GotFocus.Subscribe([this] { DGItems_GotFocus(); }));
  if (cmdAddPhoto_) hooks_.push_back(cmdAddPhoto_->Click.Subscribe([this] { cmdAddPhoto_Click(); }));
  mFilling_ = true;
}

void ctrlUser::UserControl_Show() { FocusFirstField(); }

void ctrlUser::UserControl_Terminate() {
  if (AdodcRs_ && AdodcRs_->State() == ado::kStateOpen) AdodcRs_->Close();
  AdodcRs_.reset();
}

void ctrlUser::setCtrl(const std::shared_ptr<cFieldItems>& Fitems) {
  mFilling_ = true;
  for (const auto& control : Controls()) {
    if (design_.photo && control->Name() == "imgPerson") {
      environment::At({.set = wh_info_.TabId, .doing = "显示照片 " + PhotoFile()},
                      [&] { ShowPhotoInImage(*control, PhotoFile()); });
    }
    environment::At(PlaceOf(*control, "填写页面"), [&] {
      if (IsValueControl(*control)) {
        if (auto* text = dynamic_cast<toolkit::TextBox*>(control.get())) {
          FillTextBox(*text, *Fitems->Item(KeyOf(*control)));
        } else if (auto* masked = dynamic_cast<toolkit::MaskEdBox*>(control.get())) {
          FillMaskEdBox(*masked, *Fitems->Item(KeyOf(*control)));
        } else if (auto* check = dynamic_cast<toolkit::CheckBox*>(control.get())) {
          FillCheckBox(*check, *Fitems->Item(KeyOf(*control)));
        }
      } else if (environment::Right(control->Name(), 2) == kCaptionEnding) {
        if (auto* label = dynamic_cast<toolkit::Label*>(control.get()))
          FillCaption(*label, *Fitems->Item(KeyOf(*control)));
      }
    });
  }
  wh_info_.IsChange = false;
  mFilling_ = false;
}

void ctrlUser::FillTextBox(toolkit::TextBox& box, const cFieldItem& item) {
  box.SetBackColor(item.CodeTable.empty() ? toolkit::kWindowBackground : kLightBlue);
  box.SetText(item.Dmcpt.empty() ? environment::TextOf(item.Dmcod) : item.Dmcpt);
  // Required: the type is compared with its capital here, so that "varchar" sets no limit.
  const bool limited = !item.FieldLength.empty() && item.CodeTable.empty() &&
                       (item.FieldType == "Ntext" || item.FieldType == "Varchar");
  box.SetMaxLength(limited ? static_cast<std::size_t>(environment::ToInt16(item.FieldLength)) : 0);
}

void ctrlUser::FillMaskEdBox(toolkit::MaskEdBox& box, const cFieldItem& item) {
  const std::string text = environment::TextOf(item.Dmcod);
  if (text.empty()) {
    box.SetText(box.BlankMask());
    return;
  }
  const std::string type = environment::LowerCase(item.FieldType);
  if (type == "datetime") {
    box.SetText(environment::Format(item.Dmcod, box.Format()));
  } else if (type == "varchar" || type == "int") {
    box.SetText(text);
  }
}

void ctrlUser::FocusFirstField() {
  std::shared_ptr<toolkit::Control> first;
  for (const auto& control : Controls()) {
    if (IsValueControl(*control) && (!first || control->TabIndex() < first->TabIndex())) first = control;
  }
  if (first && first->TakesFocus() && first->Reachable()) first->SetFocus();
}

void ctrlUser::UserControl_KeyPress(char32_t& key) {
  if (key == U'\'') key = 0;
}

void ctrlUser::UserControl_KeyDown(int& key, int shift) {
  if (shift != toolkit::kCtrl) return;
  if (key == kCtrlComma || key == kCtrlPoint) {
    MoveRecord(key == kCtrlPoint);
  } else if (key == kCtrlN || key == kCtrlS) {
    const auto window = TheRuntime().window;
    const auto& button = window->TbMain().Button(key == kCtrlN ? "Add" : "Save");
    if (button.Enabled()) window->TbMain_ButtonClick(button);
  }
}

void ctrlUser::MoveRecord(bool forward) {
  const bool tracked = mTrackMove_;
  mTrackMove_ = true;
  // A handler of the move may drop the page.
  if (const auto rows = AdodcRs_; rows && rows->RecordCount() >= 2) {
    if (forward && !rows->EOF_() && rows->AbsolutePosition() < rows->RecordCount()) rows->MoveNext();
    if (!forward && !rows->BOF() && rows->AbsolutePosition() >= 2) rows->MovePrevious();
  }
  mTrackMove_ = tracked;
}

}  // namespace dossierkit
