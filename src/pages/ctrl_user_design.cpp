// How a page is built from its design.
#include "pages/ctrl_user.h"
#include "pages/designs/layout.h"
#include "platform/toolkit/loop/desktop.h"

namespace dossierkit {
namespace {

using toolkit::Frame;
using toolkit::Label;
using toolkit::Rect;

constexpr toolkit::Color kBlue = 0xFF0000;
constexpr toolkit::Color kWhite = 0xFFFFFF;

const toolkit::Font kTitleFont = {"宋体", 14.25, true};

// The inside of a help frame, under its caption, in twips of the frame.
Rect InsideOf(const Rect& frame) {
  return {0, designs::kBoxHeight, frame.width, frame.height - designs::kBoxHeight};
}

std::string StandardHint(std::string_view own) {
  std::string hint(own);
  if (!hint.empty()) hint += "\r\n";
  return hint + "加粗标题为必填项\r\n蓝色文本框可双击鼠标左键选择代码";
}

}  // namespace

ctrlUser::ctrlUser(std::string name, const PageDesign& design)
    : DossierPage(std::move(name)), design_(design) {
  SetKeyPreview(design.key_preview);
  BuildFields();
  BuildHeading();
  BuildHelpFrames();
  if (design.photo) BuildBasicInfo();
}

void ctrlUser::BuildFields() {
  int tab_index = 0;
  for (const FieldDesign& field : design_.fields) {
    const std::string key(field.field);
    std::shared_ptr<Label> label;
    if (!field.caption.empty()) {
      label = Controls().Make<Label>(key + std::string(kCaptionEnding));
      label->SetCaption(std::string(field.caption));
      label->Move(field.label);
      label->SetTabIndex(tab_index++);
    }
    const std::string value_name = key + std::string(kValueEnding);
    std::shared_ptr<toolkit::Control> value;
    if (field.kind == FieldDesign::Kind::kMask) {
      auto box = Controls().Make<toolkit::MaskEdBox>(value_name);
      box->SetMask(std::string(field.mask));
      box->SetFormat(std::string(field.format));
      value = box;
    } else {
      value = Controls().Make<toolkit::TextBox>(value_name, field.kind == FieldDesign::Kind::kMultiLine);
    }
    value->Move(field.box);
    value->SetTag(std::string(field.tag));
    value->SetTabIndex(tab_index++);
    if (label) value->SetLabelledBy(*label);
  }
  for (const FixedLabel& fixed : design_.fixed_labels) {
    const auto label = Controls().Make<Label>(std::string(fixed.name));
    label->SetCaption(std::string(fixed.caption));
    label->SetWordWrap(fixed.place.height > designs::kLabelHeight);
    label->Move(fixed.place);
    for (const FieldDesign& field : design_.fields) {
      if (field.labelled_by == fixed.name)
        Controls().Find(std::string(field.field).append(kValueEnding))->SetLabelledBy(*label);
    }
  }
  DGItems_ = Controls().Make<toolkit::DataGrid>("DGItems");
  DGItems_->Move(design_.grid);
  DGItems_->SetVisible(design_.grid_visible);
  DGItems_->SetTabIndex(tab_index++);
  DGItems_->SetHeadFont({"华文细黑", 9, false});
  DGItems_->SetFont({"宋体", 9, false});
  DGItems_->SetAccessibleName("记录列表");
}

void ctrlUser::BuildHeading() {
  labOpt_ = Controls().Make<Label>("labOpt");
  labOpt_->SetForeColor(kBlue);
  labOpt_->SetFontBold(true);
  labOpt_->Move(designs::kOperationPlace);
  if (!design_.title.empty()) {
    const auto title = Controls().Make<Label>("Title");
    title->SetCaption(std::string(design_.title));
    title->SetFont(kTitleFont);
    title->Move(designs::kTitlePlace);
  }
  Controls().Make<toolkit::Line>("Line1")->Move(design_.photo ? designs::kLineBesideFrame
                                                              : designs::kLinePlace);
}

void ctrlUser::BuildHelpFrames() {
  const auto frame = [this](const char* name, const char* caption, const Rect& place) {
    auto made = Controls().Make<Frame>(name);
    made->SetCaption(caption);
    made->SetBorder(false);
    made->Move(place);
    return made;
  };
  const auto help = [this](const char* name, Frame& container) {
    auto label = Controls().Make<Label>(name);
    label->SetForeColor(kWhite);
    label->SetBackColor(toolkit::kAppWorkspace);
    label->SetOpaque(true);
    label->SetWordWrap(true);
    label->SetContainer(container);
    label->Move(InsideOf(container.Place()));
    return label;
  };
  labExplain_ = help("labExplain", *frame("Frm1", "填表说明", designs::kExplain));
  help("LabInterFace", *frame("Frm2", "界面说明", designs::kHints))->SetCaption(StandardHint(design_.hint));
}

void ctrlUser::BuildBasicInfo() {
  using designs::kBasicInfoFrame;
  const auto frame = Controls().Make<Frame>("frmBasicInfo");
  frame->SetCaption("基本信息");
  frame->SetFont(kTitleFont);
  frame->Move(kBasicInfoFrame);
  const auto photo = Controls().Make<toolkit::Image>("imgPerson");
  photo->SetBorder(true);
  photo->Move(designs::kPhotoPlace);
  photo->SetAccessibleName("照片");
  cmdAddPhoto_ = Controls().Make<toolkit::CommandButton>("cmdAddPhoto");
  cmdAddPhoto_->SetCaption("更新照片");
  cmdAddPhoto_->Move(designs::kAddPhotoPlace);
  cmdAddPhoto_->SetTabIndex(static_cast<int>(Controls().Count()) * 2);
  Controls().Make<toolkit::CommonDialog>("dlgSelPic");
  // The frame holds the fields and the photograph.
  for (const auto& control : Controls()) {
    const Rect& place = control->Place();
    const bool inside = place.left > kBasicInfoFrame.left && place.top > kBasicInfoFrame.top &&
                        place.left + place.width <= kBasicInfoFrame.left + kBasicInfoFrame.width;
    if (!inside || control->Container() != this || control->GetKind() == toolkit::Kind::kCommonDialog)
      continue;
    control->SetContainer(*frame);
    control->Move(
        {place.left - kBasicInfoFrame.left, place.top - kBasicInfoFrame.top, place.width, place.height});
  }
}

// A design whose list is hidden lets a box of several lines have the room of the list until that shows.
void ctrlUser::MakeRoomForList() {
  const int end = DGItems_->Place().top - designs::kGutter;
  for (const auto& control : Controls()) {
    Rect place = control->Place();
    if (!IsValueControl(*control) || place.top >= end || place.top + place.height <= end) continue;
    place.height = end - place.top;
    control->Move(place);
  }
}

void RegisterPages(toolkit::Desktop& desktop) {
  for (const PageDesign* design : PageDesigns()) {
    desktop.RegisterClass(
        "DossierKit.ctrlUser" + std::string(design->set),
        [design](const std::string& name) { return std::make_shared<ctrlUser>(name, *design); });
  }
}

}  // namespace dossierkit
