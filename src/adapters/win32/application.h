// Application: the component's part in the program's thread: its native windows, and what their messages
// mean.
#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "adapters/win32/focus_sync.h"
#include "adapters/win32/input.h"
#include "adapters/win32/message.h"
#include "adapters/win32/spare_windows.h"
#include "adapters/win32/window_classes.h"
#include "adapters/windows/windows_headers.h"

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::win32 {

class NativeView;
class WindowView;

// One for each platform. Every window of ours is linked to it: its messages come here first, whichever loop
// dispatches them. In turn, as long as nobody took it: a press asks the model for the focus, a key passes the
// model, a native focus that came from outside is followed or put back; what a child tells its parent goes to
// the child's view; then the message goes to its own view, and to the native window. Nothing leaves a
// window's procedure: a failure is kept until no frame of the system's is left.
class Application {
 public:
  Application();
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // --- windows and views -----------------------------------------------------------------------
  // From now on the window's messages come here, and to the view.
  void Link(HWND window, NativeView& view);
  // The view hears nothing more. The window is destroyed at once, or, while a message of it or of what stands
  // in it is on the stack, hidden and destroyed afterwards.
  void Doom(HWND window);
  // The view hears nothing more; the window is somebody else's to destroy.
  void Unlink(HWND window);
  // The same, where what stands on a page goes with that, and for the page itself: its window is kept for the
  // next one where it would be destroyed at once.
  void Leave(HWND part);
  void Retire(HWND page);
  SpareWindows& Spares() { return spares_; }
  NativeView* ViewOf(HWND window) const;  // nullptr for others
  void AddWindow(WindowView& window) { windows_.push_back(&window); }
  void RemoveWindow(WindowView& window) { std::erase(windows_, &window); }
  // The window that was made last; nullptr if none is left.
  WindowView* TopWindow() const { return windows_.empty() ? nullptr : windows_.back(); }

  // --- focus -----------------------------------------------------------------------------------
  // Gives the native focus to the control that has the model's focus.
  void SyncFocus(toolkit::Form& form) { focus_.Show(form); }
  // The native focus came to a view's window.
  void FollowFocus(NativeView& view) { focus_.Follow(view); }
  bool MouseHeld() const { return input_.MouseHeld(); }

  // --- loops -----------------------------------------------------------------------------------
  // Runs messages until `done`, which is asked again behind each of them and whenever the loops are woken.
  // False where the program is to end before: the message that says so comes again once the last loop has
  // ended. What a host's own window throws comes through, and nothing of the loop is left then either.
  bool RunUntil(const std::function<bool()>& done);
  void WakeLoops() const;
  bool Quitting() const { return quitting_; }
  // Grows with each loop that begins.
  int LoopsBegun() const { return loops_begun_; }

  // What the window did with a message before it was linked.
  static LRESULT PassOn(HWND window, const Message& message);

  // Runs work once the present message, or event of the program's, has ended; where `life` expired before,
  // never.
  void Later(std::weak_ptr<void> life, std::function<void()> work);
  // Runs what a view does on its own; its failure ends the loop of the window on top, once no frame of the
  // system's is left.
  void Guard(const std::function<void()>& work) noexcept;

  // The pointer says "wait".
  void ShowBusy(bool busy);

  // After a window or message box: the window below is the active one again, with the focus of the model.
  void ReactivateTop();
  // The window over which the next one opens: the topmost of ours, else the program's own active one; or
  // null.
  HWND OwnerOfNext() const;

 private:
  struct Link_;
  class Loop;
  struct Work {
    std::weak_ptr<void> life;
    std::function<void()> run;
  };

  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept;
  static LRESULT CALLBACK QueueProcedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept;
  LRESULT Receive(HWND window, std::shared_ptr<Link_> link, const Message& message) noexcept;
  LRESULT Pass(HWND window, const std::shared_ptr<Link_>& link, const Message& message);
  std::optional<LRESULT> Told(const Message& message) const;
  void RunLater();
  bool OnStack(HWND window) const;
  void Sweep();

  // What belongs to a window: looked up here, since Windows keeps user data at a cost for each window that
  // comes and goes. Null for a window that is not linked, or not any more.
  static const std::shared_ptr<Link_>* LinkOf(HWND window);

  static Application* first_;  // of those that live, all in the one thread that has windows
  Application* next_ = first_;
  WindowClasses classes_{Procedure};
  std::unordered_map<HWND, std::shared_ptr<Link_>> links_;
  std::vector<HWND> doomed_;
  SpareWindows spares_;
  std::vector<WindowView*> windows_;
  HWND queue_ = nullptr;  // wakes the loops and runs what waits
  std::deque<Work> later_;
  FocusSync focus_{*this};
  Input input_{*this};
  int loops_ = 0;
  int loops_begun_ = 0;
  bool quitting_ = false;
  int quit_code_ = 0;
  bool busy_ = false;
  HCURSOR pointer_before_ = nullptr;
};

}  // namespace dossierkit::win32
