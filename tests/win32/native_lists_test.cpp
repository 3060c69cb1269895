// Native lists, trees, tabs and menus: choices from outside, many rows, what is made when.
#include "tests/win32/native_test.h"

namespace dossierkit::views {
namespace {

using NativeLists = NativeTest;

TEST_F(NativeLists, AChoiceFromOutsideIsTheUsers) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(5);
    const HWND list = Native("list");
    tests::RunMessages();
    Ask(list, LB_SETCURSEL, 3);
    Ask(GetParent(list), WM_COMMAND, MAKEWPARAM(0, LBN_SELCHANGE), list);
    EXPECT_EQ(picker->list->ListIndex(), 3);
    EXPECT_EQ(driver->Focus(), "list");
    user.Click("txtDm");
    Refuse(*picker->box);
    Ask(list, LB_SETCURSEL, 1);
    Ask(GetParent(list), WM_COMMAND, MAKEWPARAM(0, LBN_SELCHANGE), list);
    EXPECT_EQ(picker->list->ListIndex(), 3);
    EXPECT_EQ(driver->Row("list"), 3) << "goes back";
  });
}

TEST_F(NativeLists, TheRowUnderAPointIsToldToTheLastOfManyAndNotBelow) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(70'000);
    tests::RunMessages();
    const HWND list = Native("list");
    EXPECT_EQ(picker->list->RowAt(150, 15), 0);
    Ask(list, LB_SETTOPINDEX, 65'534);
    EXPECT_EQ(picker->list->RowAt(150, 15), 65'534);
    const int height = static_cast<int>(Ask(list, LB_GETITEMHEIGHT)) * 15;
    EXPECT_EQ(picker->list->RowAt(150, 15 + 3 * height), 65'537);
    picker->list->Clear();
    picker->FillList(2);
    tests::RunMessages();
    EXPECT_EQ(picker->list->RowAt(150, 15 + height), 1);
    EXPECT_EQ(picker->list->RowAt(150, 15 + 2 * height), -1);
    EXPECT_EQ(picker->list->RowAt(150, 9'000), -1);
  });
}

// Below the last row Windows names the nearest one, where Wine names none.
class NearestRow : public NativeLists {
 protected:
  static LRESULT CALLBACK Answer(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
    if (id == LB_ITEMFROMPOINT) return MAKELRESULT(1, 0);
    return CallWindowProcW(Before(), window, id, wide, low);
  }
};

TEST_F(NearestRow, IsNoRowUnderThePoint) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(2);
    tests::RunMessages();
    const HWND list = Native("list");
    const int height = static_cast<int>(Ask(list, LB_GETITEMHEIGHT)) * 15;
    AnswerBefore(list, Answer);
    EXPECT_EQ(picker->list->RowAt(150, 15 + height), 1);
    EXPECT_EQ(picker->list->RowAt(150, 15 + 2 * height), -1);
    EXPECT_EQ(picker->list->RowAt(150, 15), -1) << "not under the point either";
  });
}

TEST_F(NativeLists, AKeyThatTheModelLeavesChoosesNothing) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->list->AddItem("a");
    picker->list->AddItem("b");
    user.ClickListRow("list", 0);
    user.Type("b");
    EXPECT_EQ(driver->Row("list"), 0);
    EXPECT_EQ(picker->list->ListIndex(), 0);
  });
}

TEST_F(NativeLists, TheChosenRowIsDarkWithTheKeyboardAndPaleWithout) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(3);
    user.ClickListRow("list", 1);
    const HWND list = Native("list");
    const int middle = static_cast<int>(Ask(list, LB_GETITEMHEIGHT)) * 3 / 2;
    EXPECT_EQ(ColorAt(list, 150, middle), RGB(0x2B, 0x6C, 0xB0));
    user.Click("txtDm");
    EXPECT_EQ(ColorAt(list, 150, middle), RGB(0xD3, 0xE4, 0xF7));
    EXPECT_EQ(ColorAt(list, 1, middle), RGB(0x2B, 0x6C, 0xB0)) << "the bar";
    EXPECT_EQ(ColorAt(list, 150, middle * 2), RGB(0xFF, 0xFF, 0xFF));
  });
}

// --- trees ---------------------------------------------------------------------------------------

TEST_F(NativeLists, ATreeMakesItsNodesWhenTheyComeIntoSight) {
  Pick([&] {
    picker->FillTree();
    const HWND tree = Native("tree");
    tests::RunMessages();
    EXPECT_EQ(Ask(tree, TVM_GETCOUNT), 2);
    user.FoldNode("tree", "G1");
    EXPECT_EQ(Ask(tree, TVM_GETCOUNT), 4);
    picker->tree->SetSelectedItem(picker->tree->Nodes().Find("G111").Index());
    tests::RunMessages();
    EXPECT_EQ(Ask(tree, TVM_GETCOUNT), 5);
  });
}

TEST_F(NativeLists, ATreeThatIsFoldedOrChosenFromOutsideIsTheUsers) {
  Pick([&] {
    picker->FillTree();
    const HWND tree = Native("tree");
    tests::RunMessages();
    const auto first = TreeView_GetRoot(tree);
    Ask(tree, TVM_EXPAND, TVE_EXPAND, first);
    EXPECT_TRUE(picker->tree->Nodes().Find("G1").Expanded());
    EXPECT_EQ(driver->Rows("tree"), 4);
    Ask(tree, TVM_SELECTITEM, TVGN_CARET, TreeView_GetChild(tree, first));
    EXPECT_EQ(picker->Selected(), "G11");
    Ask(tree, TVM_EXPAND, TVE_COLLAPSE, first);
    EXPECT_FALSE(picker->tree->Nodes().Find("G1").Expanded());
    EXPECT_EQ(driver->Node("tree"), "高等教育");
  });
}

TEST_F(NativeLists, ATreeThatMayNotBeEnteredFoldsBack) {
  Pick([&] {
    picker->FillTree();
    tests::RunMessages();
    picker->strip->SetTab(1);
    user.Click("txtDm");
    Refuse(*picker->box);
    picker->strip->SetTab(0);
    const HWND tree = Native("tree");
    Ask(tree, TVM_EXPAND, TVE_EXPAND, TreeView_GetRoot(tree));
    EXPECT_FALSE(picker->tree->Nodes().Find("G1").Expanded());
    EXPECT_EQ(driver->Rows("tree"), 2);
  });
}

TEST_F(NativeLists, ATreeOpensManyNodesAtOnceAndStaysWhereItWasScrolledTo) {
  Pick([&] {
    toolkit::Nodes& nodes = picker->tree->Nodes();
    for (int i = 0; i < 100; ++i) {
      const toolkit::Node node = nodes.Add("G" + std::to_string(i), "节点" + std::to_string(i));
      nodes.Add(node.Index(), toolkit::Relation::kChild, "", "下级");
    }
    user.ClickNode("tree", "G2");
    const HWND tree = Native("tree");
    const auto on_top = [tree] {
      wchar_t text[40] = {};
      TVITEMW item = {};
      item.mask = TVIF_TEXT;
      item.hItem = TreeView_GetFirstVisible(tree);
      item.pszText = static_cast<wchar_t*>(text);
      item.cchTextMax = 40;
      SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
      return windows::Utf8(item.pszText);
    };
    for (int i = 0; i < 100; ++i) nodes.Find("G" + std::to_string(i)).SetExpanded(true);
    tests::RunMessages();
    EXPECT_EQ(driver->Rows("tree"), 200);
    EXPECT_EQ(driver->Node("tree"), "节点2");
    EXPECT_EQ(on_top(), "节点0");
    user.FoldNode("tree", "G3");
    EXPECT_EQ(driver->Rows("tree"), 199);
    Ask(tree, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, TreeView_GetNextSibling(tree, TreeView_GetSelection(tree)));
    EXPECT_EQ(on_top(), "节点3");
    for (int i = 10; i < 100; ++i) nodes.Find("G" + std::to_string(i)).SetExpanded(false);
    tests::RunMessages();
    EXPECT_EQ(driver->Rows("tree"), 109);
    EXPECT_EQ(on_top(), "节点3");
  });
}

TEST_F(NativeLists, ANodeThatWasOpenedBelowAClosedOneComesOpen) {
  Pick([&] {
    picker->FillTree();
    tests::RunMessages();
    picker->tree->Nodes().Find("G11").SetExpanded(true);
    tests::RunMessages();
    EXPECT_EQ(driver->Rows("tree"), 2);
    user.FoldNode("tree", "G1");
    EXPECT_EQ(driver->Rows("tree"), 5);
  });
}

TEST_F(NativeLists, ADoubleClickOnANodeTellsItAndFolds) {
  Pick([&] {
    picker->FillTree();
    On(picker->tree->DblClick, [&] { log.push_back(picker->Selected()); });
    user.ClickNode("tree", "G1");
    user.DoubleClick("tree");
    EXPECT_EQ(TakeLog(), Log{"G1"});
    EXPECT_EQ(driver->Rows("tree"), 4);
  });
}

// --- tabs and menus ------------------------------------------------------------------------------

TEST_F(NativeLists, ATabFromOutsideIsTheUsers) {
  Pick([&] {
    const HWND tabs = Part("Tab1", WC_TABCONTROLW);
    Ask(tabs, TCM_SETCURFOCUS, 1);
    EXPECT_EQ(picker->strip->Tab(), 1);
    EXPECT_TRUE(driver->InSight("txtDm"));
    user.Click("txtDm");
    Refuse(*picker->box);
    Ask(tabs, TCM_SETCURFOCUS, 0);
    EXPECT_EQ(picker->strip->Tab(), 1);
    EXPECT_EQ(driver->Row("Tab1"), 1) << "goes back";
  });
}

TEST_F(NativeLists, AMenuIsClickedWhereTheButtonWentDown) {
  Visit([&] {
    const auto menu = form->Get<toolkit::VerticalMenu>("VMenu1");
    On(menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { log.push_back(std::to_string(item)); });
    const HWND list = Part("VMenu1", L"LISTBOX");
    Drag(list, {20, 10}, {20, 60});
    EXPECT_EQ(TakeLog(), Log{});
    Drag(list, {20, 60}, {20, 62});
    EXPECT_EQ(TakeLog(), Log{"2"});
    Drag(list, {20, 300}, {20, 300});
    EXPECT_EQ(TakeLog(), Log{}) << "below the last item";
  });
}

TEST_F(NativeLists, AMenuItemThatIsMarkedFromOutsideIsMarkedAndNotClicked) {
  Visit([&] {
    const auto menu = form->Get<toolkit::VerticalMenu>("VMenu1");
    On(menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { log.push_back(std::to_string(item)); });
    const HWND list = Part("VMenu1", L"LISTBOX");
    Ask(list, LB_SETCURSEL, 2);
    Ask(GetParent(list), WM_COMMAND, MAKEWPARAM(0, LBN_SELCHANGE), list);
    EXPECT_EQ(menu->Marked(), 3);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(driver->Focus(), "VMenu1");
  });
}

// What is left to be painted after a change is all that looks otherwise.
TEST_F(NativeLists, AMenuPaintsEachRowThatChanged) {
  Visit([&] {
    const auto menu = form->Get<toolkit::VerticalMenu>("VMenu1");
    const HWND list = Part("VMenu1", L"LISTBOX");
    const auto looks = [&] {
      std::vector<COLORREF> colors;
      for (int y = 2; y < 4 * 38; y += 3) {
        for (int x = 2; x < 100; x += 3) colors.push_back(ColorAt(list, x, y));
      }
      return colors;
    };
    std::vector<COLORREF> before = looks();
    const auto changed_wholly = [&](const std::string& what) {
      const std::vector<COLORREF> now = looks();
      EXPECT_NE(now, before) << what;
      InvalidateRect(list, nullptr, TRUE);
      EXPECT_EQ(looks(), now) << what;
      before = now;
    };
    user.ClickMenu(3);
    changed_wholly("a click");
    user.Press(toolkit::kKeyUp);
    changed_wholly("a mark that moved");
    user.Press(toolkit::kKeyTab);
    changed_wholly("the keyboard went");
    menu->set_menuitemcur(1);
    menu->set_menuitemcaption("甲乙丙丁");
    changed_wholly("a caption");
    menu->SetEnabled(false);
    changed_wholly("disabled");
  });
}

TEST_F(NativeLists, AMenuHasTheCaptionsOfItsItems) {
  Visit([&] {
    const auto menu = form->Get<toolkit::VerticalMenu>("VMenu1");
    menu->set_menuitemcur(2);
    menu->set_menuitemcaption("工作经历");
    menu->set_menuitemicon("/nowhere\\none.ico");
    const HWND list = Part("VMenu1", L"LISTBOX");
    wchar_t text[40] = {};
    Ask(list, LB_GETTEXT, 1, static_cast<wchar_t*>(text));
    EXPECT_STREQ(static_cast<wchar_t*>(text), L"工作经历");
    menu->set_menuitemsmax(7);
    EXPECT_EQ(Ask(list, LB_GETCOUNT), 7);
  });
}

// --- toolbars ------------------------------------------------------------------------------------

TEST_F(NativeLists, AToolbarButtonIsClickedWhereTheButtonWentDown) {
  Visit([&] {
    On(form->Get<toolkit::Toolbar>("TbMain")->ButtonClick,
       [&](toolkit::ToolbarButton& button) { log.push_back(button.Key()); });
    user.Click("txtName");
    const HWND add = Mouse().ToolbarButton("Add");
    Drag(add, {5, 5}, {5, 500});
    Drag(add, {5, 5}, {-5, 5});
    EXPECT_EQ(TakeLog(), Log{});
    Drag(add, {5, 5}, {8, 8});
    EXPECT_EQ(TakeLog(), Log{"Add"});
    EXPECT_EQ(driver->Focus(), "txtName");
    EXPECT_EQ(GetCapture(), nullptr);
  });
}

TEST_F(NativeLists, AToolbarButtonThatLostTheMouseIsNotClicked) {
  Visit([&] {
    On(form->Get<toolkit::Toolbar>("TbMain")->ButtonClick,
       [&](toolkit::ToolbarButton& button) { log.push_back(button.Key()); });
    const HWND add = Mouse().ToolbarButton("Add");
    PostMessageW(add, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    tests::RunMessages();
    EXPECT_EQ(GetCapture(), add);
    ReleaseCapture();
    PostMessageW(add, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    tests::RunMessages();
    EXPECT_EQ(TakeLog(), Log{});
  });
}

// --- labels ----------------------------------------------------------------------------------------

// A touch pad turns the wheel by small parts.
TEST_F(NativeLists, AHelpTextScrollsByTheWheelAlsoInParts) {
  Visit([&] {
    const auto label = form->Get<toolkit::Label>("labName");
    label->SetWordWrap(true);
    label->SetOpaque(true);
    label->Move({120, 4300, 3000, 900});
    std::string lines;
    for (int i = 0; i < 30; ++i) lines += "一二三\n";
    label->SetCaption(lines);
    const HWND native = Native("labName");
    const auto turn = [&](int by) {
      Ask(native, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(by)));
      return GetScrollPos(native, SB_VERT);
    };
    EXPECT_EQ(turn(-120), 3);
    EXPECT_EQ(turn(-20), 3);
    EXPECT_EQ(turn(-20), 4);
    EXPECT_EQ(turn(20), 4);
    EXPECT_EQ(turn(60), 2);
    EXPECT_EQ(turn(120), 0);
  });
}

// As long as there can be: a text that is cut off is read there.
TEST_F(NativeLists, ATipStaysForHalfAMinute) {
  Visit([&] {
    std::vector<LRESULT> times;
    const HWND window = GetAncestor(Native("labName"), GA_ROOT);
    HWND tip = nullptr;
    while ((tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
      if (GetWindow(tip, GW_OWNER) == window) times.push_back(Ask(tip, TTM_GETDELAYTIME, TTDT_AUTOPOP));
    }
    EXPECT_EQ(times, std::vector<LRESULT>{32'767});
  });
}

// --- frames ----------------------------------------------------------------------------------------

TEST_F(NativeLists, ACaptionThatAFrameCutsOffStandsInItsTip) {
  Visit([&] {
    const auto frame = form->Get<toolkit::Frame>("frmInner");
    const HWND native = Native("frmInner");
    frame->SetCaption("住址");
    EXPECT_EQ(TipOf(native), L"");
    frame->SetCaption("一二三四五六七八九十一二三四五六七八九十");
    EXPECT_EQ(TipOf(native), L"一二三四五六七八九十一二三四五六七八九十");
    frame->Move({3900, 120, 9000, 1200});
    EXPECT_EQ(TipOf(native), L"") << "there is room for all of it";
  });
}

// Beside the caption of a frame with a border its edge shows: of 200 pixels 174 are the caption's.
TEST_F(NativeLists, AFrameHasAnotherTipOnlyWhereItsCaptionIsCutOff) {
  Visit([&] {
    const auto frame = form->Get<toolkit::Frame>("frmInner");
    const HWND native = Native("frmInner");
    const win32::Look look(96);
    const auto caption = [&](int most) {
      std::string text = "一";
      while (look.TextWidth(look.FontOf(frame->GetFont()), windows::Wide(text + "一")) <= most) text += "一";
      return text;
    };
    frame->SetAccessibleName("住址");
    frame->SetToolTipText("说明");
    frame->SetCaption(caption(174));
    EXPECT_EQ(TipOf(native), L"说明");
    frame->SetCaption(caption(174) + "一");
    EXPECT_EQ(TipOf(native), windows::Wide(caption(174) + "一"));
    frame->SetBorder(false);
    EXPECT_EQ(TipOf(native), L"说明");
    frame->SetCaption(caption(200));
    EXPECT_EQ(TipOf(native), L"说明");
    frame->SetCaption(caption(200) + "一");
    EXPECT_EQ(TipOf(native), windows::Wide(caption(200) + "一"));
  });
}

// --- screen readers --------------------------------------------------------------------------------

TEST_F(NativeLists, AListSaysItsRows) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(3);
    tests::RunMessages();
    EXPECT_EQ(Spoken(Native("list")), "代码列表");
    EXPECT_EQ(Spoken(Native("list"), 1), "第0行");
    EXPECT_EQ(Spoken(Native("list"), 3), "第2行");
    EXPECT_EQ(Spoken(Native("list"), 4), "");
  });
}

TEST_F(NativeLists, PartsOfControlsSayWhatTheyAre) {
  Pick([&] { EXPECT_EQ(Spoken(Part("Tab1", WC_TABCONTROLW)), "查询方式"); });
  Visit([&] {
    EXPECT_EQ(Spoken(Part("VMenu1", L"LISTBOX")), "信息集");
    form->Get<toolkit::VerticalMenu>("VMenu1")->SetAccessibleName("菜单");
    EXPECT_EQ(Spoken(Part("VMenu1", L"LISTBOX")), "菜单");
    long role = 0;
    EXPECT_EQ(Spoken(Mouse().ToolbarButton("Delete"), CHILDID_SELF, &role), "删除");
    EXPECT_EQ(role, ROLE_SYSTEM_PUSHBUTTON);
  });
}

TEST_F(NativeLists, AToolbarButtonIsClickedByAScreenReader) {
  Visit([&] {
    On(form->Get<toolkit::Toolbar>("TbMain")->ButtonClick,
       [&](toolkit::ToolbarButton& button) { log.push_back(button.Key()); });
    PressByName(Mouse().ToolbarButton("Delete"));
    EXPECT_EQ(TakeLog(), Log{"Delete"});
  });
}

}  // namespace
}  // namespace dossierkit::views
