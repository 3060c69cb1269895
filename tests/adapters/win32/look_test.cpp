// Sizes, colours and fonts of the native views.
#include "adapters/win32/look.h"

#include <gtest/gtest.h>

namespace dossierkit::win32 {
namespace {

TEST(Win32Metrics, TurnTwipsIntoThePixelsOfAScreen) {
  EXPECT_EQ(Metrics(96).Pixels(1500), 100);
  EXPECT_EQ(Metrics(144).Pixels(1500), 150);
  EXPECT_EQ(Metrics(192).Twips(100), 750);
  EXPECT_EQ(Metrics(144).Scaled(10), 15);
  const RECT place = Metrics(144).Pixels(toolkit::Rect{150, 300, 600, 450});
  EXPECT_EQ(place.left, 15);
  EXPECT_EQ(place.top, 30);
  EXPECT_EQ(place.right, 75);
  EXPECT_EQ(place.bottom, 75);
}

TEST(Win32Metrics, EdgesAndRingsGrowWithTheScreen) {
  EXPECT_EQ(Metrics(96).Edge(), 1);
  EXPECT_EQ(Metrics(144).Edge(), 1);
  EXPECT_EQ(Metrics(192).Edge(), 2);
  EXPECT_EQ(Metrics(96).Ring(), 2);
  EXPECT_EQ(Metrics(192).Ring(), 4);
  EXPECT_EQ(Metrics(72).Edge(), 1);
}

TEST(Win32Look, ColoursOfTheModelAreTheirOwnOrThePalettes) {
  const Look look(96);
  EXPECT_EQ(look.ColorOf(0x00C0FFU), RGB(0xFF, 0xC0, 0x00));
  EXPECT_EQ(look.ColorOf(toolkit::kWindowBackground), RGB(0xFF, 0xFF, 0xFF));
  EXPECT_EQ(look.ColorOf(toolkit::kWindowText), RGB(0x1D, 0x26, 0x33));
  EXPECT_EQ(look.ColorOf(toolkit::kButtonText), RGB(0x1D, 0x26, 0x33));
  EXPECT_EQ(look.ColorOf(toolkit::kButtonFace), RGB(0xF2, 0xF4, 0xF7));
  EXPECT_EQ(look.ColorOf(toolkit::kAppWorkspace), RGB(0x4A, 0x63, 0x80));
  EXPECT_EQ(look.ColorOf(toolkit::kButtonShadow), RGB(0x6F, 0x79, 0x87));
  EXPECT_EQ(look.ColorOf(0x80000003U), RGB(0xF2, 0xF4, 0xF7)) << "a system colour that nothing uses";
}

LOGFONTW Described(HFONT font) {
  LOGFONTW described = {};
  EXPECT_NE(GetObjectW(font, sizeof described, &described), 0);
  return described;
}

TEST(Win32Look, FontsHaveTheirSizeAndTheCharactersOfChinese) {
  const Look look(144);
  const LOGFONTW plain = Described(look.FontOf({"宋体", 9, false}));
  EXPECT_EQ(plain.lfHeight, -18);
  EXPECT_EQ(plain.lfWeight, FW_NORMAL);
  EXPECT_EQ(plain.lfCharSet, GB2312_CHARSET);
  EXPECT_NE(plain.lfFaceName[0], L'\0');
  const LOGFONTW bold = Described(look.FontOf({"华文细黑", 12, true}));
  EXPECT_EQ(bold.lfHeight, -24);
  EXPECT_EQ(bold.lfWeight, FW_BOLD);
  EXPECT_EQ(bold.lfCharSet, GB2312_CHARSET);
}

TEST(Win32Look, AFontIsMadeOnceAndGoesWithTheLook) {
  HFONT font = nullptr;
  {
    const Look look(96);
    font = look.ProgramFont();
    EXPECT_EQ(look.FontOf({}), font);
    EXPECT_NE(look.FontOf({"宋体", 9, true}), font);
    EXPECT_NE(look.FontOf({"宋体", 10.5, false}), font);
    EXPECT_EQ(GetObjectType(font), DWORD{OBJ_FONT});
  }
  EXPECT_EQ(GetObjectType(font), 0U);
}

TEST(Win32Look, MeasuresLinesAndTexts) {
  const Look look(96);
  const HFONT font = look.FontOf({"宋体", 9, false});
  EXPECT_GE(look.LineHeight(font), 12);
  EXPECT_EQ(look.TextWidth(font, L""), 0);
  EXPECT_EQ(look.TextWidth(font, L"姓名"), 2 * look.TextWidth(font, L"姓"));
  EXPECT_NEAR(look.TextWidth(font, L"姓"), 12, 1) << "a Chinese character is square";
}

TEST(Win32Look, AnInkThatCannotBeReadOnItsGroundIsBlackOrWhite) {
  const COLORREF black = RGB(0, 0, 0);
  const COLORREF white = RGB(0xFF, 0xFF, 0xFF);
  const COLORREF pale_blue = RGB(0xC8, 0xDF, 0xFB);
  EXPECT_EQ(ReadableInk(pale_blue, white), black);
  EXPECT_EQ(ReadableInk(pale_blue, RGB(0, 0, 0xFF)), RGB(0, 0, 0xFF));
  EXPECT_EQ(ReadableInk(black, RGB(0, 0, 0xFF)), white);
  EXPECT_EQ(ReadableInk(black, RGB(0, 0xFF, 0)), RGB(0, 0xFF, 0));
  EXPECT_EQ(Look(96, true).InkOn(pale_blue, white), black);
  EXPECT_EQ(Look(96, false).InkOn(pale_blue, white), white) << "the program chose it";
}

// Every colour of a user who needs contrast is the system's own.
TEST(Win32Palette, OfHighContrastIsTheSystems) {
  const Palette palette = Palette::OfTheSystem();
  EXPECT_EQ(palette.base, GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(palette.ink, GetSysColor(COLOR_BTNTEXT));
  EXPECT_EQ(palette.surface, GetSysColor(COLOR_BTNFACE));
  EXPECT_EQ(palette.highlight, GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(palette.selected_text, GetSysColor(COLOR_HIGHLIGHTTEXT));
  EXPECT_EQ(palette.faint_ink, GetSysColor(COLOR_GRAYTEXT));
}

}  // namespace
}  // namespace dossierkit::win32
