// Toolbar: a row of buttons that take no focus. CoolBar: the band that carries it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

class Toolbar;

class ToolbarButton {
 public:
  const std::string& Key() const { return key_; }
  const std::string& Caption() const { return caption_; }
  std::string AccessibleName() const;        // the caption less its mnemonic
  int ImageIndex() const { return image_; }  // in the image list; 0 for none
  bool IsSeparator() const { return key_.empty(); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

 private:
  friend class Toolbar;
  ToolbarButton(Toolbar& bar, std::string key, std::string caption, int image)
      : bar_(&bar), key_(std::move(key)), caption_(std::move(caption)), image_(image) {}
  Toolbar* bar_;
  std::string key_;
  std::string caption_;
  int image_;
  bool enabled_ = true;
  bool checks_field_ = false;
};

class Toolbar : public Control {
 public:
  explicit Toolbar(std::string name) : Control(Kind::kToolbar, std::move(name)) {}

  // Both of the design, before the bar has a view; fail (5) once it has one.
  // `checks_field`: a click lets the field with the focus be checked first, and is dropped if that
  // refuses. A mnemonic stands behind "&" in the caption.
  void AddButton(std::string key, std::string caption, int image, bool checks_field = false);
  void AddSeparator();
  const std::vector<ToolbarButton>& Buttons() const { return buttons_; }
  // The button with that key; throws 35601 where there is none.
  ToolbarButton& Button(std::string_view key);

  environment::Event<ToolbarButton&> ButtonClick;

  // The user clicked the button at that index (from 0) or pressed its mnemonic; nothing if disabled.
  void UserClick(std::size_t index);
  // The index of the enabled button with that mnemonic (a letter or digit), or -1.
  int FindMnemonic(char letter) const;

 private:
  void CheckDesigning() const;

  std::vector<ToolbarButton> buttons_;
};

// A band of a cool bar; sizes in twips.
struct Band {
  int width = 0;
  int min_width = 0;
  int min_height = 0;
  bool operator==(const Band&) const = default;
};

class CoolBar : public Control {
 public:
  explicit CoolBar(std::string name) : Control(Kind::kCoolBar, std::move(name)) {}
  // No view shows the bands.
  const std::vector<Band>& Bands() const { return bands_; }
  void AddBand(const Band& band) { bands_.push_back(band); }
  void SetMinHeight(std::size_t band, int height);

 private:
  std::vector<Band> bands_;
};

}  // namespace dossierkit::toolkit
