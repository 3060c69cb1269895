#include "platform/toolkit/controls/key_stroke.h"

#include <gtest/gtest.h>

#include "platform/toolkit/controls/mnemonic.h"

namespace dossierkit::toolkit {
namespace {

TEST(KeyStroke, KeysThatTypeNoTextHaveTheirCharacters) {
  EXPECT_EQ(CharactersOf({kKeyReturn, 0, U"\r"}), U"\r");
  EXPECT_EQ(CharactersOf({kKeyReturn, kCtrl, U"\r"}), U"\n");
  EXPECT_EQ(CharactersOf({kKeyBack, 0, U"\b"}), U"\b");
  EXPECT_EQ(CharactersOf({kKeyEscape, 0, {}}), U"\u001b");
  EXPECT_EQ(CharactersOf({kKeyDelete, 0, U"\u007f"}), U"");
  EXPECT_EQ(CharactersOf({kKeyTab, kCtrl, U"\t"}), U"");
  EXPECT_EQ(CharactersOf({kKeyLeft, 0, {}}), U"");
}

TEST(KeyStroke, CtrlAndALetterAreTheNumberOfTheLetter) {
  EXPECT_EQ(CharactersOf({'A', kCtrl, U"\u0001"}), U"\u0001");
  EXPECT_EQ(CharactersOf({'Z', kCtrl | kShift, {}}), U"\u001a");
  EXPECT_EQ(CharactersOf({'1', kCtrl, U"1"}), U"") << "no letter";
}

TEST(KeyStroke, AltTypesNothingButAltGrDoes) {
  EXPECT_EQ(CharactersOf({'N', kAlt, U"n"}), U"");
  EXPECT_EQ(CharactersOf({'2', kCtrl | kAlt, U"@"}), U"@");
  EXPECT_EQ(CharactersOf({'Q', kCtrl | kAlt, U"\u0011"}), U"") << "a control character is no text";
}

TEST(KeyStroke, AKeyMayTypeSeveralCharacters) {
  EXPECT_EQ(CharactersOf({'A', 0, U"a"}), U"a");
  EXPECT_EQ(CharactersOf({0, 0, U"中文"}), U"中文");
  EXPECT_EQ(CharactersOf({190, 0, U"."}), U".") << "whose number is that of Delete";
}

TEST(KeyStroke, MnemonicsAreAltWithALetterOrADigit) {
  EXPECT_EQ(MnemonicKeyOf({'N', kAlt, U"n"}), 'N');
  EXPECT_EQ(MnemonicKeyOf({'N', kAlt | kShift, U"N"}), 'N');
  EXPECT_EQ(MnemonicKeyOf({'7', kAlt, {}}), '7');
  EXPECT_EQ(MnemonicKeyOf({kKeyPad0 + 3, kAlt, {}}), '3') << "on the keypad";
  EXPECT_EQ(MnemonicKeyOf({kKeyPad0 + 10, kAlt, {}}), 0) << "the keypad's asterisk";
  EXPECT_EQ(MnemonicKeyOf({'N', kAlt | kCtrl, {}}), 0);
  EXPECT_EQ(MnemonicKeyOf({'N', 0, {}}), 0);
  EXPECT_EQ(MnemonicKeyOf({kKeyDown, kAlt, {}}), 0);
}

TEST(KeyStroke, EachCharacterHasItsKey) {
  EXPECT_EQ(KeyCodeOfCharacter(U'a'), 'A');
  EXPECT_EQ(KeyCodeOfCharacter(U'A'), 'A');
  EXPECT_EQ(KeyCodeOfCharacter(U'5'), '5');
  EXPECT_EQ(KeyCodeOfCharacter(U'%'), '5');
  EXPECT_EQ(KeyCodeOfCharacter(U' '), 32);
  EXPECT_EQ(KeyCodeOfCharacter(U'\''), 222);
  EXPECT_EQ(KeyCodeOfCharacter(U'.'), 190);
  EXPECT_EQ(KeyCodeOfCharacter(U'。'), 190) << "the same key while an input method gives Chinese punctuation";
  EXPECT_EQ(KeyCodeOfCharacter(U'《'), 188);
  EXPECT_EQ(KeyCodeOfCharacter(U'中'), 0);
}

TEST(Mnemonics, StandBehindTheMark) {
  EXPECT_EQ(MnemonicOf("增加(&N)"), 'N');
  EXPECT_EQ(MnemonicOf("选择(&s)..."), 'S');
  EXPECT_EQ(MnemonicOf("第一(&1)"), '1');
  EXPECT_EQ(MnemonicOf("取   消"), 0);
  EXPECT_EQ(MnemonicOf("a&"), 0);
  EXPECT_EQ(MnemonicOf("a&中"), 0);
}

TEST(Mnemonics, AreNotReadAloud) {
  EXPECT_EQ(WithoutMnemonic("增加(&N)"), "增加");
  EXPECT_EQ(WithoutMnemonic("&Save"), "Save");
  EXPECT_EQ(WithoutMnemonic("更新照片"), "更新照片");
}

}  // namespace
}  // namespace dossierkit::toolkit
