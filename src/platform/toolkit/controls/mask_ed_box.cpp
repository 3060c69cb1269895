#include "platform/toolkit/controls/mask_ed_box.h"

#include <algorithm>
#include <vector>

#include "platform/environment/text.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {
namespace {

using environment::Characters;
using environment::Length;

bool IsDigit(const std::string& character) {
  return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
}

std::string Join(const std::vector<std::string>& characters) {
  std::string text;
  for (const auto& character : characters) text += character;
  return text;
}

}  // namespace

MaskEdBox::MaskEdBox(std::string name) : Control(Kind::kMaskEdBox, std::move(name)) {}

void MaskEdBox::SetMask(std::string mask) {
  mask_ = std::move(mask);
  text_ = BlankMask();
  ShowAspect(Aspect::kText);
}

std::string MaskEdBox::BlankMask() const { return environment::Replace(mask_, "#", prompt_); }

bool MaskEdBox::Fits(const std::string& text) const {
  const auto mask = Characters(mask_);
  const auto characters = Characters(text);
  if (characters.size() > mask.size()) return false;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const bool fits = mask[i] == "#" ? IsDigit(characters[i]) || characters[i] == prompt_ : characters[i] == mask[i];
    if (!fits) return false;
  }
  return true;
}

void MaskEdBox::SetText(std::string text) {
  if (const std::size_t length = Length(text); Fits(text) && length < Length(mask_)) {
    text += environment::Middle(BlankMask(), length);
  }
  sel_start_ = 0;
  sel_length_ = 0;
  if (text_ == text) {
    ShowAspect(Aspect::kSelection);
  } else {
    Commit(std::move(text));
  }
}

void MaskEdBox::Commit(std::string text) {
  const bool changed = text != text_;
  text_ = std::move(text);
  ShowAspect(Aspect::kText);
  if (changed) Raise(Change);
}

void MaskEdBox::SetSelStart(std::size_t start) { Select(start, 0); }

void MaskEdBox::Select(std::size_t start, std::size_t length) {
  UserSelect(start, length);
  ShowAspect(Aspect::kSelection);
}

void MaskEdBox::UserSelect(std::size_t start, std::size_t length) {
  const std::size_t size = Length(text_);
  sel_start_ = std::min(start, size);
  sel_length_ = std::min(length, size - sel_start_);
}

// One change of the text by the user: `edit` gets the characters (of the blank mask where the text
// does not fit it), the mask, and works on the caret; false is answered with a beep.
void MaskEdBox::UserEdit(const std::function<bool(std::vector<std::string>&, const std::vector<std::string>&)>& edit) {
  Form* window = Window();
  if (!window) return;
  const auto keep = weak_from_this().lock();
  window->Deliver([&] {
    if (!Reachable()) return;
    auto characters = Characters(text_);
    const auto mask = Characters(mask_);
    if (characters.size() != mask.size() || !Fits(text_)) {
      characters = Characters(BlankMask());
      sel_start_ = 0;
      sel_length_ = 0;
    }
    if (!edit(characters, mask)) window->GetDesktop().Beep();
    Commit(Join(characters));
  });
}

void MaskEdBox::BlankSelection(std::vector<std::string>& characters, const std::vector<std::string>& mask) {
  for (std::size_t i = sel_start_; i < sel_start_ + sel_length_; ++i) {
    if (mask[i] == "#") characters[i] = prompt_;
  }
  sel_length_ = 0;
}

void MaskEdBox::StepOverLiterals(const std::vector<std::string>& mask) {
  while (sel_start_ < mask.size() && mask[sel_start_] != "#") ++sel_start_;
}

bool MaskEdBox::Put(const std::string& digit, std::vector<std::string>& characters,
                    const std::vector<std::string>& mask) {
  const auto slot = std::find(mask.begin() + static_cast<std::ptrdiff_t>(sel_start_), mask.end(), "#");
  if (slot == mask.end()) return false;
  sel_start_ = static_cast<std::size_t>(slot - mask.begin());
  characters[sel_start_] = digit;
  ++sel_start_;
  StepOverLiterals(mask);
  return true;
}

void MaskEdBox::UserType(const std::string& typed) {
  UserEdit([&](auto& characters, const auto& mask) {
    bool all_fit = true;
    for (const auto& character : Characters(typed)) {
      if (!IsDigit(character)) {
        all_fit = false;
        continue;
      }
      BlankSelection(characters, mask);
      all_fit = Put(character, characters, mask) && all_fit;
    }
    return all_fit;
  });
}

void MaskEdBox::UserPaste(const std::string& text) {
  UserEdit([&](auto& characters, const auto& mask) {
    BlankSelection(characters, mask);
    bool all_fit = true;
    for (const auto& character : Characters(text)) {
      if (IsDigit(character)) {
        all_fit = Put(character, characters, mask) && all_fit;
        continue;
      }
      if (character == prompt_) {  // leaves a position blank
        StepOverLiterals(mask);
        if (sel_start_ < mask.size()) ++sel_start_;
        continue;
      }
      const auto from = mask.begin() + static_cast<std::ptrdiff_t>(sel_start_);
      const auto literal = std::find(from, mask.end(), character);
      if (literal != mask.end() && character != "#") {
        sel_start_ = static_cast<std::size_t>(literal - mask.begin()) + 1;
      } else if (std::find(mask.begin(), from, character) == from) {  // a literal already stepped over is fine
        all_fit = false;
      }
    }
    return all_fit;
  });
}

void MaskEdBox::UserBackspace() {
  UserEdit([&](auto& characters, const auto& mask) {
    if (sel_length_ > 0) {
      BlankSelection(characters, mask);
      return true;
    }
    while (sel_start_ > 0) {
      --sel_start_;
      if (mask[sel_start_] == "#") {
        characters[sel_start_] = prompt_;
        return true;
      }
    }
    return false;
  });
}

void MaskEdBox::UserDelete() {
  UserEdit([&](auto& characters, const auto& mask) {
    if (sel_length_ > 0) {
      BlankSelection(characters, mask);
      return true;
    }
    StepOverLiterals(mask);
    if (sel_start_ >= mask.size()) return false;
    characters[sel_start_] = prompt_;
    return true;
  });
}

std::string MaskEdBox::UserCopy() const { return environment::Middle(text_, sel_start_, sel_length_); }

std::string MaskEdBox::UserCut() {
  const std::string copied = UserCopy();
  if (sel_length_ > 0) UserDelete();
  return copied;
}

void MaskEdBox::UserReplaceAll(const std::string& text) {
  Select(0, Length(text_));
  UserPaste(text);
}

}  // namespace dossierkit::toolkit
