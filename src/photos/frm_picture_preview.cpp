#include "photos/frm_picture_preview.h"

#include <exception>

#include "photos/photo_files.h"
#include "platform/toolkit/loop/desktop.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {
namespace {

using toolkit::CommandButton;
using toolkit::Image;
using toolkit::Label;

constexpr std::uint64_t kLargestFile = 307200;  // bytes
constexpr int kHideReadOnly = 4;                // of the file dialog: no box "read only"

// The design, in twips: two pictures, each below its label, and a row of three buttons.
constexpr int kMargin = 300;
constexpr int kPictureWidth = 1695;
constexpr int kPictureHeight = 2175;
constexpr int kBetweenPictures = 405;
constexpr int kLabelTop = 210;
constexpr int kLabelHeight = 285;
constexpr int kPictureTop = 540;
constexpr int kButtonTop = 2955;
constexpr int kButtonWidth = 1185;
constexpr int kButtonHeight = 390;
constexpr int kBetweenButtons = 120;
constexpr int kWidth = 2 * kMargin + 2 * kPictureWidth + kBetweenPictures;
constexpr int kHeight = kButtonTop + kButtonHeight + 240;

// A picture that cannot be read leaves the image as it was; false then.
bool ShowPicture(Image& image, const std::string& path) {
  try {
    image.SetPicture(TheRuntime().desktop.GetPlatform().LoadPicture(path, image.Place()));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

frmPicturePreview::frmPicturePreview(toolkit::Desktop& desktop) : Form(desktop, "frmPicturePreview") {
  SetCaption("照片预览");
  SetDesignSize(kWidth, kHeight);
}

void frmPicturePreview::BuildDesign() {
  const auto label = [this](const char* name, const char* caption, int left) {
    auto made = Controls().Make<Label>(name);
    made->SetCaption(caption);
    made->SetAlignCenter(true);
    made->Move({left, kLabelTop, kPictureWidth, kLabelHeight});
    return made;
  };
  const auto image = [this](const char* name, Label& label_above, int left) {
    auto made = Controls().Make<Image>(name);
    made->SetBorder(true);
    made->Move({left, kPictureTop, kPictureWidth, kPictureHeight});
    made->SetLabelledBy(label_above);
    return made;
  };
  int buttons = 0;
  const auto button = [&, this](const char* name, const char* caption) {
    auto made = Controls().Make<CommandButton>(name);
    made->SetCaption(caption);
    made->Move(
        {kMargin + buttons * (kButtonWidth + kBetweenButtons), kButtonTop, kButtonWidth, kButtonHeight});
    ++buttons;
    return made;
  };
  constexpr int right = kMargin + kPictureWidth + kBetweenPictures;
  lblOldPicture_ = label("lblOldPicture", "当前照片", kMargin);
  imgOld_ = image("imgOld", *lblOldPicture_, kMargin);
  lblNewPicture_ = label("lblNewPicture", "新照片", right);
  imgNew_ = image("imgNew", *lblNewPicture_, right);
  const auto cmdSelPic = button("cmdSelPic", "选择(&S)...");
  const auto cmdOK = button("cmdOK", "确   定");
  const auto cmdCancel = button("cmdCancel", "取   消");
  // The window opens on the default button; from there in the order of sight.
  cmdOK->SetTabIndex(0);
  cmdCancel->SetTabIndex(1);
  cmdSelPic->SetTabIndex(2);
  cmdOK->SetDefault(true);
  cmdCancel->SetCancel(true);
  dlgSelPic_ = Controls().Make<toolkit::CommonDialog>("dlgSelPic");

  hooks_.clear();
  hooks_.push_back(cmdSelPic->Click.Subscribe([this] { cmdSelPic_Click(); }));
  // With a picture chosen Enter means the default button, wherever the choice was made from.
  hooks_.push_back(cmdSelPic->Click.Subscribe([this, &ok = *cmdOK] {
    if (!NewFile.empty() && ok.Reachable()) ok.SetFocus();
  }));
  hooks_.push_back(cmdOK->Click.Subscribe([this] { cmdOK_Click(); }));
  hooks_.push_back(cmdCancel->Click.Subscribe([this] { cmdCancel_Click(); }));
}

void frmPicturePreview::Form_Load() {
  Cancelled = 1;
  const toolkit::Rect screen = GetDesktop().GetPlatform().Screen();
  Move({(screen.width - Place().width) / 2, (screen.height - Place().height) / 2, Place().width,
        Place().height});
  OldFile = CurrentPhotoFile(personID);
  TargetFile = PhotoFileName(personID);
  if (OldFile.empty()) {
    lblOldPicture_->SetCaption("当前没有照片");
  } else {
    lblOldPicture_->SetCaption(ShowPicture(*imgOld_, OldFile) ? "当前照片" : "没有找到照片");
  }
}

void frmPicturePreview::cmdSelPic_Click() {
  dlgSelPic_->init_dir = OldFile;
  dlgSelPic_->file_name.clear();
  dlgSelPic_->flags = kHideReadOnly;
  dlgSelPic_->filter = "图片文件 (*.jpg)|*.jpg;";
  dlgSelPic_->ShowOpen();
  std::string chosen = dlgSelPic_->file_name;
  if (!chosen.empty() && TheRuntime().files.FileLen(chosen) > kLargestFile) {
    GetDesktop().MsgBox("所选照片文件不能大于300K,请重新选择", toolkit::kExclamationIcon, "选择照片");
    NewFile.clear();
    chosen.clear();
  }
  if (chosen.empty()) {
    lblNewPicture_->SetCaption("当前没有照片");
    NewFile.clear();
    imgNew_->SetPicture(GetDesktop().GetPlatform().LoadPicture("", imgNew_->Place()));
  } else if (ShowPicture(*imgNew_, chosen)) {
    lblNewPicture_->SetCaption("新照片");
    NewFile = chosen;
  } else {
    lblNewPicture_->SetCaption("没有找到照片");
    NewFile.clear();
  }
}

void frmPicturePreview::cmdOK_Click() {
  try {
    if (!NewFile.empty() && OldFile.empty()) {
      CopyNewFile(TargetFile);
    } else if (!NewFile.empty()) {
      const auto answer = GetDesktop().MsgBox("确定替换现有照片文件吗？",
                                              toolkit::kYesNo + toolkit::kQuestionIcon, Caption());
      if (answer == toolkit::kAnswerNo) return;
      CopyNewFile(OldFile);
    }
    Cancelled = 0;
    Hide();
  } catch (const std::exception& failure) {
    GetDesktop().MsgBox(std::string("更新此人员的照片出错！原因是：") + failure.what(),
                        toolkit::kInformationIcon, Caption());
  }
}

// A file that has vanished since it was chosen is passed over, as required.
void frmPicturePreview::CopyNewFile(const std::string& target) {
  files::Files& files = TheRuntime().files;
  if (files.FileExists(NewFile)) files.CopyFile(NewFile, target, true);
}

void frmPicturePreview::cmdCancel_Click() {
  NewFile.clear();
  Cancelled = 1;
  Hide();
}

std::string frmPicturePreview::CurrentPhotoFile(const std::string& person) {
  try {
    const std::string path = PhotoFileName(person);
    return TheRuntime().files.FileExists(path) ? path : "";
  } catch (const std::exception& failure) {
    GetDesktop().MsgBox(std::string("读取此人员的照片出错！原因是：") + failure.what(),
                        toolkit::kInformationIcon, Caption());
    return "";
  }
}

std::string frmPicturePreview::PhotoFileName(const std::string& person) const {
  return PhotoFilePath(TheRuntime().window->PhotoPath, person);
}

}  // namespace dossierkit
