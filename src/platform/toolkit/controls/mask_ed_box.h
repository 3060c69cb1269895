// MaskEdBox: entry through a mask such as ####年##月. The model edits; the view shows.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// In the mask "#" takes a digit, everything else is a literal. Text is what stands in the box,
// literals and prompt characters included. Positions count in code points.
class MaskEdBox : public Control {
 public:
  explicit MaskEdBox(std::string name);

  const std::string& Mask() const { return mask_; }
  void SetMask(std::string mask);  // the text becomes the blank mask, without Change
  const std::string& PromptChar() const { return prompt_; }
  const std::string& Format() const { return format_; }
  void SetFormat(std::string format) { format_ = std::move(format); }
  // The mask with every "#" replaced by the prompt character.
  std::string BlankMask() const;

  const std::string& Text() const { return text_; }
  // Raises Change at once if the text differs. A text shorter than the mask that fits so far is
  // filled up with the rest of the blank mask; one that does not fit is kept as it is.
  void SetText(std::string text);

  std::size_t SelStart() const { return sel_start_; }
  void SetSelStart(std::size_t start);
  std::size_t SelLength() const { return sel_length_; }
  void Select(std::size_t start, std::size_t length);

  environment::Event<> Change;

  // Reports of the view. A character that does not fit is refused with a beep; a paste takes what fits.
  void UserType(const std::string& typed);
  void UserPaste(const std::string& text);
  void UserBackspace();
  void UserDelete();
  std::string UserCopy() const;
  std::string UserCut();
  void UserSelect(std::size_t start, std::size_t length);
  // The native text was replaced from outside (accessibility).
  void UserReplaceAll(const std::string& text);

 private:
  using CharacterList = std::vector<std::string>;  // characters
  bool Fits(const std::string& text) const;
  bool Fills(const std::string& text) const;  // fits, and is as long as the mask
  void UserEdit(const std::function<bool(CharacterList&, const CharacterList&)>& edit);
  void BlankSelection(CharacterList& characters, const CharacterList& mask);
  void StepOverLiterals(const CharacterList& mask);
  bool Put(const std::string& character, CharacterList& characters, const CharacterList& mask);
  bool Insert(const std::string& text, CharacterList& characters, const CharacterList& mask);
  void Commit(std::string text);

  std::string mask_;
  std::string prompt_ = "_";
  std::string format_;
  std::string text_;
  std::size_t sel_start_ = 0;
  std::size_t sel_length_ = 0;
};

}  // namespace dossierkit::toolkit
