#include "platform/toolkit/controls/key_stroke.h"

namespace dossierkit::toolkit {
namespace {

struct Sign {
  char32_t character;
  int code;
};

constexpr Sign kSigns[] = {
    {U' ', 32},   {U'!', '1'},  {U'@', '2'}, {U'#', '3'},  {U'$', '4'}, {U'%', '5'},  {U'^', '6'},
    {U'&', '7'},  {U'*', '8'},  {U'(', '9'}, {U')', '0'},  {U';', 186}, {U':', 186},  {U'=', 187},
    {U'+', 187},  {U',', 188},  {U'<', 188}, {U'-', 189},  {U'_', 189}, {U'.', 190},  {U'>', 190},
    {U'/', 191},  {U'?', 191},  {U'`', 192}, {U'~', 192},  {U'[', 219}, {U'{', 219},  {U'\\', 220},
    {U'|', 220},  {U']', 221},  {U'}', 221}, {U'\'', 222}, {U'"', 222}, {U'，', 188}, {U'《', 188},
    {U'。', 190}, {U'》', 190},
};

bool IsLetter(int code) { return code >= 'A' && code <= 'Z'; }

}  // namespace

std::u32string CharactersOf(const KeyStroke& stroke) {
  const bool ctrl = stroke.shift & kCtrl;
  const bool alt = stroke.shift & kAlt;
  switch (stroke.code) {
    case kKeyReturn: return ctrl ? U"\n" : U"\r";
    case kKeyBack:
    case kKeyEscape: return {static_cast<char32_t>(stroke.code)};
    case kKeyTab:
    case kKeyDelete: return {};
    default: break;
  }
  if (ctrl && !alt && IsLetter(stroke.code)) return {static_cast<char32_t>(stroke.code - 'A' + 1)};
  if (ctrl != alt) return {};
  std::u32string characters;
  for (const char32_t character : stroke.text) {
    if (character >= 32 && character != 127) characters += character;
  }
  return characters;
}

char MnemonicKeyOf(const KeyStroke& stroke) {
  if ((stroke.shift & ~kShift) != kAlt) return 0;
  if (IsLetter(stroke.code) || (stroke.code >= '0' && stroke.code <= '9'))
    return static_cast<char>(stroke.code);
  const int digit = stroke.code - kKeyPad0;
  return digit >= 0 && digit <= 9 ? static_cast<char>('0' + digit) : '\0';
}

int KeyCodeOfCharacter(char32_t character) {
  if (character >= U'a' && character <= U'z') return static_cast<int>(character - U'a') + 'A';
  if ((character >= U'A' && character <= U'Z') || (character >= U'0' && character <= U'9'))
    return static_cast<int>(character);
  for (const Sign& sign : kSigns) {
    if (sign.character == character) return sign.code;
  }
  return 0;
}

}  // namespace dossierkit::toolkit
