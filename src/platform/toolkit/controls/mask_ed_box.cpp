#include "platform/toolkit/controls/mask_ed_box.h"

#include <algorithm>
#include <vector>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/control_window.h"

namespace dossierkit::toolkit {
namespace {

using environment::Characters;
using environment::Length;

bool IsDigit(std::string_view character) {
  return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
}

bool IsBlank(const std::string& character) {
  return character == " " || character == "\t" || character == "\r" || character == "\n";
}

// What stands between the parts of a date as other programs write it.
bool IsSeparator(const std::string& character) {
  return character == "-" || character == "/" || character == ".";
}

// The character at a byte position, which moves behind it.
std::string_view NextOf(std::string_view text, std::size_t& position) {
  const std::size_t start = position;
  environment::NextCharacter(text, position);
  return text.substr(start, position - start);
}

// The place behind the literals of the mask that stand at a place, and the one before those that stand
// before it.
std::size_t BehindLiterals(const std::vector<std::string>& mask, std::size_t place) {
  while (place < mask.size() && mask[place] != "#") ++place;
  return place;
}
std::size_t BeforeLiterals(const std::vector<std::string>& mask, std::size_t place) {
  while (place > 0 && mask[place - 1] != "#") --place;
  return place;
}

std::string Join(const std::vector<std::string>& characters) {
  std::string text;
  for (const auto& character : characters) text += character;
  return text;
}

}  // namespace

MaskEdBox::MaskEdBox(std::string name) : EditBox(Kind::kMaskEdBox, std::move(name)) {}

void MaskEdBox::SetMask(std::string mask) {
  mask_ = std::move(mask);
  Reset(BlankMask());
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
  const bool same = text == Text();
  Assign(std::move(text));
  if (same) Select(0, 0);
}

// One change of the text by the user: `edit` gets the characters (of the blank mask where the text
// does not fit it) and the mask, and works on the caret. False is answered with a beep; if nothing was
// edited then, text and caret stay as they were.
void MaskEdBox::UserEdit(EditKind kind, const std::function<bool(Draft&, const CharacterList&)>& edit) {
  Edit([&] {
    const auto mask = Characters(mask_);
    Draft draft{Characters(BlankMask()), {}};
    if (Fills(Text())) draft = {Characters(Text()), {SelStart(), SelLength()}};
    const auto before = draft.characters;
    const bool accepted = edit(draft, mask);
    if (!accepted) Window()->Beep();
    if (!accepted && draft.characters == before) {
      ShowAspect(Aspect::kText);
    } else {
      const std::string text = Join(draft.characters);
      Commit(text, {0, Text(), text}, kind, draft.selection);
    }
  });
}

void MaskEdBox::BlankSelection(Draft& draft, const CharacterList& mask) const {
  auto& [start, length] = draft.selection;
  for (std::size_t i = start; i < start + length; ++i) {
    if (mask[i] == "#") draft.characters[i] = prompt_;
  }
  length = 0;
}

// Puts a digit or a prompt character at the next "#" and steps over the literals behind it.
bool MaskEdBox::Put(const std::string& character, Draft& draft, const CharacterList& mask) const {
  std::size_t& caret = draft.selection.start;
  const auto slot = std::find(mask.begin() + static_cast<std::ptrdiff_t>(caret), mask.end(), "#");
  if (slot == mask.end()) return false;
  caret = static_cast<std::size_t>(slot - mask.begin());
  draft.characters[caret] = character;
  caret = BehindLiterals(mask, caret + 1);
  return true;
}

void MaskEdBox::UserType(const std::string& typed) {
  const auto entered = Characters(typed);
  const auto kind = entered.size() == 1 ? EditKind::kTyped : EditKind::kOther;
  UserEdit(kind, [&](Draft& draft, const CharacterList& mask) {
    bool all_fit = true;
    for (const auto& character : entered) {
      if (!IsDigit(character)) {
        all_fit = false;
        continue;
      }
      BlankSelection(draft, mask);
      all_fit = Put(character, draft, mask) && all_fit;
    }
    return all_fit;
  });
}

void MaskEdBox::UserPaste(const std::string& text) {
  if (text.empty()) return;
  UserEdit(EditKind::kOther,
           [&](Draft& draft, const CharacterList& mask) { return Insert(text, draft, mask); });
}

// Digits and prompt characters go to the next "#" in turn. A literal of the mask leads behind it, so
// that 1990年3月 keeps its parts apart; a separator of dates does where the mask has another literal
// there. Blanks are passed over. False if anything else came or room was wanting.
bool MaskEdBox::Insert(const std::string& text, Draft& draft, const CharacterList& mask) const {
  const auto enters = [&](std::string_view character) { return IsDigit(character) || character == prompt_; };
  // What cannot enter at all blanks nothing. A text may be very long.
  bool any = false;
  for (std::size_t position = 0; position < text.size() && !any;) any = enters(NextOf(text, position));
  if (!any) return false;
  BlankSelection(draft, mask);
  std::size_t& caret = draft.selection.start;
  // The literals from here to the caret were stepped over, and may still come.
  std::size_t pending = BeforeLiterals(mask, caret);
  bool part_begun = false;
  bool all_fit = true;
  for (std::size_t position = 0; position < text.size();) {
    const std::string character(NextOf(text, position));
    if (enters(character)) {
      if (!Put(character, draft, mask)) return false;  // the mask is full
      pending = BeforeLiterals(mask, caret);
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
      caret = std::max(caret, pending);
      part_begun = false;
    } else if (!IsSeparator(character) && !IsBlank(character)) {
      all_fit = false;
    }
  }
  caret = BehindLiterals(mask, caret);
  return all_fit;
}

void MaskEdBox::UserBackspace() {
  UserEdit(EditKind::kErased, [&](Draft& draft, const CharacterList& mask) {
    if (!Fills(Text())) return true;  // the blank mask is all that is left
    auto& [caret, length] = draft.selection;
    if (length > 0) {
      BlankSelection(draft, mask);
      return true;
    }
    while (caret > 0) {
      --caret;
      if (mask[caret] == "#") {
        draft.characters[caret] = prompt_;
        return true;
      }
    }
    return false;
  });
}

void MaskEdBox::UserDelete() {
  UserEdit(EditKind::kErased, [&](Draft& draft, const CharacterList& mask) {
    if (!Fills(Text())) return true;  // the blank mask is all that is left
    auto& [caret, length] = draft.selection;
    if (length > 0) {
      BlankSelection(draft, mask);
      return true;
    }
    caret = BehindLiterals(mask, caret);
    if (caret >= mask.size()) return false;
    draft.characters[caret] = prompt_;
    return true;
  });
}

bool MaskEdBox::ActOnKey(const KeyStroke& stroke) {
  if (EditBox::ActOnKey(stroke)) return true;
  std::string typed;
  switch (stroke.code) {
    case kKeyBack: UserBackspace(); return true;
    case kKeyDelete: UserDelete(); return true;
    default: break;
  }
  for (const char32_t character : CharactersOf(stroke)) {
    if (character >= 32) typed += environment::Encode(character);
  }
  if (!typed.empty()) UserType(typed);
  return !typed.empty();
}

void MaskEdBox::UserReplaceAll(const std::string& text) {
  UserEdit(EditKind::kOther, [&](Draft& draft, const CharacterList& mask) {
    draft.selection = {0, mask.size()};
    if (!text.empty()) return Insert(text, draft, mask);
    BlankSelection(draft, mask);
    return true;
  });
}

}  // namespace dossierkit::toolkit
