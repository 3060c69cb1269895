// Form: a modal window: loading, showing, unloading, and the reports of its view.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/controls.h"
#include "platform/toolkit/focus/focus.h"
#include "platform/toolkit/focus/key_input.h"
#include "platform/toolkit/loop/input_queue.h"

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
class Form : public Control, public KeyWindow {
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
  bool Shown() const override { return shown_; }
  bool Open() const override { return shown_ && !LoopEnded(); }
  bool InVisit() const { return loading_ || shown_; }  // from the load to the end of ShowModal
  bool LoopEnded() const;  // no loop of this window runs, or it is about to return

  // The controls; throws 364 while the window is unloaded.
  toolkit::Controls& Controls();

  // --- as its controls see it: see control_window.h --------------------------------------------
  Control& AsControl() override { return *this; }
  ControlWindow* Window() override { return this; }
  bool Deliver(const std::function<void()>& event) override;  // all input runs through it
  void PageAdded(const std::shared_ptr<UserControl>& page) override { queue_.AddPage(page); }
  void SendKeys(const std::string& keys) override;
  const std::shared_ptr<Control>& ActiveControl() const override { return focus_.Present(); }
  bool MoveFocus(Control& to) override { return focus_.Move(to); }
  bool CheckFocus() override { return focus_.Check(); }
  void ForgetFocusOf(const Control& removed) override { focus_.ForgetOf(removed); }
  std::unique_ptr<View> CreateView(Control& control) override;
  std::shared_ptr<Control> CreateControl(const std::string& class_name, const std::string& name) override;
  std::string ChooseFile(const CommonDialog& request) override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void Beep() override;
  void Tick() override;
  const toolkit::Controls* LoadedControls() const override { return loaded_ ? controls_.get() : nullptr; }
  bool Composing() const override;
  void PreviewKeyPress(char32_t& character) override;

  // --- reports of the view ---------------------------------------------------------------------
  // A key was pressed, whichever control has the focus. In turn, as long as nobody took it: Enter that ends a
  // composition goes nowhere; Tab and Shift+Tab move the focus; a mnemonic clicks its button or check box;
  // KeyDown; KeyPress for each of its characters; what the key means to the control that has the focus. True
  // where the native widget of that control is to do the rest: move a caret, edit a text, press a button.
  bool UserKey(const KeyStroke& stroke) { return keys_.Key(stroke); }
  // An input method composes a text, or does so no longer. A message box or window that opens ends it.
  void UserCompose(bool composing);
  // An input method hands over a text: it passes KeyPress character by character, with no KeyDown. Gives the
  // characters that were not swallowed, which the control that has the focus is to enter; none where that
  // control went meanwhile.
  std::string UserCommit(const std::string& text) { return keys_.Commit(text); }
  // Parts of UserKey. A key went down or a character came; false if it must go no further, as where the focus
  // moved. F4 and Alt+Down that nobody swallowed raise DblClick of a text box, and do nothing else.
  bool UserKeyDown(int key, int shift) { return keys_.KeyDown(key, shift); }
  bool UserKeyPress(char32_t character) { return keys_.KeyPress(character); }
  void UserTab(bool forward) { keys_.Tab(forward); }
  void UserClose();  // the close box
  // The outer size, in twips. Form_Resize comes at once, or after the message box or window above.
  void UserResize(int width, int height);

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

  void CreateViews() override;
  void DestroyViews() override;

 private:
  void Load();
  void UnloadAfterFailure();
  void FocusFirstStop();
  void RunQueue();
  void Resize(int width, int height);

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
  std::shared_ptr<toolkit::Controls> controls_;
  Focus focus_;
  KeyInput keys_{*this, focus_};
  InputQueue queue_;
  FormPanes panes_;
};

// The window in which a control stands; nullptr if in none yet or any more.
Form* FormOf(Control& control);

}  // namespace dossierkit::toolkit
