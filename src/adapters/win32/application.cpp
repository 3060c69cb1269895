#include "adapters/win32/application.h"

#include <algorithm>
#include <utility>

#include "adapters/win32/native_view.h"
#include "adapters/win32/window_view.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {
namespace {

constexpr UINT kRunLater = WM_USER;
constexpr UINT kSweep = WM_USER + 1;

}  // namespace

// A window of ours: the common controls' own way to come before a window, with data that they look up twice
// for each message, makes a page take twice as long under Wine.
struct Application::Link_ {
  Application* application = nullptr;
  WNDPROC before = nullptr;
  NativeView* view = nullptr;
  int depth = 0;  // of its messages on the stack
};

Application* Application::first_ = nullptr;

Application::Application() {
  first_ = this;
  queue_ = CreateWindowExW(0, kQueueClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, OwnModule(), nullptr);
  SetWindowLongPtrW(queue_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(queue_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(QueueProcedure));
}

Application::~Application() {
  while (!links_.empty()) {
    const HWND window = links_.begin()->first;
    Unlink(window);
    DestroyWindow(window);
    links_.erase(window);
  }
  DestroyWindow(queue_);
  Application** place = &first_;
  while (*place != this) place = &(*place)->next_;
  *place = next_;
}

// --- windows and views ---------------------------------------------------------------------------

void Application::Link(HWND window, NativeView& view) {
  auto& link = links_[window];
  const bool linked = link != nullptr;
  if (!linked) link = std::make_shared<Link_>();
  link->view = &view;
  if (linked) return;
  link->application = this;
  const auto ours = reinterpret_cast<LONG_PTR>(Procedure);
  const bool of_ours = GetWindowLongPtrW(window, GWLP_WNDPROC) == ours;  // by its class
  link->before =
      of_ours ? DefWindowProcW : reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, ours));
}

void Application::Unlink(HWND window) {
  if (const auto found = links_.find(window); found != links_.end()) found->second->view = nullptr;
}

void Application::Doom(HWND window) {
  Unlink(window);
  if (!IsWindow(window)) return;
  if (OnStack(window)) {
    ShowWindow(window, SW_HIDE);
    doomed_.push_back(window);
    PostMessageW(queue_, kSweep, 0, 0);  // whichever loop comes next
  } else {
    DestroyWindow(window);
  }
}

void Application::Leave(HWND part) {
  Unlink(part);
  if (IsWindow(part)) spares_.Leave(part);
}

void Application::Retire(HWND page) {
  if (OnStack(page) || MouseHeld()) return Doom(page);
  Unlink(page);
  if (IsWindow(page)) spares_.Keep(page);
}

// Also where a message of a window that stands in it is.
bool Application::OnStack(HWND window) const {
  return std::any_of(links_.begin(), links_.end(), [window](const auto& entry) {
    return entry.second->depth > 0 && (entry.first == window || IsChild(window, entry.first));
  });
}

void Application::Sweep() {
  // Destroying one may end others.
  for (std::size_t i = 0; i < doomed_.size();) {
    const HWND window = doomed_[i];
    if (IsWindow(window) && OnStack(window)) {
      ++i;
      continue;
    }
    doomed_.erase(doomed_.begin() + static_cast<std::ptrdiff_t>(i));
    if (IsWindow(window)) DestroyWindow(window);
  }
}

NativeView* Application::ViewOf(HWND window) const {
  const auto found = links_.find(window);
  return found == links_.end() ? nullptr : found->second->view;
}

HWND Application::OwnerOfNext() const {
  if (const WindowView* top = TopWindow(); top && top->Handle() && IsWindowVisible(top->Handle()))
    return top->Handle();
  // The program's own; a child of it is not to own a window.
  const HWND active = GetActiveWindow();
  return active && !ViewOf(active) ? GetAncestor(active, GA_ROOT) : nullptr;
}

void Application::ReactivateTop() {
  const WindowView* top = TopWindow();
  if (!top || !top->TakesInput()) return;
  SetActiveWindow(top->Handle());
  SyncFocus(static_cast<toolkit::Form&>(top->GetControl()));
}

// --- messages ------------------------------------------------------------------------------------

LRESULT CALLBACK Application::Procedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
  const auto* link = LinkOf(window);
  return link ? (*link)->application->Receive(window, *link, {id, wide, low})
              : DefWindowProcW(window, id, wide, low);
}

LRESULT CALLBACK Application::QueueProcedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
  auto* application = reinterpret_cast<Application*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (id == kRunLater) application->RunLater();
  if (id == kSweep) application->Sweep();
  return DefWindowProcW(window, id, wide, low);
}

LRESULT Application::PassOn(HWND window, const Message& message) {
  const auto* link = LinkOf(window);
  return link ? CallWindowProcW((*link)->before, window, message.id, message.wide, message.low)
              : DefWindowProcW(window, message.id, message.wide, message.low);
}

const std::shared_ptr<Application::Link_>* Application::LinkOf(HWND window) {
  for (const Application* application = first_; application; application = application->next_) {
    const auto found = application->links_.find(window);
    if (found != application->links_.end()) return &found->second;
  }
  return nullptr;
}

// The link may go in the course of the message.
LRESULT Application::Receive(HWND window, std::shared_ptr<Link_> link, const Message& message) noexcept {
  LRESULT result = 0;
  ++link->depth;
  Guard([&] { result = Pass(window, link, message); });
  --link->depth;
  if (message.id == WM_NCDESTROY) {
    links_.erase(window);
    spares_.Forget(window);
    if (link->view) link->view->Lost();
  }
  return result;
}

LRESULT Application::Pass(HWND window, const std::shared_ptr<Link_>& link, const Message& message) {
  if (!link->view) return PassOn(window, message);
  if (message.id == WM_SETCURSOR && busy_) {
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    return TRUE;
  }
  if (const auto answer = input_.Receive(window, message)) return *answer;
  if (const auto answer = Told(message)) return *answer;
  if (link->view) {
    if (const auto answer = link->view->Receive(window, message)) return *answer;
  }
  return PassOn(window, message);
}

// What a child tells its parent is its own view's business.
std::optional<LRESULT> Application::Told(const Message& message) const {
  switch (message.id) {
    case WM_COMMAND:
      if (NativeView* view = ViewOf(reinterpret_cast<HWND>(message.low))) {
        view->Commanded(HIWORD(message.wide));
        return 0;
      }
      break;
    case WM_NOTIFY:
      if (NativeView* view = ViewOf(reinterpret_cast<NMHDR*>(message.low)->hwndFrom))
        return view->Notified(*reinterpret_cast<NMHDR*>(message.low));
      break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORLISTBOX:
      if (NativeView* view = ViewOf(reinterpret_cast<HWND>(message.low))) {
        if (const HBRUSH brush = view->Colours(reinterpret_cast<HDC>(message.wide)))
          return reinterpret_cast<LRESULT>(brush);
      }
      break;
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.low);
      if (NativeView* view = ViewOf(item.hwndItem); view && view->Draw(item)) return TRUE;
      break;
    }
    default: break;
  }
  return std::nullopt;
}

// --- loops ---------------------------------------------------------------------------------------

// One that runs, however it ends.
class Application::Loop {
 public:
  explicit Loop(Application& application) : application_(application) {
    ++application_.loops_begun_;
    ++application_.loops_;
  }
  ~Loop() {
    application_.Sweep();  // also of what another loop, as of a menu, dispatched
    if (--application_.loops_ == 0 && std::exchange(application_.quitting_, false))
      PostQuitMessage(application_.quit_code_);
  }
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

 private:
  Application& application_;
};

bool Application::RunUntil(const std::function<bool()>& done) {
  const Loop loop(*this);
  bool finished = done();
  while (!finished && !quitting_) {
    MSG message;
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
      quitting_ = true;
      quit_code_ = static_cast<int>(message.wParam);
      break;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    Sweep();
    finished = done();
  }
  return finished;
}

void Application::WakeLoops() const { PostMessageW(queue_, WM_NULL, 0, 0); }

void Application::Later(std::weak_ptr<void> life, std::function<void()> work) {
  later_.push_back({std::move(life), std::move(work)});
  PostMessageW(queue_, kRunLater, 0, 0);
}

// One at a time: each may run a loop of its own.
void Application::RunLater() {
  if (later_.empty()) return;
  const Work work = std::move(later_.front());
  later_.pop_front();
  if (!work.life.expired()) Guard(work.run);
}

void Application::Guard(const std::function<void()>& work) noexcept {
  try {
    work();
  } catch (...) {
    // Not at once: this may run in the middle of the painting. A window that went meanwhile hears nothing.
    const WindowView* top = TopWindow();
    if (!top) return;
    try {
      const auto window = top->GetControl().shared_from_this();
      const std::weak_ptr<toolkit::Control> life = window;
      Later(life, [life, failure = std::current_exception()] {
        if (const auto form = life.lock())
          static_cast<toolkit::Form&>(*form).Deliver([&] { std::rethrow_exception(failure); });
      });
    } catch (...) {
      // Nobody is left to hear of it.
    }
  }
}

void Application::ShowBusy(bool busy) {
  if (busy_ == busy) return;
  busy_ = busy;
  if (busy) {
    pointer_before_ = SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
  } else {
    SetCursor(pointer_before_);
  }
}

}  // namespace dossierkit::win32
