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

bool IsBlank(const std::string& character) {
  return character == " " || character == "\t" || character == "\r" || character == "\n";
}

// What stands between the parts of a date as other programs write it.
bool IsSeparator(const std::string& character) {
  return character == "-" || character == "/" || character == ".";
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
  sel_start_ = 0;
  sel_length_ = 0;
  ShowAspect(Aspect::kText);
}

std::string MaskEdBox::BlankMask() const { return environment::Replace(mask_, "#", prompt_); }

bool MaskEdBox::Fits(const std::string& text) const {
  const auto mask = Characters(mask_);
  const auto characters = Characters(text);
  if (characters.size() > mask.size()) return false;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const bool fits =
        mask[i] == "#" ? IsDigit(characters[i]) || characters[i] == prompt_ : characters[i] == mask[i];
    if (!fits) return false;
  }
  return true;
}

bool MaskEdBox::Fills(const std::string& text) const { return Length(text) == Length(mask_) && Fits(text); }

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
// does not fit it) and the mask, and works on the caret. False is answered with a beep; if nothing was
// edited then, text and caret stay as they were.
void MaskEdBox::UserEdit(const std::function<bool(CharacterList&, const CharacterList&)>& edit) {
  Form* window = Window();
  if (!window) return;
  const KeepAlive keep(*this);
  const bool delivered = window->Deliver([&] {
    if (!Reachable()) {
      ShowAspect(Aspect::kText);
      return;
    }
    const std::size_t start = sel_start_;
    const std::size_t length = sel_length_;
    auto characters = Characters(text_);
    const auto mask = Characters(mask_);
    if (!Fills(text_)) {
      characters = Characters(BlankMask());
      sel_start_ = 0;
      sel_length_ = 0;
    }
    const auto before = characters;
    const bool accepted = edit(characters, mask);
    if (!accepted) window->GetDesktop().Beep();
    if (!accepted && characters == before) {
      sel_start_ = start;
      sel_length_ = length;
      ShowAspect(Aspect::kText);
    } else {
      Commit(Join(characters));
    }
  });
  // The native widget may have edited already.
  if (!delivered) ShowAspect(Aspect::kText);
}

void MaskEdBox::BlankSelection(CharacterList& characters, const CharacterList& mask) {
  for (std::size_t i = sel_start_; i < sel_start_ + sel_length_; ++i) {
    if (mask[i] == "#") characters[i] = prompt_;
  }
  sel_length_ = 0;
}

void MaskEdBox::StepOverLiterals(const CharacterList& mask) {
  while (sel_start_ < mask.size() && mask[sel_start_] != "#") ++sel_start_;
}

// Puts a digit or a prompt character at the next "#" and steps over the literals behind it.
bool MaskEdBox::Put(const std::string& character, CharacterList& characters, const CharacterList& mask) {
  const auto slot = std::find(mask.begin() + static_cast<std::ptrdiff_t>(sel_start_), mask.end(), "#");
  if (slot == mask.end()) return false;
  sel_start_ = static_cast<std::size_t>(slot - mask.begin());
  characters[sel_start_] = character;
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
  if (text.empty()) return;
  UserEdit([&](auto& characters, const auto& mask) { return Insert(text, characters, mask); });
}

// Digits and prompt characters go to the next "#" in turn. A literal of the mask leads behind it, so
// that 1990年3月 keeps its parts apart; a separator of dates does where the mask has another literal
// there. Blanks are passed over. False if anything else came or room was wanting.
bool MaskEdBox::Insert(const std::string& text, CharacterList& characters, const CharacterList& mask) {
  const auto inserted = Characters(text);
  const auto enters = [&](const std::string& character) {
    return IsDigit(character) || character == prompt_;
  };
  if (std::none_of(inserted.begin(), inserted.end(), enters)) return false;
  BlankSelection(characters, mask);
  // The literals from here to the caret were stepped over, and may still come.
  std::size_t pending = sel_start_;
  while (pending > 0 && mask[pending - 1] != "#") --pending;
  bool part_begun = false;
  bool all_fit = true;
  for (const auto& character : inserted) {
    if (enters(character)) {
      all_fit = Put(character, characters, mask) && all_fit;
      pending = sel_start_;
      while (pending > 0 && mask[pending - 1] != "#") --pending;
      part_begun = true;
      continue;
    }
    auto place = mask.begin() + static_cast<std::ptrdiff_t>(pending);
    auto literal = character == "#" ? mask.end() : std::find(place, mask.end(), character);
    if (literal == mask.end() && part_begun && IsSeparator(character)) {
      literal = std::find_if(place, mask.end(), [](const auto& item) { return item != "#"; });
    }
    if (literal != mask.end()) {
      pending = static_cast<std::size_t>(literal - mask.begin()) + 1;
      sel_start_ = std::max(sel_start_, pending);
      part_begun = false;
    } else if (!IsSeparator(character) && !IsBlank(character)) {
      all_fit = false;
    }
  }
  StepOverLiterals(mask);
  return all_fit;
}

void MaskEdBox::UserBackspace() {
  UserEdit([&](auto& characters, const auto& mask) {
    if (!Fills(text_)) return true;  // the blank mask is all that is left
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
    if (!Fills(text_)) return true;
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
  std::string copied = UserCopy();
  if (sel_length_ > 0) UserDelete();
  return copied;
}

void MaskEdBox::UserReplaceAll(const std::string& text) {
  UserEdit([&](auto& characters, const auto& mask) {
    sel_start_ = 0;
    sel_length_ = mask.size();
    if (!text.empty()) return Insert(text, characters, mask);
    BlankSelection(characters, mask);
    return true;
  });
}

}  // namespace dossierkit::toolkit
