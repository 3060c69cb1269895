#include "platform/toolkit/controls/edit_box.h"

#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"

namespace dossierkit::toolkit {

using environment::Length;

std::optional<EditCommand> EditCommandOf(int key, int shift) {
  if (shift == kCtrl) {
    switch (key) {
      case 'Z': return EditCommand::kUndo;
      case 'Y': return EditCommand::kRedo;
      case 'X': return EditCommand::kCut;
      case 'C':
      case kKeyInsert: return EditCommand::kCopy;
      case 'V': return EditCommand::kPaste;
      case 'A': return EditCommand::kSelectAll;
      default: return std::nullopt;
    }
  }
  if (shift == kShift && key == kKeyDelete) return EditCommand::kCut;
  if (shift == kShift && key == kKeyInsert) return EditCommand::kPaste;
  if (shift == (kCtrl | kShift) && key == 'Z') return EditCommand::kRedo;
  return std::nullopt;
}

void EditBox::Select(std::size_t start, std::size_t length) {
  UserSelect(start, length);
  ShowAspect(Aspect::kSelection);
}

void EditBox::UserSelect(std::size_t start, std::size_t length) {
  const std::size_t size = Length(text_);
  selection_.start = std::min(start, size);
  selection_.length = std::min(length, size - selection_.start);
}

void EditBox::Reset(std::string text) {
  history_.Forget();
  text_ = std::move(text);
  selection_ = {};
  ShowAspect(Aspect::kText);
}

void EditBox::Assign(std::string text) {
  history_.Forget();
  if (text_ == text) return;
  Reset(std::move(text));
  Raise(Change);
}

void EditBox::Edit(const std::function<void()>& edit) {
  const KeepAlive keep(*this);
  if (!Report(edit)) ShowAspect(Aspect::kText);
}

void EditBox::Commit(std::string text, TextEdit edit, EditKind kind, const Selection& after) {
  const bool changed = text_ != text;
  if (changed) history_.Note(std::move(edit), kind, selection_, after);
  text_ = std::move(text);
  selection_ = after;
  ShowAspect(Aspect::kText);
  if (changed) Raise(Change);
}

void EditBox::Step(bool back) {
  const auto selection = back ? history_.Undo(text_) : history_.Redo(text_);
  if (!selection) return;
  selection_ = *selection;
  ShowAspect(Aspect::kText);
  Raise(Change);
}

void EditBox::UserCommand(EditCommand command) {
  Edit([&] {
    ControlWindow& window = *Window();
    if ((command == EditCommand::kCut || command == EditCommand::kCopy) && selection_.length > 0)
      window.SetClipboardText(environment::Middle(text_, selection_.start, selection_.length));
    switch (command) {
      case EditCommand::kUndo: Step(true); break;
      case EditCommand::kRedo: Step(false); break;
      case EditCommand::kPaste: UserPaste(window.ClipboardText()); break;
      case EditCommand::kSelectAll: Select(0, Length(text_)); break;
      case EditCommand::kCopy: break;
      case EditCommand::kCut:
      case EditCommand::kDelete:
        if (selection_.length > 0) EraseSelection();
        break;
    }
  });
}

bool EditBox::ActOnKey(const KeyStroke& stroke) {
  const auto command = EditCommandOf(stroke.code, stroke.shift);
  if (command) UserCommand(*command);
  return command.has_value();
}

bool EditBox::CanDo(EditCommand command) {
  switch (command) {
    case EditCommand::kUndo: return history_.CanUndo();
    case EditCommand::kRedo: return history_.CanRedo();
    case EditCommand::kCut:
    case EditCommand::kCopy:
    case EditCommand::kDelete: return selection_.length > 0;
    case EditCommand::kPaste: return !Window()->ClipboardText().empty();
    case EditCommand::kSelectAll: return selection_.length < Length(text_);
  }
  return false;
}

std::vector<EditMenuItem> EditBox::ContextMenu() {
  struct Row {
    EditCommand command;
    const char* caption;
    bool line_above;
  };
  static constexpr Row kRows[] = {
      {EditCommand::kUndo, "撤销(&U)", false},   {EditCommand::kCut, "剪切(&T)", true},
      {EditCommand::kCopy, "复制(&C)", false},   {EditCommand::kPaste, "粘贴(&P)", false},
      {EditCommand::kDelete, "删除(&D)", false}, {EditCommand::kSelectAll, "全选(&A)", true},
  };
  std::vector<EditMenuItem> items;
  Report([&] {
    if (!HasFocus()) return;
    for (const Row& row : kRows)
      items.push_back({row.command, row.caption, CanDo(row.command), row.line_above});
  });
  return items;
}

}  // namespace dossierkit::toolkit
