// MaskEdBox: entry through a mask such as ####年##月. The model edits; the view shows.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/toolkit/controls/edit_box.h"

namespace dossierkit::toolkit {

// In the mask "#" takes a digit, everything else is a literal. Text is what stands in the box,
// literals and prompt characters included.
class MaskEdBox : public EditBox {
 public:
  explicit MaskEdBox(std::string name);

  const std::string& Mask() const { return mask_; }
  void SetMask(std::string mask);  // the text becomes the blank mask, without Change
  const std::string& PromptChar() const { return prompt_; }
  const std::string& Format() const { return format_; }
  void SetFormat(std::string format) { format_ = std::move(format); }
  // The mask with every "#" replaced by the prompt character.
  std::string BlankMask() const;

  // Raises Change at once if the text differs. A text shorter than the mask that fits so far is
  // filled up with the rest of the blank mask; one that does not fit is kept as it is.
  void SetText(std::string text);

  void SetSelStart(std::size_t start) { Select(start, 0); }

  // Reports of the view. A character that does not fit is refused with a beep; a paste takes what fits.
  void UserType(const std::string& typed);
  void UserPaste(const std::string& text) override;
  void UserBackspace();
  void UserDelete();
  // Typing, Backspace and Delete; the keys that only move the caret are the native widget's.
  bool ActOnKey(const KeyStroke& stroke) override;
  // The native text was replaced from outside (accessibility).
  void UserReplaceAll(const std::string& text);

 protected:
  void EraseSelection() override { UserDelete(); }

 private:
  using CharacterList = std::vector<std::string>;  // characters
  // The box while it is edited: its characters and the caret.
  struct Draft {
    CharacterList characters;
    Selection selection;
  };
  bool Fits(const std::string& text) const;
  bool Fills(const std::string& text) const;  // fits, and is as long as the mask
  void UserEdit(EditKind kind, const std::function<bool(Draft&, const CharacterList&)>& edit);
  void BlankSelection(Draft& draft, const CharacterList& mask) const;
  bool Put(const std::string& character, Draft& draft, const CharacterList& mask) const;
  bool Insert(const std::string& text, Draft& draft, const CharacterList& mask) const;

  std::string mask_;
  std::string prompt_ = "_";
  std::string format_;
};

}  // namespace dossierkit::toolkit
