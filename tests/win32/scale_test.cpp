// A native window that comes to a screen of another resolution: it follows, and nothing of the user's is
// lost.
#include "tests/win32/native_test.h"
#include "tests/win32/picture.h"

namespace dossierkit::views {
namespace {

using tests::Difference;
using tests::PictureOf;
using tests::RunMessages;
using tests::ToScreen;

class NativeScale : public NativeTest {
 protected:
  HWND Window() { return Native("frmSample"); }
  // Where a control stands in its parent.
  toolkit::Rect PlaceOf(const std::string& name) {
    const HWND window = Native(name);
    RECT place;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return {static_cast<int>(place.left), static_cast<int>(place.top),
            static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
  }
  static toolkit::Size ClientOf(HWND window) {
    RECT place;
    GetClientRect(window, &place);
    return {static_cast<int>(place.right), static_cast<int>(place.bottom)};
  }
  static long FontHeight(HWND window) {
    LOGFONTW font = {};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfHeight;
  }
  static int HeightOfRow(HWND grid) {
    RECT row = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(grid, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    return static_cast<int>(row.bottom - row.top);
  }
  static int LineHeight(int dpi) {
    const win32::Look look(dpi);
    return look.LineHeight(look.ProgramFont());
  }
  // The window of the tool tips of a window.
  static HWND TipsOf(HWND window) {
    for (HWND tips = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr); tips;
         tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) {
      if (GetWindow(tips, GW_OWNER) == window) return tips;
    }
    return nullptr;
  }
};

TEST_F(NativeScale, EverythingTakesTheSizesOfTheNewScreenAndGoesBack) {
  Visit([&] {
    RunMessages();
    const auto before = PictureOf(Window());
    EXPECT_EQ(ClientOf(Window()), (toolkit::Size{620, 400}));
    EXPECT_EQ(PlaceOf("txtName"), (toolkit::Rect{80, 8, 160, 22}));

    ToScreen(Window(), 144, {40, 30});
    RECT place;
    GetWindowRect(Window(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 30);
    EXPECT_EQ(ClientOf(Window()), (toolkit::Size{930, 600}));
    EXPECT_EQ(PlaceOf("TbMain"), (toolkit::Rect{0, 0, 930, 45}));
    EXPECT_EQ(PlaceOf("frmCtrl"), (toolkit::Rect{190, 50, 730, 540}));
    EXPECT_EQ(PlaceOf("page"), (toolkit::Rect{0, 0, 730, 540}));
    EXPECT_EQ(PlaceOf("txtName"), (toolkit::Rect{120, 12, 240, 33}));
    EXPECT_EQ(PlaceOf("txtInner"), (toolkit::Rect{12, 36, 240, 33})) << "in a frame";
    EXPECT_EQ(PlaceOf("DGItems"), (toolkit::Rect{390, 150, 300, 270}));
    for (const char* name : {"txtName", "mskDate", "txtNote", "chkFlag", "cmdPhoto", "DGItems"})
      EXPECT_EQ(FontHeight(Native(name)), -18) << name;
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(Ask(Native("DGItems"), LVM_GETIMAGELIST, LVSIL_SMALL)),
                          &width, &height);
    EXPECT_EQ(height, LineHeight(144) + 12) << "a row is as high as the picture that it has not";
    EXPECT_EQ(Ask(Part("VMenu1", L"LISTBOX"), LB_GETITEMHEIGHT), 57);
    EXPECT_EQ(FontHeight(Part("VMenu1", L"LISTBOX")), -18);
    EXPECT_EQ(Ask(TipsOf(Window()), TTM_GETMAXTIPWIDTH), 720);
    EXPECT_EQ(FontHeight(TipsOf(Window())), -18);
    EXPECT_EQ(form->Place(), (toolkit::Rect{0, 0, 9420, 6405})) << "the model's are twips";

    ToScreen(Window(), 96);
    EXPECT_EQ(PlaceOf("txtName"), (toolkit::Rect{80, 8, 160, 22}));
    EXPECT_EQ(FontHeight(Native("txtName")), -12);
    EXPECT_EQ(Difference(PictureOf(Window()), before), "");
  });
}

TEST_F(NativeScale, WhatTheUserTypedChoseAndScrolledToStays) {
  Visit([&] {
    std::string note;
    for (int line = 1; line <= 30; ++line) note += "第" + std::to_string(line) + "行\r\n";
    form->Get<toolkit::TextBox>("txtNote")->SetText(note);
    user.Click("txtName");
    user.Type("abcdef");
    form->Get<toolkit::TextBox>("txtName")->Select(2, 3);
    const HWND notes = Native("txtNote");
    Ask(notes, EM_LINESCROLL, 0, 12);
    ASSERT_EQ(Ask(notes, EM_GETFIRSTVISIBLELINE), 12);
    RunMessages();
    const auto before = PictureOf(Window());
    for (const int dpi : {144, 120, 192, 96}) {
      ToScreen(Window(), dpi);
      EXPECT_EQ(driver->Focus(), "txtName") << dpi;
      EXPECT_EQ(driver->Text("txtName"), "abcdef") << dpi;
      EXPECT_EQ(driver->Selected("txtName"), (toolkit::Selection{2, 3})) << dpi;
      EXPECT_EQ(Ask(notes, EM_GETFIRSTVISIBLELINE), 12) << dpi;
      EXPECT_EQ(form->Get<toolkit::TextBox>("txtNote")->Text(), note) << dpi;
    }
    EXPECT_EQ(Difference(PictureOf(Window()), before), "");
  });
}

TEST_F(NativeScale, AListStaysAtTheRowAndTheColumnThatItWasScrolledTo) {
  Visit([&] {
    ado::Snapshot data;
    data.AddColumn({"院校", ado::ColumnKind::kText, {}});
    for (int i = 1; i <= 100; ++i) data.AppendText("院校" + std::to_string(i));
    const auto many = std::make_shared<ado::Recordset>(std::move(data));
    const auto grid = form->Get<toolkit::DataGrid>("DGItems");
    grid->SetDataSource(many);
    grid->SetColumnWidth(0, 9000);
    const HWND list = Native("DGItems");
    RunMessages();
    Ask(list, LVM_SCROLL, 100, 40 * HeightOfRow(list));
    ASSERT_EQ(Ask(list, LVM_GETTOPINDEX), 40);
    ASSERT_EQ(GetScrollPos(list, SB_HORZ), 100);
    const auto before = PictureOf(Window());
    ToScreen(Window(), 144);
    EXPECT_EQ(Ask(list, LVM_GETCOLUMNWIDTH), 900);
    EXPECT_EQ(Ask(list, LVM_GETTOPINDEX), 40);
    EXPECT_EQ(GetScrollPos(list, SB_HORZ), 150);
    EXPECT_EQ(grid->ColumnWidth(0), 9000) << "the user gave it no other";
    ToScreen(Window(), 96);
    EXPECT_EQ(Ask(list, LVM_GETTOPINDEX), 40);
    EXPECT_EQ(GetScrollPos(list, SB_HORZ), 100);
    EXPECT_EQ(Difference(PictureOf(Window()), before), "");
  });
}

// Also where what has the keyboard is out of sight.
TEST_F(NativeScale, AWindowStaysWhereItsPartsWereScrolledTo) {
  Visit([&] {
    SetWindowPos(Window(), nullptr, 0, 0, 360, 240, SWP_NOMOVE | SWP_NOZORDER);
    user.Click("txtName");
    RunMessages();
    const HWND content = GetParent(Native("TbMain"));
    const HWND area = GetParent(content);
    for (const UINT bar : {WM_VSCROLL, WM_HSCROLL}) Ask(area, bar, SB_TOP);
    for (int i = 0; i < 6; ++i) Ask(area, WM_VSCROLL, SB_LINEDOWN);
    for (int i = 0; i < 2; ++i) Ask(area, WM_HSCROLL, SB_LINEDOWN);
    const auto offset = [&] {
      POINT corner = {0, 0};
      MapWindowPoints(content, area, &corner, 1);
      return std::pair(-corner.x, -corner.y);
    };
    ASSERT_EQ(offset(), std::pair(40L, 120L));
    const auto before = PictureOf(Window());
    ToScreen(Window(), 144);
    EXPECT_EQ(offset(), std::pair(60L, 180L));
    EXPECT_EQ(ClientOf(content), (toolkit::Size{930, 600}));
    ToScreen(Window(), 96);
    EXPECT_EQ(offset(), std::pair(40L, 120L));
    EXPECT_EQ(Difference(PictureOf(Window()), before), "");
  });
}

TEST_F(NativeScale, ItsClientAreaGrowsAsWhatStandsInItAndItsFrameAsTheScreensWantsIt) {
  Visit([&] {
    RECT wanted = {0, 0, 930, 600};
    AdjustWindowRectExForDpi(&wanted, static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE)), FALSE,
                             WS_EX_CONTROLPARENT, 144);
    SIZE size = {1, 1};
    EXPECT_TRUE(Ask(Window(), WM_GETDPISCALEDSIZE, 144, &size));
    EXPECT_EQ(size.cx, wanted.right - wanted.left);
    EXPECT_EQ(size.cy, wanted.bottom - wanted.top);
    // It opens for the screen on which it will stand: as soon as it comes there Windows says so.
    RECT before;
    GetWindowRect(Window(), &before);
    RECT other = {5, 6, 700, 800};
    EXPECT_EQ(Ask(Window(), WM_DPICHANGED, MAKELONG(96, 96), &other), 0);
    RECT now;
    GetWindowRect(Window(), &now);
    EXPECT_TRUE(EqualRect(&now, &before));
  });
}

TEST_F(NativeScale, TheModelIsToldOfRoomThatTheNewScreenGives) {
  Visit([&] {
    RECT place = {0, 0, 1230, 900};
    AdjustWindowRectEx(&place, static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE)), FALSE,
                       WS_EX_CONTROLPARENT);
    Ask(Window(), WM_DPICHANGED, MAKELONG(144, 144), &place);
    EXPECT_EQ(ClientOf(Window()), (toolkit::Size{1230, 900}));
    EXPECT_EQ(form->Place().width, 12300 + 120);
    EXPECT_EQ(form->Place().height, 9000 + 405);
  });
}

TEST_F(NativeScale, AWindowAboveOpensAsTheOneBelowItLooksAndFollowsAlone) {
  Visit([&] {
    const HWND below = Window();
    ToScreen(below, 144);
    tests::Picture opened;
    driver->Play(*picker, [&] {
      picker->FillTree();
      RunMessages();
      const HWND window = Native("frmPicker");
      // Its frame is smaller than the screen would have it.
      EXPECT_EQ(ClientOf(window).width, 506) << "337 at 96";
      EXPECT_GE(ClientOf(window).height, 656) << "437 at 96";
      tests::GiveClient(window, 506, 656);
      EXPECT_EQ(FontHeight(Native("tree")), -18);
      EXPECT_EQ(FontHeight(Part("Tab1", WC_TABCONTROLW)), -18);
      EXPECT_EQ(Ask(Native("tree"), TVM_GETITEMHEIGHT), LineHeight(144) + 8);
      EXPECT_EQ(Ask(Native("tree"), TVM_GETINDENT), 24);
      opened = PictureOf(window);
      ToScreen(window, 96);
      EXPECT_EQ(FontHeight(Native("tree")), -12);
      EXPECT_EQ(Ask(Native("tree"), TVM_GETITEMHEIGHT), LineHeight(96) + 5);
    });
    EXPECT_EQ(FontHeight(Native("txtName")), -18) << "the one below stays as it was";
    ToScreen(below, 96);
    driver->Play(*picker, [&] {
      picker->FillTree();
      RunMessages();
      const HWND window = Native("frmPicker");
      const auto before = PictureOf(window);
      ToScreen(window, 144);
      EXPECT_EQ(Difference(PictureOf(window), opened), "") << "whichever way it came there";
      ToScreen(window, 96);
      EXPECT_EQ(Difference(PictureOf(window), before), "");
    });
  });
}

TEST_F(NativeScale, ListsAndTreesOfManyRowsStayWhereTheyWereScrolledTo) {
  Pick([&] {
    auto& nodes = picker->tree->Nodes();
    for (int i = 0; i < 100; ++i) nodes.Add("G" + std::to_string(i), std::string(90, 'w'));
    RunMessages();
    const HWND window = Native("frmPicker");
    const HWND tree = Native("tree");
    const auto second = TreeView_GetNextVisible(tree, TreeView_GetRoot(tree));
    Ask(tree, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, second);
    Ask(tree, WM_HSCROLL, MAKELONG(SB_THUMBPOSITION, 40));
    ASSERT_EQ(GetScrollPos(tree, SB_HORZ), 40);
    const auto with_tree = PictureOf(window);
    ToScreen(window, 144);
    EXPECT_EQ(TreeView_GetFirstVisible(tree), second);
    EXPECT_EQ(GetScrollPos(tree, SB_HORZ), 60);
    ToScreen(window, 96);
    EXPECT_EQ(Difference(PictureOf(window), with_tree), "");

    picker->strip->SetTab(1);
    picker->FillList(100);
    RunMessages();
    const HWND list = Native("list");
    user.ClickListRow("list", 50);
    Ask(list, LB_SETTOPINDEX, 45);
    const auto with_list = PictureOf(window);
    ToScreen(window, 144);
    EXPECT_EQ(Ask(list, LB_GETITEMHEIGHT), LineHeight(144) + 6);
    EXPECT_EQ(Ask(list, LB_GETTOPINDEX), 45);
    EXPECT_EQ(Ask(list, LB_GETCURSEL), 50);
    EXPECT_EQ(picker->list->RowAt(150, 15), 45);
    ToScreen(window, 96);
    EXPECT_EQ(Difference(PictureOf(window), with_list), "");
  });
}

// Windows may scroll to the beginning with another font, where Wine stays.
class ScrollsUp : public NativeScale {
 protected:
  static LRESULT CALLBACK Receive(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
    const LRESULT result = CallWindowProcW(Before(), window, id, wide, low);
    if (id == WM_SETFONT) {
      SendMessageW(window, EM_LINESCROLL, 0, -1000);
      SendMessageW(window, LB_SETTOPINDEX, 0, 0);
      if (const HTREEITEM root = TreeView_GetRoot(window))
        SendMessageW(window, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(root));
    }
    return result;
  }
};

TEST_F(ScrollsUp, ATextStaysAtTheCharacterWhereItsFirstLineBegan) {
  Visit([&] {
    std::string note;
    for (int i = 0; i < 600; ++i) note += "一";
    form->Get<toolkit::TextBox>("txtNote")->SetText(note);
    const HWND notes = Native("txtNote");
    Ask(notes, EM_LINESCROLL, 0, 12);
    const LRESULT first = Ask(notes, EM_LINEINDEX, 12);
    AnswerBefore(notes, Receive);
    for (const int dpi : {144, 192, 96}) {
      ToScreen(Window(), dpi);
      const LRESULT line = Ask(notes, EM_GETFIRSTVISIBLELINE);
      EXPECT_LE(Ask(notes, EM_LINEINDEX, static_cast<WPARAM>(line)), first) << dpi;
      EXPECT_GT(Ask(notes, EM_LINEINDEX, static_cast<WPARAM>(line) + 1), first) << dpi;
    }
  });
}

TEST_F(ScrollsUp, ListsAndTreesStayAtTheirFirstRow) {
  Pick([&] {
    for (int i = 0; i < 100; ++i) picker->tree->Nodes().Add("G" + std::to_string(i), "节点");
    RunMessages();
    const HWND window = Native("frmPicker");
    const HWND tree = Native("tree");
    auto item = TreeView_GetRoot(tree);
    for (int i = 0; i < 20; ++i) item = TreeView_GetNextVisible(tree, item);
    Ask(tree, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, item);
    AnswerBefore(tree, Receive);
    ToScreen(window, 144);
    EXPECT_EQ(TreeView_GetFirstVisible(tree), item);
    picker->strip->SetTab(1);
    picker->FillList(100);
    RunMessages();
    const HWND list = Native("list");
    Ask(list, LB_SETTOPINDEX, 45);
    AnswerBefore(list, Receive);
    ToScreen(window, 96);
    EXPECT_EQ(Ask(list, LB_GETTOPINDEX), 45);
  });
}

// Windows keeps the width of a tab until its text is set.
class KeepsWidths : public NativeScale {
 protected:
  static LRESULT CALLBACK Receive(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
    if (id == TCM_SETPADDING) Pending() = static_cast<int>(LOWORD(low));
    if (id == TCM_SETITEMW) Padding() = Pending();
    return CallWindowProcW(Before(), window, id, wide, low);
  }
  static int& Pending() {
    static int pending = 0;
    return pending;
  }
  static int& Padding() {
    static int padding = 0;
    return padding;
  }
};

TEST_F(KeepsWidths, ATabHasTheRoomOfTheNewScreen) {
  Pick([&] {
    AnswerBefore(Part("Tab1", WC_TABCONTROLW), Receive);
    ToScreen(Native("frmPicker"), 144);
    EXPECT_EQ(Padding(), 18);
    ToScreen(Native("frmPicker"), 96);
    EXPECT_EQ(Padding(), 12);
  });
}

TEST_F(NativeScale, AnEdgeGrowsAlsoAroundABoxThatDoesNot) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->list->SetContainer(*picker);
    picker->list->Move({0, 0, 300, 300});
    RunMessages();
    ToScreen(Native("frmPicker"), 119);
    EXPECT_EQ(PlaceOf("list"), (toolkit::Rect{0, 0, 25, 25}));
    EXPECT_EQ(ClientOf(Native("list")), (toolkit::Size{21, 21}));
    ToScreen(Native("frmPicker"), 120);
    EXPECT_EQ(PlaceOf("list"), (toolkit::Rect{0, 0, 25, 25}));
    EXPECT_EQ(ClientOf(Native("list")), (toolkit::Size{19, 19}));
  });
}

TEST_F(NativeScale, AMessageOverAWindowHasItsScale) {
  Visit([&] {
    ToScreen(Window(), 144);
    long height = 0;
    driver->Script().WillAnswer(toolkit::kAnswerYes);
    driver->Script().on_message = [&](const headless::Message&) { height = FontHeight(GetFocus()); };
    driver->Desktop().MsgBox("保存吗？", toolkit::kYesNo);
    EXPECT_EQ(height, -18);
  });
}

}  // namespace
}  // namespace dossierkit::views
