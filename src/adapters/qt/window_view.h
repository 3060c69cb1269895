// WindowView: a modal window. Its controls stand in an area that scrolls on a smaller screen.
#pragma once

#include "adapters/qt/widget_view.h"

class QScrollArea;

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::qt {

class WindowView : public WidgetView {
 public:
  WindowView(ViewContext& context, toolkit::Form& form);
  ~WindowView() override;

  QWidget* Content() const override { return content_; }
  QWidget* FocusWidget() const override { return nullptr; }

  // Shows the window, at first in the middle of the screen, and makes it the active one.
  void Present();
  void Withdraw();
  void BringIntoSight(QWidget& widget);
  // Clicks the enabled button with that mnemonic; false where there is none.
  bool ClickMnemonic(char letter);

  // The native window was closed by the user, or changed its size.
  void Closed();
  void Resized();

 protected:
  void ShowPlacement() override;
  void ShowState() override {}
  void ShowText() override;

 private:
  toolkit::Form& GetForm() const;
  QSize DesignSize() const;

  QScrollArea* area_ = nullptr;
  QWidget* content_ = nullptr;
  toolkit::Rect place_;  // as the program set it last
  bool presented_ = false;
};

}  // namespace dossierkit::qt
