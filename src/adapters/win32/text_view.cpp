#include "adapters/win32/text_view.h"

#include "adapters/win32/window_view.h"

namespace dossierkit::win32 {
namespace {

// What a native window cannot show: a text would end there, or break in a box of one line.
std::u16string Showable(std::u16string text, bool multi_line) {
  for (char16_t& unit : text) {
    if (unit == u'\0' || unit == u'\r' || (unit == u'\n' && !multi_line)) unit = u'\uFFFD';
  }
  return text;
}

}  // namespace

TextView::TextView(ViewContext& context, toolkit::TextBox& box)
    : EditView(context, box, box.MultiLine()), box_(box) {}

void TextView::NativeChanged() {
  const std::u16string now = NativeText();
  const toolkit::Selection selected = NativeSelection();
  const std::size_t caret = selected.start + selected.length;
  if (now != native_) {
    // The same in the shown text, which may hold what the native window cannot.
    const toolkit::TextChange change = toolkit::FindChange(native_, now, caret);
    std::u16string after = shown_.Shown();
    after.replace(change.start, change.removed, change.inserted);
    const auto meant = toolkit::ChangeOf(shown_, box_.GetSelection(), {after, caret, caret_});
    // Also where it ignores the report, the model has its own text shown.
    Report([&] { box_.UserReplace(meant.replaced.start, meant.replaced.length, meant.inserted); });
    return;
  }
  caret_ = caret;
  if (selected != shown_.ShownSelection(box_.GetSelection())) {
    const auto chosen = shown_.ModelSelection(selected.start, selected.length);
    const auto life = Life();
    Report([&] { box_.UserSelect(chosen.start, chosen.length); });
    if (!life.expired()) FollowCaret();
  }
}

void TextView::DoubleClicked() {
  Report([this] { box_.UserDblClick(); });
}

// A box may be taller than what a small screen shows of its page.
void TextView::FollowCaret() {
  WindowView* window = box_.MultiLine() && GetFocus() == Handle() ? Window() : nullptr;
  POINT caret;
  if (!window || !GetCaretPos(&caret)) return;
  const RECT line = {caret.x, caret.y, caret.x + 1,
                     caret.y + GetLook().LineHeight(GetLook().FontOf(box_.GetFont()))};
  window->BringIntoSight(*this, &line);
}

void TextView::ShowText() {
  shown_ = toolkit::ShownText(box_.Text(), box_.MultiLine());
  native_ = Showable(shown_.Shown(), box_.MultiLine());
  // An equal text is left alone, and with it where the window has scrolled to.
  if (NativeText() != native_) SetNativeText(native_);
  ShowSelection();
}

void TextView::ShowSelection() {
  const auto selected = shown_.ShownSelection(box_.GetSelection());
  if (NativeSelection() != selected) SetNativeSelection(selected);
  caret_ = selected.start + selected.length;
}

}  // namespace dossierkit::win32
