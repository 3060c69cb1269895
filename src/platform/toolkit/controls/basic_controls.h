// The controls with little behaviour of their own: labels, frames, pictures, buttons, check boxes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// A control that shows a caption of its own.
class CaptionedControl : public Control {
 public:
  using Control::Control;
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  std::string OwnCaption() const override { return caption_; }

 private:
  std::string caption_;
};

class Label : public CaptionedControl {
 public:
  explicit Label(std::string name) : CaptionedControl(Kind::kLabel, std::move(name)) {}
  bool FontBold() const { return GetFont().bold; }
  void SetFontBold(bool bold);
  bool AlignCenter() const { return align_center_; }
  void SetAlignCenter(bool center) { SetStyle(align_center_, center); }
  bool WordWrap() const { return word_wrap_; }
  void SetWordWrap(bool wrap) { SetStyle(word_wrap_, wrap); }
  bool Opaque() const { return opaque_; }  // paints its BackColor
  void SetOpaque(bool opaque) { SetStyle(opaque_, opaque); }

 private:
  void SetStyle(bool& style, bool on);
  bool align_center_ = false;
  bool word_wrap_ = false;
  bool opaque_ = false;
};

class Frame : public CaptionedControl {
 public:
  explicit Frame(std::string name) : CaptionedControl(Kind::kFrame, std::move(name)) {}
  bool Border() const { return border_; }  // without one the caption heads what stands inside
  void SetBorder(bool border);

 private:
  bool border_ = true;
};

class PictureBox : public Control {
 public:
  explicit PictureBox(std::string name) : Control(Kind::kPictureBox, std::move(name)) {}
};

// A horizontal or vertical line: the longer side of its place.
class Line : public Control {
 public:
  explicit Line(std::string name) : Control(Kind::kLine, std::move(name)) {}
};

// A picture file that the platform has read and decoded; empty for none.
struct Picture {
  std::shared_ptr<const std::vector<unsigned char>> bytes;  // of the file
  // What the platform's own views show, about as large as the control it was loaded for; nobody decodes
  // again.
  std::shared_ptr<const void> decoded;
  bool Empty() const { return !bytes || bytes->empty(); }
};

// Stretches its picture to its place.
class Image : public Control {
 public:
  explicit Image(std::string name) : Control(Kind::kImage, std::move(name)) {}
  const Picture& GetPicture() const { return picture_; }
  void SetPicture(Picture picture);
  bool Border() const { return border_; }
  void SetBorder(bool border);

 private:
  Picture picture_;
  bool border_ = false;
};

class CommandButton : public CaptionedControl {
 public:
  explicit CommandButton(std::string name) : CaptionedControl(Kind::kCommandButton, std::move(name)) {}
  environment::Event<> Click;
  bool Default() const { return default_; }  // Enter clicks it wherever the focus is
  void SetDefault(bool on);
  bool Cancel() const { return cancel_; }  // Esc clicks it; no view shows that
  void SetCancel(bool on) { cancel_ = on; }
  // The user clicked the button, pressed the blank on it, or its mnemonic.
  void UserClick();
  bool ActOnKey(const KeyStroke& stroke) override;  // Enter clicks it

 private:
  bool default_ = false;
  bool cancel_ = false;
};

class CheckBox : public CaptionedControl {
 public:
  explicit CheckBox(std::string name) : CaptionedControl(Kind::kCheckBox, std::move(name)) {}
  environment::Event<> Click;
  int Value() const { return value_; }  // 0 off, 1 on
  void SetValue(int value);
  void UserToggle();

 private:
  int value_ = 0;
};

// The request for a file name. It has no view.
class CommonDialog : public Control {
 public:
  explicit CommonDialog(std::string name) : Control(Kind::kCommonDialog, std::move(name)) {}
  // Read when the dialog opens.
  std::string init_dir;
  std::string file_name;  // the choice after ShowOpen, empty if cancelled
  std::string filter;
  int flags = 0;
  void ShowOpen();
};

}  // namespace dossierkit::toolkit
