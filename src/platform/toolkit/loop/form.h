// Form: a modal window. Loading, showing, unloading; focus, keys and dispatch inside it.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/controls.h"

namespace dossierkit::toolkit {

class Desktop;
class UserControl;

// What border and title add to the client area, in twips: the same on every desktop.
inline constexpr int kBorderWidth = 120;
inline constexpr int kBorderHeight = 405;

// The panes of a window that is larger than some screens (see placement.h); none where all of it scrolls.
struct FormPanes {
  std::weak_ptr<Control> bar;
  std::weak_ptr<Control> side;
  std::weak_ptr<Control> scrolled;
};

// A derived window builds its controls in BuildDesign. Its own variables survive unloading; the
// controls do not. A window must live in a shared pointer while shown.
class Form : public Control {
 public:
  Form(Desktop& desktop, std::string name);
  ~Form() override;

  Desktop& GetDesktop() { return desktop_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  std::string OwnCaption() const override { return caption_; }
  // The client area of the design, in twips.
  int DesignWidth() const { return design_width_; }
  int DesignHeight() const { return design_height_; }
  bool Sizable() const { return sizable_; }
  // Whether it opens over the middle of the window below it, else in the middle of the screen.
  bool CenteredOnOwner() const { return centered_on_owner_; }
  bool KeyPreview() const { return key_preview_; }
  const FormPanes& Panes() const { return panes_; }

  // Loads the window if needed, shows it and runs a nested loop until it is hidden or unloaded.
  // Throws 400 if it is on show or loading already, 364 if it was unloaded in its own load, and whatever left
  // an event handler meanwhile; the window is unloaded then.
  void ShowModal();
  void Hide();
  // Destroys the controls and ends the loop.
  void Unload();
  bool Loaded() const { return loaded_; }
  bool Shown() const { return shown_; }
  bool InVisit() const { return loading_ || shown_; }  // from the load to the end of ShowModal
  bool LoopEnded() const;  // no loop of this window runs, or it is about to return

  // The controls; throws 364 while the window is unloaded.
  toolkit::Controls& Controls();

  // --- focus -----------------------------------------------------------------------------------
  const std::shared_ptr<Control>& ActiveControl() const { return focus_; }
  // Moves the focus: Validate, LostFocus, GotFocus. False if the check refused or the control went.
  bool MoveFocus(Control& to);
  // The check of a focus change without the change, for a toolbar button. False if it refused.
  bool CheckFocus();
  // The next reachable tab stop after (or before) the focus, on no hidden tab; nullptr where there is
  // none.
  std::shared_ptr<Control> NextTabStop(bool forward);

  // --- reports of the view ---------------------------------------------------------------------
  // All input runs through Deliver: one event of the user, with whatever it queues. Ignored while
  // the window is not the topmost modal one; gives false then. Never throws: a failure ends the
  // window's loop.
  bool Deliver(const std::function<void()>& event);
  // A key was pressed, whichever control has the focus. In turn, as long as nobody took it: Enter that ends a
  // composition goes nowhere; Tab and Shift+Tab move the focus; a mnemonic clicks its button or check box;
  // KeyDown; KeyPress for each of its characters; what the key means to the control that has the focus. True
  // where the native widget of that control is to do the rest: move a caret, edit a text, press a button.
  bool UserKey(const KeyStroke& stroke);
  // An input method composes a text, or does so no longer. A message box or window that opens ends it.
  void UserCompose(bool composing);
  // An input method hands over a text: it passes KeyPress character by character, with no KeyDown. Gives the
  // characters that were not swallowed, which the control that has the focus is to enter; none where that
  // control went meanwhile.
  std::string UserCommit(const std::string& text);
  // Parts of UserKey. A key went down or a character came; false if it must go no further, as where the focus
  // moved. F4 and Alt+Down that nobody swallowed raise DblClick of a text box, and do nothing else.
  bool UserKeyDown(int key, int shift);
  bool UserKeyPress(char32_t character);
  void UserTab(bool forward);
  void UserClose();  // the close box
  // The outer size, in twips. Form_Resize comes at once, or after the message box or window above.
  void UserResize(int width, int height);

  // Queues "{tab}" or "{Home}+{End}" for after the present event; dropped if the page that has the
  // focus now is gone by then.
  void SendKeys(const std::string& keys);

 protected:
  virtual void BuildDesign() = 0;
  // The controls are gone: what a derived window still holds of them goes, too.
  virtual void ForgetDesign() {}
  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Resize() {}
  virtual void Form_KeyPress(char32_t& /*key*/) {}
  void SetDesignSize(int width, int height);
  void SetSizable(bool sizable) { sizable_ = sizable; }
  void SetCenteredOnOwner(bool centered) { centered_on_owner_ = centered; }
  void SetKeyPreview(bool preview) { key_preview_ = preview; }
  // Of the design: toolbar and menu stay in sight on every screen, `scrolled` alone scrolls.
  void SetPanes(Control& bar, Control& side, Control& scrolled);

  friend class Control;
  friend class toolkit::Controls;
  friend class UserControl;
  void CreateViews() override;
  void DestroyViews() override;

 private:
  struct SentKeys {
    std::string keys;
    std::weak_ptr<Control> page;
    bool had_page;
  };

  void Load();
  void UnloadAfterFailure();
  void PageAdded(const std::shared_ptr<UserControl>& page);
  void FocusFirstStop();
  void ForgetFocusOf(const Control& removed);
  void RunQueues();
  void Resize(int width, int height);
  std::shared_ptr<Control> KeyTarget() const;
  bool ClickButtonOf(int key);
  void DeliverSentKeys(const SentKeys& sent);
  std::vector<std::shared_ptr<Control>> TabOrder() const;

  Desktop& desktop_;
  std::string caption_;
  int design_width_ = 0;
  int design_height_ = 0;
  bool sizable_ = false;
  bool centered_on_owner_ = false;
  bool key_preview_ = false;
  bool loading_ = false;  // by ShowModal
  bool loaded_ = false;
  bool shown_ = false;
  bool checking_ = false;  // a Validate is being raised
  int depth_ = 0;          // of events being delivered
  std::shared_ptr<toolkit::Controls> controls_;
  std::shared_ptr<Control> focus_;
  std::deque<std::weak_ptr<UserControl>> shows_;
  std::deque<SentKeys> sent_keys_;
  std::optional<std::pair<int, int>> late_size_;  // came while something stood above this window
  FormPanes panes_;
};

}  // namespace dossierkit::toolkit
