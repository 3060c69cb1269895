// The native views as a guest in the thread of a host: what they take of it, and what they leave.
#include <stdexcept>
#include <thread>

#include "adapters/win32/native_view.h"
#include "adapters/win32/win32_platform.h"
#include "adapters/win32/window_classes.h"
#include "tests/adapters/views/view_test.h"
#include "tests/support/win32_user.h"

namespace dossierkit::views {
namespace {

using tests::RunMessages;
using toolkit::CommandButton;

// A window of the host's, on show.
class HostWindow {
 public:
  HostWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                nullptr, nullptr, nullptr, nullptr)) {}
  ~HostWindow() { DestroyWindow(window_); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  HWND Get() const { return window_; }

 private:
  HWND window_;
};

using Texts = std::vector<std::wstring>;

BOOL CALLBACK NoteOurs(HWND window, LPARAM found) {
  wchar_t name[64] = {};
  wchar_t text[64] = {};
  GetClassNameW(window, name, 63);
  GetWindowTextW(window, text, 63);
  if (std::wstring(name).starts_with(L"DossierKit.") && name != std::wstring(win32::kQueueClass))
    reinterpret_cast<Texts*>(found)->push_back(std::wstring(name) + L" " + text);
  return TRUE;
}

// The windows of this thread that are ours, without the one that only wakes loops: their classes and texts.
Texts OursLeft() {
  Texts left;
  EnumThreadWindows(GetCurrentThreadId(), NoteOurs, reinterpret_cast<LPARAM>(&left));
  return left;
}

BOOL CALLBACK Count(HWND, LPARAM counted) {
  ++*reinterpret_cast<int*>(counted);
  return TRUE;
}

int ChildrenOf(HWND window) {
  int children = 0;
  EnumChildWindows(window, Count, reinterpret_cast<LPARAM>(&children));
  return children;
}

// A visit that nobody plays a scene in.
class NativeGuest : public testing::Test {
 protected:
  win32::Win32Platform platform;
  toolkit::Desktop desktop{platform};
  std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
};

class NativeVisit : public ViewTest {
 protected:
  HWND Native(const std::string& name) { return static_cast<tests::Win32User&>(user).ViewOf(name).Handle(); }
};

TEST_F(NativeVisit, TheHostsWindowsTakeNoInputMeanwhile) {
  const HostWindow host;
  const HostWindow disabled;
  EnableWindow(disabled.Get(), FALSE);
  Visit([&] {
    EXPECT_FALSE(IsWindowEnabled(host.Get()));
    driver->Play(*picker, [&] {
      EXPECT_FALSE(IsWindowEnabled(host.Get()));
      EXPECT_FALSE(IsWindowEnabled(static_cast<win32::NativeView*>(form->GetView())->Handle()));
    });
    EXPECT_FALSE(IsWindowEnabled(host.Get()));
    EXPECT_TRUE(IsWindowEnabled(Native("frmSample")));
  });
  EXPECT_TRUE(IsWindowEnabled(host.Get()));
  EXPECT_FALSE(IsWindowEnabled(disabled.Get())) << "as the host had it";
}

TEST_F(NativeVisit, NoWindowIsLeftBehind) {
  Visit([&] {
    const HWND button = Native("cmdPhoto");
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] {
      form->RemovePage();
      EXPECT_TRUE(IsWindow(button)) << "in the middle of its own message";
      EXPECT_FALSE(IsWindowVisible(button));
    });
    const int before = ChildrenOf(Native("frmSample"));
    user.Click("cmdPhoto");
    RunMessages();
    EXPECT_LT(ChildrenOf(Native("frmSample")), before - 8)
        << "those of the page, although one of them was pressed";
  });
  EXPECT_EQ(OursLeft(), Texts());
  EXPECT_EQ(FindWindowW(win32::kWindowClass, nullptr), nullptr);
}

TEST_F(NativeGuest, TheEndOfThePlatformLeavesNoClass) {
  WNDCLASSW known;
  EXPECT_TRUE(GetClassInfoW(win32::OwnModule(), win32::kWindowClass, &known));
  form.reset();
  { const win32::Win32Platform another; }
  EXPECT_TRUE(GetClassInfoW(win32::OwnModule(), win32::kWindowClass, &known)) << "one is still there";
}

TEST(NativeClasses, AreGoneBehindTheLastPlatform) {
  { const win32::Win32Platform platform; }
  WNDCLASSW known;
  for (const wchar_t* name : {win32::kWindowClass, win32::kPaneClass, win32::kQueueClass})
    EXPECT_FALSE(GetClassInfoW(win32::OwnModule(), name, &known));
}

TEST_F(NativeGuest, AProgramThatEndsEndsTheVisitFirst) {
  form->on_load = [] { PostQuitMessage(7); };
  form->ShowModal();
  EXPECT_FALSE(form->Loaded());
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(NativeGuest, AQuestionThatNobodyAnswersBeforeTheProgramEndsIsAnsweredNo) {
  PostQuitMessage(7);
  EXPECT_EQ(desktop.MsgBox("保存吗？", toolkit::kYesNo), toolkit::kAnswerNo);
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

// What a host's own window throws comes through a loop where Windows lets it.
TEST(NativeLoops, OneThatAnExceptionLeavesHasEnded) {
  win32::Application application;
  EXPECT_THROW(application.RunUntil([]() -> bool { throw std::runtime_error("a window of the host's"); }),
               std::runtime_error);
  PostQuitMessage(7);
  EXPECT_FALSE(application.RunUntil([] { return false; }));
  EXPECT_FALSE(application.Quitting());
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

TEST_F(NativeVisit, AHostThatDestroysTheWindowBelowEndsTheVisit) {
  {
    const HostWindow host;
    SetActiveWindow(host.Get());
    Visit([&] {
      DestroyWindow(host.Get());
      RunMessages();
      EXPECT_EQ(static_cast<win32::NativeView*>(form->GetView())->Handle(), nullptr);
    });
  }
  EXPECT_FALSE(form->Loaded());
  Visit([&] { EXPECT_EQ(driver->Text("txtName"), "") << "the next visit works"; });
}

LRESULT CALLBACK DestroyedOnRequest(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
  if (id == WM_APP) DestroyWindow(window);
  return DefWindowProcW(window, id, wide, low);
}

// What another thread sends is no message that a loop sees: it waits for the next one.
TEST_F(NativeGuest, AHostThatDestroysTheWindowBelowForAnotherThreadEndsTheVisit) {
  const HostWindow host;
  SetWindowLongPtrW(host.Get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DestroyedOnRequest));
  SetActiveWindow(host.Get());
  std::thread other;
  form->on_load = [&] {
    other = std::thread([window = host.Get()] {
      while (!IsWindowVisible(FindWindowW(win32::kWindowClass, nullptr))) Sleep(20);
      Sleep(500);  // it has come to rest
      SendMessageW(window, WM_APP, 0, 0);
    });
  };
  form->ShowModal();
  other.join();
  EXPECT_FALSE(form->Loaded());
  EXPECT_FALSE(IsWindow(host.Get()));
}

TEST_F(NativeVisit, AWindowThatIsMadeSmallScrollsToWhatGetsTheKeyboard) {
  Visit([&] {
    const HWND window = Native("frmSample");
    const auto in_sight = [&](const std::string& name) {
      RECT box;
      RECT all;
      RECT both;
      GetWindowRect(Native(name), &box);
      GetClientRect(window, &all);
      MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&all), 2);
      return IntersectRect(&both, &box, &all) && EqualRect(&both, &box);
    };
    SetWindowPos(window, nullptr, 0, 0, 360, 240, SWP_NOMOVE | SWP_NOZORDER);
    form->Get("txtName")->SetFocus();
    EXPECT_TRUE(in_sight("txtName"));
    EXPECT_FALSE(in_sight("cmdPhoto"));
    form->Get("cmdPhoto")->SetFocus();
    EXPECT_TRUE(in_sight("cmdPhoto"));
    user.Click("txtInner");
    EXPECT_TRUE(in_sight("txtInner"));
    SetWindowPos(window, nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(in_sight("txtName")) << "and back where there is room for all";
    EXPECT_TRUE(in_sight("cmdPhoto"));
  });
}

TEST_F(NativeVisit, TheResolutionOfTheThreadIsTheHosts) {
  const auto context = reinterpret_cast<void*(WINAPI*)()>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetThreadDpiAwarenessContext")));
  if (!context) GTEST_SKIP() << "this Windows has one resolution for all";
  const void* before = context();
  Visit([&] { EXPECT_EQ(context(), before) << "in what is called from the host's loop as well"; });
  EXPECT_EQ(context(), before);
}

}  // namespace
}  // namespace dossierkit::views
