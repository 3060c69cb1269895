#include "adapters/win32/accessible.h"

#include <oleacc.h>

#include <atomic>
#include <new>
#include <utility>

#include "adapters/windows/texts.h"
#include "platform/toolkit/controls/list_box.h"

namespace dossierkit::win32 {
namespace {

// Of a pane; 0 for kinds whose window says it itself.
long RoleOf(toolkit::Kind kind) {
  switch (kind) {
    case toolkit::Kind::kLabel: return ROLE_SYSTEM_STATICTEXT;
    case toolkit::Kind::kImage: return ROLE_SYSTEM_GRAPHIC;
    case toolkit::Kind::kFrame: return ROLE_SYSTEM_GROUPING;
    case toolkit::Kind::kLine: return ROLE_SYSTEM_SEPARATOR;
    case toolkit::Kind::kUserControl:
    case toolkit::Kind::kPictureBox: return ROLE_SYSTEM_PANE;
    case toolkit::Kind::kCoolBar:
    case toolkit::Kind::kToolbar: return ROLE_SYSTEM_TOOLBAR;
    default: return 0;
  }
}

bool IsSelf(const VARIANT& child) { return V_VT(&child) == VT_I4 && V_I4(&child) == CHILDID_SELF; }

// Nothing of ours leaves through these frames: each function of its own is noexcept, and all others are the
// system's.
class Accessible : public IAccessible {
 public:
  // Takes over the reference on the system's own object.
  Accessible(IAccessible* standard, const std::shared_ptr<toolkit::Control>& control)
      : standard_(standard), control_(control), role_(RoleOf(control->GetKind())) {}
  Accessible(IAccessible* standard, std::wstring name, HWND button)
      : standard_(standard),
        name_(std::move(name)),
        button_(button),
        role_(button ? ROLE_SYSTEM_PUSHBUTTON : 0) {}
  virtual ~Accessible() { standard_->Release(); }
  Accessible(const Accessible&) = delete;
  Accessible& operator=(const Accessible&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override {
    if (wanted != IID_IUnknown && wanted != IID_IDispatch && wanted != __uuidof(IAccessible))
      return standard_->QueryInterface(wanted, found);
    *found = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) noexcept override {
    try {
      const auto control = control_.lock();
      // The native list does not know the texts of its rows.
      const auto* list = control && control->GetKind() == toolkit::Kind::kListBox
                             ? static_cast<const toolkit::ListBox*>(control.get())
                             : nullptr;
      if (!IsSelf(child) && (!list || V_VT(&child) != VT_I4)) return standard_->get_accName(child, name);
      *name = nullptr;
      const std::wstring said = !control ? name_
                                : IsSelf(child)
                                    ? windows::Wide(control->AccessibleName())
                                    : windows::Wide(list->List(static_cast<int>(V_I4(&child)) - 1));
      if (said.empty()) return S_FALSE;
      *name = SysAllocStringLen(said.data(), static_cast<UINT>(said.size()));
      return *name ? S_OK : E_OUTOFMEMORY;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) noexcept override {
    if (role_ == 0 || !IsSelf(child)) return standard_->get_accRole(child, role);
    V_VT(role) = VT_I4;
    V_I4(role) = role_;
    return S_OK;
  }

  // --- the system's ------------------------------------------------------------------------------
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return standard_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID language, ITypeInfo** info) override {
    return standard_->GetTypeInfo(index, language, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID language,
                                          DISPID* found) override {
    return standard_->GetIDsOfNames(reserved, names, count, language, found);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID language, WORD flags,
                                   DISPPARAMS* given, VARIANT* result, EXCEPINFO* failure,
                                   UINT* argument) override {
    return standard_->Invoke(member, reserved, language, flags, given, result, failure, argument);
  }
  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
    return standard_->get_accParent(parent);
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
    return standard_->get_accChildCount(count);
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** found) override {
    return standard_->get_accChild(child, found);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
    return standard_->get_accValue(child, value);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override {
    return standard_->get_accDescription(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
    return standard_->get_accState(child, state);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* text) override {
    return standard_->get_accHelp(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
    return standard_->get_accHelpTopic(file, child, topic);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* text) override {
    return standard_->get_accKeyboardShortcut(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* focus) override { return standard_->get_accFocus(focus); }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* selection) override {
    return standard_->get_accSelection(selection);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* text) override {
    return standard_->get_accDefaultAction(child, text);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
    return standard_->accSelect(flags, child);
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT child) override {
    return standard_->accLocation(left, top, width, height, child);
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
    return standard_->accNavigate(direction, start, end);
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* found) override {
    return standard_->accHitTest(left, top, found);
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    if (!button_) return standard_->accDoDefaultAction(child);
    PostMessageW(button_, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    PostMessageW(button_, WM_LBUTTONUP, 0, 0);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override {
    return standard_->put_accName(child, name);
  }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
    return standard_->put_accValue(child, value);
  }

 private:
  std::atomic<long> references_{1};
  IAccessible* standard_;
  std::weak_ptr<toolkit::Control> control_;
  std::wstring name_;  // of a part
  HWND button_ = nullptr;
  long role_;
};

LRESULT AnswerOf(Accessible* object, const Message& message) {
  const LRESULT answer = LresultFromObject(__uuidof(IAccessible), message.wide, object);
  object->Release();
  return answer;
}

IAccessible* StandardOf(HWND window) {
  IAccessible* standard = nullptr;
  const HRESULT made = CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible),
                                                 reinterpret_cast<void**>(&standard));
  return SUCCEEDED(made) ? standard : nullptr;
}

}  // namespace

LRESULT AccessibleOf(HWND window, const Message& message, const std::shared_ptr<toolkit::Control>& control) {
  IAccessible* standard = StandardOf(window);
  return standard ? AnswerOf(new Accessible(standard, control), message) : 0;
}

LRESULT AccessiblePart(HWND window, const Message& message, std::wstring name, bool is_button) {
  IAccessible* standard = StandardOf(window);
  return standard ? AnswerOf(new Accessible(standard, std::move(name), is_button ? window : nullptr), message)
                  : 0;
}

}  // namespace dossierkit::win32
