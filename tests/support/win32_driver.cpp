// The suite of tests for views on the native views: what shows is read from the native windows.
#include <oleacc.h>

#include <stdexcept>

#include "adapters/win32/native_view.h"
#include "adapters/windows/texts.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/toolbar.h"
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
  int Row(const std::string& name) override {
    const HWND native = Native(name);
    switch (Find<toolkit::Control>(name)->GetKind()) {
      case toolkit::Kind::kTabStrip:
        return static_cast<int>(SendMessageW(Part(name, WC_TABCONTROLW), TCM_GETCURSEL, 0, 0));
      case toolkit::Kind::kVerticalMenu:
        return static_cast<int>(SendMessageW(Part(name, L"LISTBOX"), LB_GETCURSEL, 0, 0));
      case toolkit::Kind::kDataGrid:
        return static_cast<int>(
            SendMessageW(native, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
      default: return static_cast<int>(SendMessageW(native, LB_GETCURSEL, 0, 0));
    }
  }
  int Rows(const std::string& name) override {
    const HWND native = Native(name);
    if (Find<toolkit::Control>(name)->GetKind() != toolkit::Kind::kTreeView)
      return static_cast<int>(SendMessageW(native, LB_GETCOUNT, 0, 0));
    int rows = 0;
    for (HTREEITEM item = TreeView_GetRoot(native); item; item = TreeView_GetNextVisible(native, item))
      ++rows;
    return rows;
  }
  std::string Node(const std::string& name) override {
    const HWND native = Native(name);
    std::wstring text(1000, L'\0');
    TVITEMW item = {};
    item.mask = TVIF_TEXT;
    item.hItem = TreeView_GetSelection(native);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    if (!item.hItem) return "";
    SendMessageW(native, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return windows::Utf8(item.pszText);
  }
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
  tests::Win32User& Native() { return static_cast<tests::Win32User&>(User()); }
  HWND Native(const std::string& name) {
    tests::RunMessages();
    for (const auto& control : Window().Controls()) {
      const auto* bar = dynamic_cast<const toolkit::Toolbar*>(control.get());
      if (!bar) continue;
      for (const auto& button : bar->Buttons()) {
        if (!button.IsSeparator() && button.Key() == name) return Native().ToolbarButton(name);
      }
    }
    return Native().ViewOf(name).Handle();
  }
  HWND Part(const std::string& name, const wchar_t* window_class) {
    return Native().PartOf(name, window_class);
  }
};

}  // namespace

std::unique_ptr<Driver> MakeDriver() { return std::make_unique<Win32Driver>(); }

}  // namespace dossierkit::views
