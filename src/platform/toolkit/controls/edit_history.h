// EditHistory: what the user did to a text since the program last assigned it, to be taken back.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace dossierkit::toolkit {

// Caret and selection in a text, in code points.
struct Selection {
  std::size_t start = 0;
  std::size_t length = 0;
  bool operator==(const Selection&) const = default;
};

// At a byte position of the text, what stood there gave way to what was entered.
struct TextEdit {
  std::size_t position = 0;
  std::string removed;
  std::string inserted;
};

enum class EditKind {
  kTyped,   // one character
  kErased,  // one press of Backspace or Delete
  kOther,
};

// Takes back step by step. Characters that were typed one behind the other are one step, and so is what
// Backspace or Delete erased in one place; any other edit is a step of its own.
class EditHistory {
 public:
  // The program assigned a text: there is nothing to take back any more.
  void Forget();
  // The user made an edit, with caret and selection before and after it.
  void Note(TextEdit edit, EditKind kind, const Selection& before, const Selection& after);

  bool CanUndo() const { return !done_.empty(); }
  bool CanRedo() const { return !undone_.empty(); }
  // Takes the last step back in `text`, or makes the step taken back last again, and gives the selection
  // that stood there; nothing where there is no such step. `text` must be as the edits left it.
  std::optional<Selection> Undo(std::string& text);
  std::optional<Selection> Redo(std::string& text);

 private:
  struct Step {
    std::vector<TextEdit> edits;
    EditKind kind;
    Selection before;
    Selection after;
  };
  std::vector<Step> done_;
  std::vector<Step> undone_;
  bool grows_ = false;  // the last step may still take in the next edit
};

}  // namespace dossierkit::toolkit
