// What native windows have besides the suite of all view sets: input methods, the menu of a box, what comes
// from outside.
#include <oleacc.h>

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "tests/adapters/views/view_test.h"
#include "tests/support/win32_user.h"

namespace dossierkit::views {
namespace {

using tests::RunMessages;
using toolkit::TextBox;

class NativeInput : public ViewTest {
 protected:
  HWND Native(const std::string& name) { return static_cast<tests::Win32User&>(user).ViewOf(name).Handle(); }
  // Notes keys and characters that come to the page.
  void Listen() {
    form->page->on_key_down = [&](int& key, int) { log.push_back("down " + std::to_string(key)); };
    form->page->on_key_press = [&](char32_t& key) { log.push_back("press " + std::to_string(key)); };
  }
};

TEST_F(NativeInput, AKeyThatAnInputMethodTakesNeverReachesTheModel) {
  Visit([&] {
    user.Click("txtName");
    Listen();
    SendMessageW(Native("txtName"), WM_KEYDOWN, VK_PROCESSKEY, 1);
    RunMessages();
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(NativeInput, ACharacterThatComesInTwoHalvesIsOne) {
  Visit([&] {
    user.Click("txtName");
    Listen();
    SendMessageW(Native("txtName"), WM_CHAR, 0xD840, 1);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(driver->Text("txtName"), "");
    SendMessageW(Native("txtName"), WM_CHAR, 0xDC00, 1);
    EXPECT_EQ(TakeLog(), Log{"press 131072"});
    EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "𠀀");
    EXPECT_EQ(driver->Text("txtName"), "𠀀");
  });
}

TEST_F(NativeInput, WhatIsComposedStaysOutOfTheTextAndTheEnterThatEndsItGoesNowhere) {
  Visit([&] {
    user.Click("txtNote");
    Listen();
    const HWND box = Native("txtNote");
    SendMessageW(box, WM_IME_STARTCOMPOSITION, 0, 0);
    EXPECT_TRUE(driver->Desktop().Composing());
    SendMessageW(box, WM_IME_COMPOSITION, 0, GCS_COMPSTR);
    user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(TakeLog(), Log{});
    SendMessageW(box, WM_IME_ENDCOMPOSITION, 0, 0);
    EXPECT_FALSE(driver->Desktop().Composing());
    EXPECT_EQ(form->Get<TextBox>("txtNote")->Text(), "");
    user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(TakeLog(), (Log{"down 13", "press 13"}));
    EXPECT_EQ(form->Get<TextBox>("txtNote")->Text(), "\r\n");
  });
}

TEST_F(NativeInput, TheMenuOfABoxGivesItsCommands) {
  Visit([&] {
    user.Click("txtName");
    user.Type("abc");
    PostMessageW(Native("txtName"), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Native("txtName")), -1);
    for (const WPARAM key : {VK_DOWN, VK_RETURN}) PostMessageW(Native("frmSample"), WM_KEYDOWN, key, 1);
    RunMessages();
    EXPECT_EQ(driver->Text("txtName"), "") << "the first item takes back";
    user.Press('Y', toolkit::kCtrl);
    EXPECT_EQ(driver->Text("txtName"), "abc") << "it was the model's";
  });
}

TEST_F(NativeInput, ATextThatIsSetFromOutsideIsTheUsers) {
  Visit([&] {
    user.Click("txtName");
    form->Get<TextBox>("txtName")->SetMaxLength(2);
    SendMessageW(Native("txtName"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"张三丰"));
    EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "张三");
    EXPECT_EQ(driver->Text("txtName"), "张三");
    user.Click("mskDate");
    SendMessageW(Native("mskDate"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"2001年12月"));
    EXPECT_EQ(form->Get<toolkit::MaskEdBox>("mskDate")->Text(), "2001年12月");
  });
}

TEST_F(NativeInput, TheNativeFocusFromOutsideIsFollowedOrGoesBack) {
  Visit([&] {
    user.Click("txtName");
    SetFocus(Native("txtCode"));
    RunMessages();
    EXPECT_EQ(form->ActiveControl()->Name(), "txtCode");
    Refuse(*form->Get("txtCode"));
    SetFocus(Native("txtName"));
    RunMessages();
    EXPECT_EQ(form->ActiveControl()->Name(), "txtCode");
    EXPECT_EQ(driver->Focus(), "txtCode");
  });
}

TEST_F(NativeInput, TheClickThatGivesTheFocusLeavesTheCaretOfAMaskedBoxAtItsBeginning) {
  Visit([&] {
    user.Click("txtName");
    form->Get<toolkit::MaskEdBox>("mskDate")->SetText("1990年03月");
    POINT far_right = {120, 8};
    tests::ClickAt(Native("mskDate"), far_right);
    EXPECT_EQ(driver->Selected("mskDate"), (toolkit::Selection{0, 0}));
    tests::ClickAt(Native("mskDate"), far_right);
    EXPECT_EQ(driver->Selected("mskDate"), (toolkit::Selection{8, 0})) << "the next click places it";
  });
}

TEST_F(NativeInput, ScreenReadersAreToldWhatAPaneIs) {
  Visit([&] {
    IAccessible* told = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(Native("labName"), static_cast<DWORD>(OBJID_CLIENT),
                                         __uuidof(IAccessible), reinterpret_cast<void**>(&told)),
              S_OK);
    VARIANT self;
    V_VT(&self) = VT_I4;
    V_I4(&self) = CHILDID_SELF;
    VARIANT role;
    VariantInit(&role);
    EXPECT_EQ(told->get_accRole(self, &role), S_OK);
    EXPECT_EQ(V_I4(&role), ROLE_SYSTEM_STATICTEXT);
    told->Release();
    EXPECT_EQ(driver->Spoken("labName"), "姓名");
  });
}

TEST_F(NativeInput, TheClipboardHasTheLineBreaksOfWindows) {
  driver->Desktop().GetPlatform().SetClipboardText("一\n二");
  ASSERT_TRUE(OpenClipboard(nullptr));
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const std::wstring text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : L"";
  CloseClipboard();
  EXPECT_EQ(text, L"一\r\n二");
  EXPECT_EQ(driver->Desktop().GetPlatform().ClipboardText(), "一\r\n二");
}

}  // namespace
}  // namespace dossierkit::views
