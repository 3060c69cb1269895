// EditBox: what a text box and a masked box have in common: text, caret, clipboard, the way back.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/controls/edit_history.h"

namespace dossierkit::toolkit {

enum class EditCommand { kUndo, kRedo, kCut, kCopy, kPaste, kDelete, kSelectAll };

// The command that a key gives in such a box, if any: Ctrl+Z, Ctrl+Y or Ctrl+Shift+Z, Ctrl+X or
// Shift+Delete, Ctrl+C or Ctrl+Insert, Ctrl+V or Shift+Insert, Ctrl+A.
std::optional<EditCommand> EditCommandOf(int key, int shift);

// An item of the context menu. The mnemonic stands behind "&".
struct EditMenuItem {
  EditCommand command;
  std::string caption;
  bool enabled;
  bool line_above;
};

// Positions and lengths count in code points.
class EditBox : public Control {
 public:
  using Control::Control;

  const std::string& Text() const { return text_; }
  std::size_t SelStart() const { return selection_.start; }
  std::size_t SelLength() const { return selection_.length; }
  const Selection& GetSelection() const { return selection_; }
  void Select(std::size_t start, std::size_t length);

  environment::Event<> Change;

  // Reports of the view: the caret or the selection moved; a text was pasted over the selection.
  void UserSelect(std::size_t start, std::size_t length);
  virtual void UserPaste(const std::string& text) = 0;
  // A key or an item of the context menu gave a command. Undo takes back what the user did since the
  // program last assigned the text, step by step.
  void UserCommand(EditCommand command);
  bool ActOnKey(const KeyStroke& stroke) override;
  // The items of the context menu, in order; none where the box does not have the focus, since the press
  // of the right button was refused, or takes no input.
  std::vector<EditMenuItem> ContextMenu();

 protected:
  // The program assigns a text: the caret goes before it, and Change is raised if it differs. There is
  // nothing to take back any more, also where the text is the same.
  void Assign(std::string text);
  void Reset(std::string text);  // the same without Change
  // Runs an edit of the user where the box takes one. Otherwise the model's text is shown again, since
  // the native widget may have edited already.
  void Edit(const std::function<void()>& edit);
  // The user's edit made `text`; the caret goes to `after`. Raises Change if the text differs.
  void Commit(std::string text, TextEdit edit, EditKind kind, const Selection& after);
  // As the user deletes what is selected.
  virtual void EraseSelection() = 0;

 private:
  bool CanDo(EditCommand command);
  void Step(bool back);

  std::string text_;
  Selection selection_;
  EditHistory history_;
};

}  // namespace dossierkit::toolkit
