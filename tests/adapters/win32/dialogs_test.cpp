// Message boxes, and the choice of a file.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adapters/win32/file_dialog.h"
#include "adapters/win32/message_dialog.h"
#include "tests/support/paths.h"
#include "tests/win32/picture.h"

namespace dossierkit::win32 {
namespace {

using toolkit::kAnswerNo;
using toolkit::kAnswerOk;
using toolkit::kAnswerYes;

constexpr wchar_t kBox[] = L"DossierKit.MessageBox";

std::wstring TextOf(HWND window) {
  wchar_t text[2000] = {};
  GetWindowTextW(window, static_cast<wchar_t*>(text), 1999);
  return static_cast<wchar_t*>(text);
}

std::vector<HWND> PartsOf(HWND box, const wchar_t* window_class) {
  std::vector<HWND> parts;
  for (HWND part = FindWindowExW(box, nullptr, window_class, nullptr); part;
       part = FindWindowExW(box, part, window_class, nullptr))
    parts.push_back(part);
  return parts;
}

class MessageBoxes : public testing::Test {
 protected:
  MessageDialog& Show(int flags, const std::string& text = "要保存吗？") {
    box_ = std::make_unique<MessageDialog>(looks_, dpi_, text, flags, "信息保存", nullptr);
    box_->OnAnswer([this] { ++woken_; });
    box_->Show();
    Dispatch();
    return *box_;
  }
  void Dispatch() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  // To whatever has the keyboard.
  void Press(int key) {
    SendMessageW(GetFocus(), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    SendMessageW(GetFocus(), WM_KEYUP, static_cast<WPARAM>(key), 1);
  }
  void PressWithAlt(int key) { SendMessageW(GetFocus(), WM_SYSKEYDOWN, static_cast<WPARAM>(key), 1 << 29); }

  Looks looks_;
  int dpi_ = 96;
  std::unique_ptr<MessageDialog> box_;
  int woken_ = 0;
};

TEST_F(MessageBoxes, ShowTitleTextAndTheButtonsOfTheModel) {
  const HWND box = Show(toolkit::kYesNo | toolkit::kQuestionIcon).Handle();
  EXPECT_TRUE(IsWindowVisible(box));
  EXPECT_EQ(TextOf(box), L"信息保存");
  ASSERT_EQ(PartsOf(box, L"Static").size(), 1U);
  EXPECT_EQ(TextOf(PartsOf(box, L"Static")[0]), L"要保存吗？");
  const auto buttons = PartsOf(box, L"Button");
  ASSERT_EQ(buttons.size(), 2U);
  EXPECT_EQ(TextOf(buttons[0]), L"是(&Y)");
  EXPECT_EQ(TextOf(buttons[1]), L"否(&N)");
  EXPECT_EQ(GetFocus(), buttons[0]) << "the default";
  EXPECT_FALSE(box_->Answered());
}

TEST_F(MessageBoxes, EnterAndArrowsAnswerAQuestion) {
  Show(toolkit::kYesNo);
  Press(VK_RETURN);
  EXPECT_EQ(box_->Answer(), kAnswerYes);
  Show(toolkit::kYesNo);
  Press(VK_RIGHT);
  Press(VK_RETURN);
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  Show(toolkit::kYesNo);
  Press(VK_TAB);
  Press(VK_TAB);
  Press(VK_LEFT);
  Press(VK_RETURN);
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  EXPECT_EQ(woken_, 3);
}

TEST_F(MessageBoxes, LettersAnswerWithAltAndWithout) {
  Show(toolkit::kYesNo);
  Press('N');
  EXPECT_TRUE(box_->Answered());
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  Show(toolkit::kYesNo);
  PressWithAlt('Y');
  EXPECT_TRUE(box_->Answered());
  EXPECT_EQ(box_->Answer(), kAnswerYes);
  Show(toolkit::kYesNo);
  Press('X');
  EXPECT_FALSE(box_->Answered());
}

TEST_F(MessageBoxes, TheBlankPressesTheButton) {
  Show(toolkit::kYesNo);
  Press(VK_RIGHT);
  Press(VK_SPACE);
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  EXPECT_TRUE(box_->Answered());
}

TEST_F(MessageBoxes, AClickAnswersOnce) {
  const auto buttons = PartsOf(Show(toolkit::kYesNo).Handle(), L"Button");
  SendMessageW(buttons[1], BM_CLICK, 0, 0);
  SendMessageW(buttons[0], BM_CLICK, 0, 0);
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  EXPECT_EQ(woken_, 1);
}

TEST_F(MessageBoxes, AQuestionHasNoOtherWayOut) {
  const HWND box = Show(toolkit::kYesNo).Handle();
  Press(VK_ESCAPE);
  SendMessageW(box, WM_CLOSE, 0, 0);
  EXPECT_FALSE(box_->Answered());
  EXPECT_EQ(GetWindowLongPtrW(box, GWL_STYLE) & WS_SYSMENU, 0) << "no close box";
}

TEST_F(MessageBoxes, AMessageIsClosedByEscapeAndTheCloseBox) {
  Show(toolkit::kOkOnly);
  EXPECT_EQ(TextOf(PartsOf(box_->Handle(), L"Button").at(0)), L"确定");
  EXPECT_NE(GetWindowLongPtrW(box_->Handle(), GWL_STYLE) & WS_SYSMENU, 0);
  Press(VK_ESCAPE);
  EXPECT_TRUE(box_->Answered());
  EXPECT_EQ(box_->Answer(), kAnswerOk);
  Show(toolkit::kOkOnly);
  SendMessageW(box_->Handle(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(box_->Answered());
}

TEST_F(MessageBoxes, OneThatIsDestroyedFromOutsideIsUnanswered) {
  DestroyWindow(Show(toolkit::kYesNo).Handle());
  EXPECT_TRUE(box_->Answered());
  EXPECT_EQ(box_->Answer(), kAnswerNo);
  EXPECT_EQ(box_->Handle(), nullptr);
}

TEST_F(MessageBoxes, NothingIsLeftOfThem) {
  Show(toolkit::kYesNo);
  EXPECT_NE(FindWindowW(kBox, nullptr), nullptr);
  box_.reset();
  EXPECT_EQ(FindWindowW(kBox, nullptr), nullptr);
  WNDCLASSW known = {};
  EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), kBox, &known));
}

TEST_F(MessageBoxes, ABoxOverABoxLeavesTheOtherAlive) {
  Show(toolkit::kYesNo);
  { const MessageDialog above(looks_, 96, "a", toolkit::kOkOnly, "b", box_->Handle()); }
  EXPECT_TRUE(IsWindow(box_->Handle()));
  PressWithAlt('Y');
  EXPECT_EQ(box_->Answer(), kAnswerYes);
}

TEST_F(MessageBoxes, AVeryLongTextScrolls) {
  std::string text;
  for (int line = 0; line < 200; ++line) text += "第" + std::to_string(line) + "行\n";
  const HWND box = Show(toolkit::kOkOnly, text).Handle();
  const auto edits = PartsOf(box, L"Edit");
  ASSERT_EQ(edits.size(), 1U);
  EXPECT_EQ(SendMessageW(edits[0], EM_GETLINECOUNT, 0, 0), 201);
  EXPECT_EQ(TextOf(edits[0]).substr(0, 10), L"第0行\r\n第1行\r\n");
  RECT place;
  GetClientRect(box, &place);
  EXPECT_LE(place.bottom, 500);
  // Enter is the button's also while the text has the keyboard.
  SetFocus(edits[0]);
  Press(VK_RETURN);
  EXPECT_TRUE(box_->Answered());
}

TEST_F(MessageBoxes, AnEdgeIsLeftAroundAnyText) {
  const HWND box = Show(toolkit::kQuestionIcon | toolkit::kYesNo, "短").Handle();
  RECT client;
  GetClientRect(box, &client);
  for (const wchar_t* kind : {L"Static", L"Button"}) {
    for (const HWND part : PartsOf(box, kind)) {
      RECT place;
      GetWindowRect(part, &place);
      MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&place), 2);
      EXPECT_GE(place.left, 9);
      EXPECT_GE(place.top, 9);
      EXPECT_LE(place.right, client.right - 9);
      EXPECT_LE(place.bottom, client.bottom - 9);
    }
  }
}

TEST_F(MessageBoxes, OneThatComesToAnotherScreenIsAsOneThatOpensThere) {
  const auto show = [this] {
    const HWND box = Show(toolkit::kQuestionIcon | toolkit::kYesNo).Handle();
    Press(VK_RIGHT);
    return box;
  };
  HWND box = show();
  const auto first = tests::PictureOf(box);
  tests::ToScreen(box, 144, {30, 40});
  EXPECT_EQ(GetFocus(), PartsOf(box, L"Button").at(1));
  RECT place;
  GetWindowRect(box, &place);
  EXPECT_EQ(place.left, 30);
  EXPECT_EQ(place.top, 40);
  GetClientRect(PartsOf(box, L"Button").at(0), &place);
  EXPECT_EQ(place.right, 132);
  EXPECT_EQ(place.bottom, 42);
  const auto came = tests::PictureOf(box);
  tests::ToScreen(box, 96);
  EXPECT_EQ(tests::Difference(tests::PictureOf(box), first), "");

  dpi_ = 144;
  box = show();
  EXPECT_EQ(tests::Difference(tests::PictureOf(box), came), "");
  RECT before;
  GetWindowRect(box, &before);
  RECT other = {1, 2, 30, 40};
  SendMessageW(box, WM_DPICHANGED, MAKELONG(144, 144), reinterpret_cast<LPARAM>(&other));
  GetWindowRect(box, &place);
  EXPECT_TRUE(EqualRect(&place, &before)) << "it came to the screen that it is for";
}

// As Windows may with another font, where Wine stays.
LRESULT CALLBACK ScrollUp(HWND edit, UINT id, WPARAM wide, LPARAM low, UINT_PTR, DWORD_PTR) noexcept {
  const LRESULT result = DefSubclassProc(edit, id, wide, low);
  if (id == WM_SETFONT) SendMessageW(edit, EM_LINESCROLL, 0, -1000);
  return result;
}

TEST_F(MessageBoxes, AVeryLongTextStaysWhereItWasScrolledTo) {
  std::string text;
  for (int line = 0; line < 200; ++line) text += "第" + std::to_string(line) + "行\n";
  const HWND box = Show(toolkit::kOkOnly, text).Handle();
  const HWND shown = PartsOf(box, L"Edit").at(0);
  SendMessageW(shown, EM_LINESCROLL, 0, 50);
  SetWindowSubclass(shown, ScrollUp, 2, 0);
  const auto before = tests::PictureOf(box);
  tests::ToScreen(box, 144);
  EXPECT_EQ(SendMessageW(shown, EM_GETFIRSTVISIBLELINE, 0, 0), 50);
  tests::ToScreen(box, 96);
  EXPECT_EQ(tests::Difference(tests::PictureOf(box), before), "");
}

// --- files ---------------------------------------------------------------------------------------

TEST(FileDialog, HasTheFiltersOfTheModel) {
  using namespace std::string_literals;
  EXPECT_EQ(NativeFiltersOf("图片文件(*.jpg)|*.jpg;*.jpeg|所有文件|*.*"),
            L"图片文件 (*.jpg;*.jpeg)\0*.jpg;*.jpeg\0所有文件 (*.*)\0*.*\0"s);
  EXPECT_EQ(NativeFiltersOf(""), L"");
}

TEST(FileDialog, BeginsInTheNearestFolderThatIsThere) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"照片";
  std::filesystem::create_directory(folder);
  const std::u8string text = folder.u8string();
  const std::string path(text.begin(), text.end());
  EXPECT_EQ(StartFolderOf(path), folder.wstring());
  EXPECT_EQ(StartFolderOf(path + "\\none\\a.jpg"), folder.wstring());
  EXPECT_EQ(StartFolderOf(path + "/none/a.jpg"), folder.wstring());
  EXPECT_EQ(StartFolderOf("C:\\nowhere\\a"), L"C:\\");
  EXPECT_EQ(StartFolderOf(""), L"");
  EXPECT_EQ(StartFolderOf("nowhere"), L"");
  std::filesystem::remove(folder);
}

// Types a name into the dialog once it stands there, and presses one of its buttons.
struct Chooser {
  std::wstring name;
  WPARAM button;
  int ticks = 0;
};
Chooser* chooser = nullptr;

void CALLBACK Choose(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND dialog = FindWindowW(L"#32770", L"打开");
  constexpr int kEdit = 0x480;   // edt1
  constexpr int kCombo = 0x47C;  // cmb13
  const HWND box =
      dialog ? GetDlgItem(dialog, kEdit) ? GetDlgItem(dialog, kEdit) : GetDlgItem(dialog, kCombo) : nullptr;
  if (!box || !IsWindowVisible(dialog)) {
    // The test has failed; a dialog that nobody answers would wait for ever.
    if (++chooser->ticks > 2000) std::abort();
    return;
  }
  KillTimer(nullptr, timer);
  if (!chooser->name.empty())
    SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(chooser->name.c_str()));
  PostMessageW(dialog, WM_COMMAND, chooser->button, 0);
}

class ChosenFile : public testing::Test {
 protected:
  std::string Choose(const std::wstring& name, WPARAM button) {
    Chooser now{name, button};
    chooser = &now;
    SetTimer(nullptr, 0, 50, win32::Choose);
    const std::u8string folder = folder_.u8string();
    return ChooseFile("图片文件|*.jpg", {folder.begin(), folder.end()}, nullptr);
  }
  const std::filesystem::path folder_ = std::filesystem::temp_directory_path();
};

TEST_F(ChosenFile, IsThePathOfTheNameInTheStartFolder) {
  const std::filesystem::path before = std::filesystem::current_path();
  const std::string chosen = Choose(L"照片 一.jpg", IDOK);
  const std::u8string expected = (folder_ / L"照片 一.jpg").u8string();
  EXPECT_EQ(chosen, std::string(expected.begin(), expected.end())) << "it need not exist";
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(ChosenFile, IsNoneWhereTheUserCancels) { EXPECT_EQ(Choose(L"a.jpg", IDCANCEL), ""); }

}  // namespace
}  // namespace dossierkit::win32
