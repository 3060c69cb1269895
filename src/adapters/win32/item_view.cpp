#include "adapters/win32/item_view.h"

#include <windowsx.h>

namespace dossierkit::win32 {

ItemView::ItemView(ViewContext& context, toolkit::Control& control, const NativeWindow& native)
    : NativeView(context, control, native), frame_(*this) {}

ItemView::~ItemView() { DeleteObject(ground_); }

void ItemView::Settle() {
  NativeView::Settle();
  Update(&toolkit::RowUpdates::Settle);
}

bool ItemView::ReportAndShow(const std::function<void()>& report) {
  const auto life = Life();
  Report(report);
  if (life.expired()) return false;
  Update(&toolkit::RowUpdates::Now);
  return true;
}

void ItemView::Update(void (toolkit::RowUpdates::*step)()) {
  if (!Handle()) return;
  const auto showing = Showing();
  (updates_.*step)();
}

void ItemView::CallWhenIdle() {
  Context().application.Later(Life(), [this] { Update(&toolkit::RowUpdates::Idle); });
}

void ItemView::ShowStyle() {
  const auto showing = Showing();
  const COLORREF base = GetLook().ColorOf(GetControl().BackColor());
  DeleteObject(ground_);
  ground_ = CreateSolidBrush(base);
  frame_.SetFill(base);
  SendMessageW(Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(GetControl().GetFont())),
               FALSE);
  NativeView::ShowStyle();
}

HBRUSH ItemView::Colours(HDC) { return ground_; }

std::optional<LRESULT> ItemView::Receive(HWND window, const Message& message) {
  switch (message.id) {
    case WM_LBUTTONDOWN: Press({GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}); return 0;
    case WM_LBUTTONDBLCLK: {
      const auto life = Life();
      if (Press({GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}) && !life.expired()) DoubleClick();
      return 0;
    }
    // The model moves by keys.
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU:
    case WM_KEYDOWN:
    case WM_CHAR: return 0;
    default: break;
  }
  if (const auto answer = frame_.Receive(window, message)) return answer;
  return NativeView::Receive(window, message);
}

}  // namespace dossierkit::win32
