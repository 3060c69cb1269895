// The library as it is shipped, registered, in hosts of every apartment: each test is a host's thread, with
// windows of Windows. Its connection is an object of the test on the sample database.
#include <dossierkit_com.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "adapters/com/identifiers.h"
#include "adapters/com/pointers.h"
#include "tests/adapters/com/stand_in.h"
#include "tests/support/database.h"

namespace dossierkit::com {
namespace {

constexpr wchar_t kLibraryName[] = L"DossierKit.dll";
const std::string kPerson = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";

constexpr HRESULT Result(unsigned long bits) { return static_cast<HRESULT>(bits); }

BOOL CALLBACK FindOurs(HWND window, LPARAM found) {
  wchar_t name[64] = L"";
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  GetClassNameW(window, name, 64);
  if (process != GetCurrentProcessId() || !IsWindowVisible(window)) return TRUE;
  if (std::wstring(name) != L"DossierKit.Window") return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The component's window of this program, once it is on show; null where there is none.
HWND TheWindow() {
  HWND found = nullptr;
  EnumWindows(FindOurs, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool Await(const std::function<bool()>& holds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(120);
  while (!holds()) {
    if (std::chrono::steady_clock::now() > until) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

// Somebody beside the host who does something as soon as the window is on show.
class Bystander {
 public:
  explicit Bystander(std::function<void(HWND)> act)
      : thread_([act = std::move(act)] {
          if (Await([] { return TheWindow() != nullptr; })) act(TheWindow());
        }) {}
  ~Bystander() { thread_.join(); }
  Bystander(const Bystander&) = delete;
  Bystander& operator=(const Bystander&) = delete;

 private:
  std::thread thread_;
};

// A timer of the host's, which does something once the window is on show.
class Timer {
 public:
  explicit Timer(std::function<void()> act) : timer_(SetTimer(nullptr, 0, 20, Tick)) {
    act_ = std::move(act);
  }
  ~Timer() { KillTimer(nullptr, timer_); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (TheWindow() != nullptr && act_) std::exchange(act_, nullptr)();
  }
  static inline std::function<void()> act_;
  UINT_PTR timer_;
};

void Close(HWND window) { PostMessageW(window, WM_CLOSE, 0, 0); }

HRESULT Call(const char* entry) {
  const HMODULE library = LoadLibraryW(Wide(SHIPPED_LIBRARY).c_str());
  if (library == nullptr) return E_FAIL;
  const auto function =
      reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void (*)()>(GetProcAddress(library, entry)));
  const HRESULT result = function ? function() : E_NOTIMPL;
  FreeLibrary(library);
  return result;
}

class ShippedLibrary : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(Call("DllRegisterServer"), S_OK); }
  static void TearDownTestSuite() { EXPECT_EQ(Call("DllUnregisterServer"), S_OK); }

  ShippedLibrary() { *host_.Put() = new StandInConnection(database_); }

  // A thread of a host, from the beginning of COM to its end, behind which no window and nothing of the
  // host's is held.
  void InApartment(DWORD kind, const std::function<void()>& work) {
    std::thread([&] {
      ASSERT_EQ(CoInitializeEx(nullptr, kind), S_OK);
      work();
      CoUninitialize();
    }).join();
    EXPECT_EQ(TheWindow(), nullptr);
  }
  // The same in an apartment of its own, behind which nothing is held and the library is gone.
  void InOwnApartment(const std::function<void()>& work) {
    InApartment(COINIT_APARTMENTTHREADED, work);
    EXPECT_EQ(host_->References(), 1U);
    EXPECT_EQ(GetModuleHandleW(kLibraryName), nullptr);
  }

  Pointer<_IUserCtrl> Make() {
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID(L"DossierKit.IUserCtrl", &id), S_OK);
    EXPECT_EQ(id, kClass);
    Pointer<_IUserCtrl> object;
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, kInterface, object.PutVoid()), S_OK);
    EXPECT_EQ(object->putref_Connection(host_.Get()), S_OK);
    EXPECT_EQ(object->put_OperationType(3), S_OK);
    EXPECT_EQ(object->put_PersonType(1), S_OK);
    EXPECT_EQ(object->put_personID(Bstr(kPerson).Get()), S_OK);
    return object;
  }

  static HRESULT Show(const Pointer<_IUserCtrl>& object) {
    VARIANT_BOOL saved = VARIANT_TRUE;
    const HRESULT result = object->ShowDossier(&saved);
    EXPECT_EQ(saved, VARIANT_FALSE);
    return result;
  }
  // The same behind a visit in an apartment of many threads: the thread that COM made for that ends a moment
  // after its host has left, and until then the library belongs to it.
  static HRESULT ShowOnceThatEnded(const Pointer<_IUserCtrl>& object) {
    HRESULT shown = Show(object);
    Await([&] {
      if (shown == RPC_E_WRONG_THREAD) shown = Show(object);
      return shown != RPC_E_WRONG_THREAD;
    });
    return shown;
  }

  static std::string Words() {
    Pointer<IErrorInfo> told;
    if (GetErrorInfo(0, told.Put()) != S_OK) return {};
    Bstr words;
    told->GetDescription(words.Put());
    return TextOf(words.Get());
  }

  static bool IsProxy(const Pointer<_IUserCtrl>& object) {
    Pointer<IUnknown> security;
    return SUCCEEDED(object->QueryInterface(IID_IClientSecurity, security.PutVoid()));
  }

  std::shared_ptr<tests::Database> database_ = tests::SampleDatabase();
  Pointer<StandInConnection> host_;
};

TEST_F(ShippedLibrary, HoldsTheConnectionUntilItIsUnloaded) {
  InOwnApartment([&] {
    EXPECT_EQ(host_->References(), 1U);
    auto object = Make();
    EXPECT_FALSE(IsProxy(object));
    EXPECT_EQ(host_->References(), 3U);
    {
      const Bystander user(Close);
      EXPECT_EQ(Show(object), S_OK);
    }
    EXPECT_EQ(host_->References(), 3U);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_NE(GetModuleHandleW(kLibraryName), nullptr) << "an object is left";
    object = {};
    EXPECT_EQ(host_->References(), 2U);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(host_->References(), 1U);
    EXPECT_EQ(GetModuleHandleW(kLibraryName), nullptr);
    const auto again = Make();
    const Bystander user(Close);
    EXPECT_EQ(Show(again), S_OK) << "loaded anew it works";
  });
}

TEST_F(ShippedLibrary, ASecondThreadOfAHostIsRefusedAndTheFirstGoesOn) {
  InOwnApartment([&] {
    const auto object = Make();
    HRESULT refused = S_OK;
    {
      const Bystander other([&](HWND window) {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        Pointer<_IUserCtrl> second;
        EXPECT_EQ(CoCreateInstance(kClass, nullptr, CLSCTX_INPROC_SERVER, kInterface, second.PutVoid()),
                  S_OK);
        refused = Show(second);
        second = {};
        CoUninitialize();
        Close(window);
      });
      EXPECT_EQ(Show(object), S_OK);
    }
    EXPECT_EQ(refused, RPC_E_WRONG_THREAD);
  });
}

TEST_F(ShippedLibrary, AHostThatEndsInAVisitGetsItsMessageAgainBehindIt) {
  InOwnApartment([&] {
    const auto object = Make();
    {
      const Timer timer([] { PostQuitMessage(7); });
      EXPECT_EQ(Show(object), S_OK);
    }
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
    const Bystander user(Close);
    EXPECT_EQ(Show(object), S_OK) << "the next visit works";
  });
}

TEST_F(ShippedLibrary, AHostMayCloseAndReleaseEverythingInAVisit) {
  InOwnApartment([&] {
    _IUserCtrl* const raw = Make().Copy();
    const Timer timer([&] {
      database_->Close();
      raw->Release();
      Close(TheWindow());
    });
    VARIANT_BOOL saved = VARIANT_TRUE;
    EXPECT_EQ(raw->ShowDossier(&saved), S_OK);
    EXPECT_EQ(saved, VARIANT_FALSE);
    EXPECT_EQ(host_->References(), 2U) << "the test's and the visit's";
  });
}

TEST_F(ShippedLibrary, ASecondVisitInAVisitIsRefused) {
  InOwnApartment([&] {
    const auto object = Make();
    HRESULT refused = S_OK;
    std::string words;
    const Timer timer([&] {
      refused = Show(object);
      words = Words();
      CoFreeUnusedLibrariesEx(0, 0);
      Close(TheWindow());
    });
    EXPECT_EQ(Show(object), S_OK);
    EXPECT_EQ(refused, Result(0x800A0190));
    EXPECT_EQ(words, "窗体已显示，不能再以模态方式显示");
  });
}

// A window of the host's that throws what it is told to.
class ThrowingWindow {
 public:
  static constexpr UINT kThrow = WM_APP;
  ThrowingWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                nullptr, nullptr, nullptr, nullptr)) {
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Receive));
  }
  ~ThrowingWindow() { DestroyWindow(window_); }
  ThrowingWindow(const ThrowingWindow&) = delete;
  ThrowingWindow& operator=(const ThrowingWindow&) = delete;
  HWND Get() const { return window_; }

 private:
  static LRESULT CALLBACK Receive(HWND window, UINT id, WPARAM wide, LPARAM low) {
    if (id == kThrow) throw std::runtime_error("a window of the host's");
    return DefWindowProcW(window, id, wide, low);
  }
  HWND window_;
};

// Windows may keep what they throw, as Wine does, or hand it on to the loop that runs: the visit's.
TEST_F(ShippedLibrary, AHostWhoseTimersAndWindowsThrowInAVisitHasThemBackBehindIt) {
#ifndef _WIN64
  GTEST_SKIP() << "On 32 bits no exception of GCC's passes a frame of Windows: the host itself ends there.";
#endif
  InOwnApartment([&] {
    const ThrowingWindow window;
    const auto object = Make();
    for (const bool by_timer : {true, false, true, false}) {
      bool disabled = false;
      {
        const Timer timer([&] {
          disabled = !IsWindowEnabled(window.Get());
          if (!by_timer) PostMessageW(window.Get(), ThrowingWindow::kThrow, 0, 0);
          Close(TheWindow());
          if (by_timer) throw std::runtime_error("a timer of the host's");
        });
        VARIANT_BOOL saved = VARIANT_TRUE;
        object->ShowDossier(&saved);
        EXPECT_EQ(saved, VARIANT_FALSE);
      }
      EXPECT_TRUE(disabled);
      EXPECT_TRUE(IsWindowEnabled(window.Get()));
      EXPECT_EQ(TheWindow(), nullptr);
      // The next visit is as any other, and takes its turn of a program that ends.
      const Timer timer([] { PostQuitMessage(7); });
      EXPECT_EQ(Show(object), S_OK);
      MSG message;
      ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
      EXPECT_EQ(message.wParam, 7U);
      EXPECT_TRUE(IsWindowEnabled(window.Get()));
    }
  });
}

// These come last: behind an apartment of many threads Wine keeps the library loaded until the program ends.

TEST_F(ShippedLibrary, AHostInTheMultiThreadedApartmentHasItsVisitThroughAProxy) {
  InApartment(COINIT_MULTITHREADED, [&] {
    const DWORD host = GetCurrentThreadId();
    std::atomic<DWORD> asked{0};
    std::atomic<DWORD> shown{0};
    host_->on_call = [&](const std::string&) { asked = GetCurrentThreadId(); };
    const auto object = Make();
    EXPECT_TRUE(IsProxy(object));
    {
      const Bystander user([&](HWND window) {
        shown = GetWindowThreadProcessId(window, nullptr);
        Close(window);
      });
      EXPECT_EQ(Show(object), S_OK);
    }
    EXPECT_NE(shown, 0U);
    EXPECT_NE(shown, host) << "an apartment that COM made";
    EXPECT_NE(asked, 0U);
    EXPECT_NE(asked, shown) << "the host's object is called in the host's apartment";
    short type = 0;
    EXPECT_EQ(object->get_OperationType(&type), S_OK);
    EXPECT_EQ(type, 3);
    Bstr person;
    EXPECT_EQ(object->get_personID(person.Put()), S_OK);
    EXPECT_EQ(TextOf(person.Get()), kPerson);
  });
  EXPECT_TRUE(Await([&] { return host_->References() == 1; })) << host_->References();
}

TEST_F(ShippedLibrary, AFailureReachesAHostOfTheMultiThreadedApartment) {
  InApartment(COINIT_MULTITHREADED, [&] {
    const auto object = Make();
    database_->Close();
    EXPECT_EQ(ShowOnceThatEnded(object), Result(0x800A0E7D));
  });
}

TEST_F(ShippedLibrary, AHostMayBeginAndEndItsApartmentForEachVisit) {
  for (const DWORD kind : {COINIT_MULTITHREADED, COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
    HANDLE shown = nullptr;
    InApartment(kind, [&] {
      const auto object = Make();
      const Bystander user([&](HWND window) {
        shown = OpenThread(SYNCHRONIZE, FALSE, GetWindowThreadProcessId(window, nullptr));
        Close(window);
      });
      EXPECT_EQ(ShowOnceThatEnded(object), S_OK) << kind;
    });
    // The thread of an apartment that COM made ends a moment later.
    EXPECT_EQ(WaitForSingleObject(shown, 120'000), WAIT_OBJECT_0) << kind;
    CloseHandle(shown);
  }
}

}  // namespace
}  // namespace dossierkit::com
