#include "adapters/qt/texts.h"

#include <gtest/gtest.h>

#include "adapters/qt/file_dialog.h"
#include "adapters/qt/keys.h"
#include "adapters/qt/translator.h"
#include "platform/toolkit/controls/control.h"

namespace dossierkit::qt {
namespace {

TEST(Translator, KnowsWholeTextsOnly) {
  const Translator translator;
  EXPECT_EQ(translator.translate("QFileDialog", "&Open", nullptr, -1), QString("打开(&O)"));
  EXPECT_EQ(translator.translate("QPlatformTheme", "Open", nullptr, -1), QString("打开"));
  EXPECT_TRUE(translator.translate("QFileDialog", "Open all", nullptr, -1).isEmpty());
  EXPECT_TRUE(translator.translate("QFileDialog", "", nullptr, -1).isEmpty());
}

TEST(Translator, LeavesTextsOfTheHostAlone) {
  const Translator translator;
  EXPECT_TRUE(translator.translate("MainWindow", "&Open", nullptr, -1).isEmpty());
  EXPECT_TRUE(translator.translate("", "&Open", nullptr, -1).isEmpty());
}

QKeyEvent Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const char* text = "") {
  return {QEvent::KeyPress, key, modifiers, QString::fromUtf8(text)};
}

TEST(Keys, HaveTheCodesOfTheModel) {
  EXPECT_EQ(StrokeOf(Key(Qt::Key_N, Qt::ControlModifier)).code, 78);
  EXPECT_EQ(StrokeOf(Key(Qt::Key_Comma, Qt::ControlModifier)).code, 188);
  EXPECT_EQ(StrokeOf(Key(Qt::Key_Period)).code, 190);
  EXPECT_EQ(StrokeOf(Key(0xFF0C, Qt::ControlModifier)).code, 188) << "while Chinese punctuation is on";
  EXPECT_EQ(StrokeOf(Key(Qt::Key_Enter, Qt::KeypadModifier)).code, 13);
  EXPECT_EQ(StrokeOf(Key(Qt::Key_5, Qt::KeypadModifier)).code, 101);
  EXPECT_EQ(StrokeOf(Key(Qt::Key_F5)).code, 116);
  EXPECT_EQ(ShiftOf(Qt::ControlModifier | Qt::ShiftModifier), toolkit::kCtrl + toolkit::kShift);
}

TEST(Keys, HaveTheSameCodesOnTheKeypadAndUnderAnInputMethod) {
  const std::pair<int, int> keypad[] = {{Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
                                        {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
                                        {Qt::Key_Down, 40}};
  for (const auto& [key, code] : keypad) EXPECT_EQ(StrokeOf(Key(key, Qt::KeypadModifier)).code, code);
  const std::pair<int, int> chinese[] = {{0xFF0C, 188}, {0x300A, 188}, {0x3002, 190}, {0x300B, 190}};
  for (const auto& [key, code] : chinese) EXPECT_EQ(StrokeOf(Key(key, Qt::ControlModifier)).code, code);
}

TEST(Keys, MnemonicsAreAltWithALetterOrADigit) {
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_N, Qt::AltModifier))), 'N');
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier))), 'N');
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_1, Qt::AltModifier | Qt::KeypadModifier))), '1');
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_N, Qt::AltModifier | Qt::ControlModifier))), 0);
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_N))), 0);
  EXPECT_EQ(MnemonicKeyOf(StrokeOf(Key(Qt::Key_Down, Qt::AltModifier))), 0);
}

TEST(Keys, HaveTheCharactersOfTheModel) {
  using Characters = std::u32string;
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_Return, Qt::NoModifier, "\r"))), Characters{U'\r'});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_Return, Qt::ControlModifier, "\r"))), Characters{U'\n'});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_Apostrophe, Qt::NoModifier, "'"))), Characters{U'\''});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_S, Qt::ControlModifier, "\x13"))), Characters{19});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_Delete, Qt::NoModifier, "\x7f"))), Characters{});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_N, Qt::AltModifier, "n"))), Characters{});
  EXPECT_EQ(CharactersOf(StrokeOf(Key(0, Qt::NoModifier, "中"))), Characters{U'中'});
  const auto alt_gr = Qt::ControlModifier | Qt::AltModifier;
  EXPECT_EQ(CharactersOf(StrokeOf(Key(Qt::Key_At, alt_gr, "@"))), Characters{U'@'});
}

TEST(FileDialogRequest, FilterWithATrailingSeparator) {
  EXPECT_EQ(NameFiltersOf("图片文件 (*.jpg)|*.jpg;"), QStringList{"图片文件 (*.jpg)"});
  EXPECT_EQ(NameFiltersOf("图片|*.jpg;*.jpeg|所有|*.*"), (QStringList{"图片 (*.jpg *.jpeg)", "所有 (*.*)"}));
  EXPECT_TRUE(NameFiltersOf("").isEmpty());
}

TEST(FileDialogRequest, StartFolderMayBeAFile) {
  EXPECT_EQ(StartFolderOf("/tmp\\no-such-file.jpg"), QString("/tmp"));
  EXPECT_EQ(StartFolderOf("/tmp"), QString("/tmp"));
  EXPECT_EQ(StartFolderOf(""), QString());
}

}  // namespace
}  // namespace dossierkit::qt
