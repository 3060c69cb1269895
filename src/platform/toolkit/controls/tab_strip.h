// TabStrip: tabs of which one is in front, with the controls that stand on each.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// Tabs are numbered from 0; the first one is in front at the start.
class TabStrip : public Control {
 public:
  explicit TabStrip(std::string name) : Control(Kind::kTabStrip, std::move(name)) {}

  // Adds a tab at the end.
  void AddTab(std::string caption);
  int TabCount() const { return static_cast<int>(captions_.size()); }
  // Both throw 380 for a tab that is not there.
  const std::string& TabCaption(int tab) const;
  void SetTabCaption(int tab, std::string caption);

  // The tab in front. Setting throws 380 for a tab that is not there. The focus stays where it is, also
  // on a control of the tab that goes behind.
  int Tab() const { return tab_; }
  void SetTab(int tab);

  // Places a control on a tab; it is seen while that one is in front. Throws 380 for a tab that is not
  // there.
  void SetTabPage(Control& control, int tab);
  // The tab on which a control was placed, or -1.
  int TabPage(const Control& control) const;

  // The user clicked a tab or moved to it: the focus moves here first, and may be refused.
  void UserSelectTab(int tab);
  bool ActOnKey(const KeyStroke& stroke) override;  // the arrows to the left and to the right

 private:
  struct Placed {
    std::weak_ptr<Control> control;
    int tab;
  };
  void Check(int tab) const;
  void BringToFront(int tab);

  std::vector<std::string> captions_;
  std::vector<Placed> placed_;
  int tab_ = 0;
};

// Whether the control, or a container of it, stands on a tab that is not in front.
bool OnHiddenTab(const Control& control);

}  // namespace dossierkit::toolkit
