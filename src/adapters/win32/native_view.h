// NativeView: a view with a native window behind it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/win32/application.h"
#include "adapters/win32/look.h"
#include "adapters/windows/windows_headers.h"
#include "platform/environment/during.h"
#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/controls/view.h"

namespace dossierkit::win32 {

class WindowView;

// What all views of one platform share.
struct ViewContext {
  Application& application;
  Looks& looks;
  // Of the window that opens next: as the one of ours below it looks, else as the host's screen wants it. To
  // be asked in our surroundings (see surroundings.h).
  const Look& LookOfNext() const;
};

// What a view wants of its native window.
struct NativeWindow {
  const wchar_t* window_class = kPaneClass;
  DWORD style = 0;  // besides WS_CHILD, WS_CLIPSIBLINGS and WS_CLIPCHILDREN
  DWORD extended_style = 0;
};

// Owns its native window, of a class of Windows or of ours: a pane does nothing but what its view does for
// it. All messages of the window come here first: see application.h for what the model is asked before. At
// its end the window is destroyed at once, or, where that end comes inside one of its own messages, hidden at
// once and destroyed once that message has ended; it reports nothing more.
class NativeView : public toolkit::View {
 public:
  ~NativeView() override;
  NativeView(const NativeView&) = delete;
  NativeView& operator=(const NativeView&) = delete;

  void Show(toolkit::Aspect aspect) override;
  void Settle() override;
  // Everything, after creation; what stands on a page that does not show yet, once that does.
  void ShowAll();

  toolkit::Control& GetControl() const { return control_; }
  HWND Handle() const { return window_; }  // null once it was destroyed from outside
  // That of its window, now.
  const Look& GetLook() const { return *look_; }
  const Metrics& GetMetrics() const { return GetLook().GetMetrics(); }
  // Its window has come to a screen of another resolution: it shows as one that is made there, but for what
  // is the user's: text, selection and what is scrolled to.
  virtual void Rescale(const Look& look);
  // The parent of the window of a control that stands in this one.
  virtual HWND ContentFor(const toolkit::Control& /*child*/) const { return window_; }
  // The window that takes the native focus for this control.
  virtual HWND FocusHandle() const { return window_; }
  // Shows its state and that of what stands in it: natively a disabled parent leaves its children as they
  // look.
  virtual void ShowState();

  // --- what the application hands on ------------------------------------------------------------
  // A message of the native window, or of one that was linked as its part, before the window acts on it: the
  // answer where it must not see it; else nothing. Base: a pane paints.
  virtual std::optional<LRESULT> Receive(HWND window, const Message& message);
  // The colour on which it stands, and what stands in it. Base: as of the view in which it stands.
  virtual COLORREF Ground() const;
  // What the native window told its parent: a code of WM_COMMAND, a notification, and what it is painted
  // with.
  virtual void Commanded(WORD /*code*/) {}
  virtual std::optional<LRESULT> Notified(NMHDR& /*notice*/) { return std::nullopt; }
  virtual HBRUSH Colours(HDC /*device*/) { return nullptr; }  // null: as the system does
  virtual bool Draw(const DRAWITEMSTRUCT& /*item*/) { return false; }
  virtual bool Measure(MEASUREITEMSTRUCT& /*item*/) { return false; }
  // An input method hands over a text that the model took: the native window enters it.
  virtual void Enter(const std::wstring& /*text*/) {}
  // The native window was destroyed, by others.
  virtual void Lost() { window_ = nullptr; }

 protected:
  // Throws std::system_error where Windows makes no window.
  NativeView(ViewContext& context, toolkit::Control& control, const NativeWindow& native);
  // The same with a window that was made already.
  NativeView(ViewContext& context, toolkit::Control& control, HWND window);

  // Whether it has an edge, which the native window is to ask for again, and how wide, before anything shows.
  virtual bool MeasureEdge() { return false; }
  virtual void ShowPlacement();
  virtual void ShowStyle();
  virtual void ShowText();
  virtual void ShowContent() {}
  virtual void ShowSelection() {}
  // Of a pane: paints all of it. Base: its ground.
  virtual void Paint(HDC device, const RECT& place);

  ViewContext& Context() const { return context_; }
  // The view of the window in which the control stands; nullptr once it is gone.
  WindowView* Window() const;
  // The text that shows where the mouse rests on it; empty for none.
  void SetTip(const std::wstring& text) const;
  // Visible, and its tab is in front.
  bool Shown() const;
  // Has the window painted anew, soon.
  void Repaint() const;
  // What the native window itself does with a message. Only in the course of Receive; afterwards the view may
  // have ended: see Life.
  static LRESULT Native(HWND window, const Message& message);

  // Expires with the view: a report may end it.
  std::weak_ptr<void> Life() const { return life_; }
  // While it lives, what the native window says is what the view itself does, and is not reported.
  [[nodiscard]] environment::During Showing() { return environment::During(showing_); }
  bool IsShowing() const { return showing_; }
  // While everything is shown one after the other: where it stands comes last.
  bool ShowsAll() const { return shows_all_; }
  // Runs a report; its failure waits until no frame of the system's is left, and ends the topmost window's
  // loop.
  void Report(const std::function<void()>& work) { context_.application.Guard(work); }

 private:
  void ShowNow(toolkit::Aspect aspect);
  void ShowAllNow();
  // The page on which it stands does not show yet: what comes is shown together.
  bool Arriving() const;
  // Whether the native window itself is visible, whatever it stands in.
  bool MarkedVisible() const;
  // Takes its place, above or below what stands beside it.
  void Stack(UINT more = 0);

  ViewContext& context_;
  toolkit::Control& control_;
  const Look* look_;
  HWND window_ = nullptr;
  std::shared_ptr<void> life_;
  bool showing_ = false;
  bool shows_all_ = false;
  bool waiting_ = false;  // shows nothing but its state and place
  bool pane_ = true;      // a window of a class of ours
};

// The window into which the window of a control goes; null for a window, or where there is none yet.
HWND ParentOf(const toolkit::Control& control);

}  // namespace dossierkit::win32
