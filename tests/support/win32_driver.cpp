// The suite of tests for views on the native views: what shows is read from the native windows.
#include <oleacc.h>

#include <stdexcept>

#include "adapters/win32/native_view.h"
#include "adapters/windows/texts.h"
#include "platform/environment/text.h"
#include "tests/adapters/views/driver.h"
#include "tests/support/win32_user.h"

namespace dossierkit::views {
namespace {

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return windows::Utf8(text);
}

class Win32Driver : public Driver {
 public:
  // What screen readers are told comes by COM.
  Win32Driver() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Win32Driver() override { CoUninitialize(); }
  std::string Text(const std::string& name) override { return TextOf(Native(name)); }
  toolkit::Selection Selected(const std::string& name) override {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(Native(name), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {start, end - start};
  }
  bool Checked(const std::string& name) override {
    return SendMessageW(Native(name), BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  bool InSight(const std::string& name) override { return IsWindowVisible(Native(name)); }
  bool Enabled(const std::string& name) override { return IsWindowEnabled(Native(name)); }
  int Row(const std::string& name) override { throw std::logic_error(name + " has no rows"); }
  int Rows(const std::string& name) override { throw std::logic_error(name + " has no rows"); }
  std::string Node(const std::string& name) override { throw std::logic_error(name + " has no nodes"); }
  std::string Focus() override {
    for (HWND window = GetFocus(); window; window = GetParent(window)) {
      for (const auto& control : Window().Controls()) {
        if (Has(*control, window)) return control->Name();
        auto* page = dynamic_cast<toolkit::UserControl*>(control.get());
        for (std::size_t i = 0; page && i < page->Controls().Count(); ++i) {
          if (Has(*page->Controls().At(i), window)) return page->Controls().At(i)->Name();
        }
      }
    }
    return "";
  }
  std::string Spoken(const std::string& name) override {
    IAccessible* said = nullptr;
    if (FAILED(AccessibleObjectFromWindow(Native(name), static_cast<DWORD>(OBJID_CLIENT),
                                          __uuidof(IAccessible), reinterpret_cast<void**>(&said))))
      throw std::logic_error(name + " says nothing");
    VARIANT self;
    V_VT(&self) = VT_I4;
    V_I4(&self) = CHILDID_SELF;
    BSTR text = nullptr;
    said->get_accName(self, &text);
    std::string spoken = text ? windows::Utf8(text) : std::string();
    SysFreeString(text);
    said->Release();
    return spoken;
  }

 private:
  static bool Has(const toolkit::Control& control, HWND window) {
    const auto* view = static_cast<const win32::NativeView*>(control.GetView());
    return view && control.TakesFocus() && view->Handle() == window;
  }
  HWND Native(const std::string& name) {
    tests::RunMessages();
    return static_cast<tests::Win32User&>(User()).ViewOf(name).Handle();
  }
};

}  // namespace

std::unique_ptr<Driver> MakeDriver() { return std::make_unique<Win32Driver>(); }

}  // namespace dossierkit::views
