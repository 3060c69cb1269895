// The native record list: rows from outside, columns, scrolling, and what is painted.
#include "adapters/windows/texts.h"
#include "tests/win32/native_test.h"

namespace dossierkit::views {
namespace {

class NativeGrid : public NativeTest {
 protected:
  std::shared_ptr<toolkit::DataGrid> Grid() { return form->Get<toolkit::DataGrid>("DGItems"); }
  HWND List() { return Native("DGItems"); }
  void ChooseFromOutside(int row) {
    LVITEMW state = {};
    state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Ask(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), &state);
  }
  int MiddleOf(int row) {
    RECT place = {LVIR_BOUNDS, 0, 0, 0};
    Ask(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), &place);
    return static_cast<int>(place.top + place.bottom) / 2;
  }
  // Many rows of one wide column, in place of the five.
  void FillWith(int rows) {
    ado::Snapshot data;
    data.AddColumn({"院校", ado::ColumnKind::kText, {}});
    for (int i = 1; i <= rows; ++i) data.AppendText("院校" + std::to_string(i));
    many = std::make_shared<ado::Recordset>(std::move(data));
    Grid()->SetDataSource(many);
    Grid()->SetColumnWidth(0, 9000);
  }
  std::shared_ptr<ado::Recordset> many;
};

TEST_F(NativeGrid, ShowsTheTextsOfItsRecordset) {
  Visit([&] {
    EXPECT_EQ(Ask(List(), LVM_GETITEMCOUNT), 5);
    wchar_t text[40] = {};
    LVITEMW item = {};
    item.iSubItem = 1;
    item.pszText = static_cast<wchar_t*>(text);
    item.cchTextMax = 40;
    Ask(List(), LVM_GETITEMTEXTW, 3, &item);
    EXPECT_STREQ(item.pszText, L"院校4");
    HDITEMW head = {};
    head.mask = HDI_TEXT;
    head.pszText = static_cast<wchar_t*>(text);
    head.cchTextMax = 40;
    Ask(reinterpret_cast<HWND>(Ask(List(), LVM_GETHEADER)), HDM_GETITEMW, 1, &head);
    EXPECT_STREQ(head.pszText, L"院校");
  });
}

TEST_F(NativeGrid, ARowFromOutsideMovesTheCursorOrGoesBack) {
  Visit([&] {
    ChooseFromOutside(3);
    EXPECT_EQ(form->rows->AbsolutePosition(), 4);
    EXPECT_EQ(driver->Focus(), "DGItems");
    hooks.push_back(form->rows->WillMove.Subscribe(
        [](std::int32_t, std::int32_t& status, ado::Recordset&) { status = ado::kStatusCancel; }));
    ChooseFromOutside(1);
    EXPECT_EQ(form->rows->AbsolutePosition(), 4);
    EXPECT_EQ(driver->Row("DGItems"), 3);
  });
}

TEST_F(NativeGrid, ARowIsChosenBehindTheLastColumnAsWell) {
  Visit([&] {
    Grid()->SetColumnWidth(0, 300);
    Grid()->SetColumnWidth(1, 300);
    tests::ClickAt(List(), {150, MiddleOf(2)});
    EXPECT_EQ(form->rows->AbsolutePosition(), 3);
    tests::ClickAt(List(), {150, MiddleOf(4) + 40});
    EXPECT_EQ(form->rows->AbsolutePosition(), 3) << "below the last row";
  });
}

TEST_F(NativeGrid, AWidthFromTheUserComesToTheModel) {
  Visit([&] {
    On(Grid()->ColResize, [&] { log.push_back("resized"); });
    EXPECT_EQ(Ask(List(), LVM_GETCOLUMNWIDTH, 0), 133) << "2000 twips";
    Ask(List(), LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(80, 0));
    EXPECT_EQ(TakeLog(), Log{"resized"});
    EXPECT_EQ(Grid()->ColumnWidth(0), 1200.0F);
    Grid()->SetColumnWidth(0, 900);
    EXPECT_EQ(Ask(List(), LVM_GETCOLUMNWIDTH, 0), 60);
    EXPECT_EQ(TakeLog(), Log{}) << "the program's own";
  });
}

TEST_F(NativeGrid, AColumnOfNoWidthStaysHidden) {
  Visit([&] {
    Grid()->SetColumnWidth(0, 0);
    EXPECT_EQ(Ask(List(), LVM_GETCOLUMNWIDTH, 0), 0);
    // The line behind it is the line of the window's edge: nothing may be drawn open there.
    NMHEADERW begin = {};
    begin.hdr.hwndFrom = reinterpret_cast<HWND>(Ask(List(), LVM_GETHEADER));
    begin.hdr.code = static_cast<UINT>(HDN_BEGINTRACKW);
    EXPECT_EQ(Ask(List(), WM_NOTIFY, 0, &begin), TRUE);
    begin.iItem = 1;
    EXPECT_EQ(Ask(List(), WM_NOTIFY, 0, &begin), FALSE);
  });
}

TEST_F(NativeGrid, ChoosingARowKeepsWhatWasScrolledToSideways) {
  Visit([&] {
    FillWith(100);
    user.ClickRow(1);
    user.Press(toolkit::kKeyRight);
    user.Press(toolkit::kKeyRight);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 40);
    user.Press(toolkit::kKeyDown);
    EXPECT_EQ(many->AbsolutePosition(), 2);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 40);
    user.Press(toolkit::kKeyEnd);
    EXPECT_EQ(many->AbsolutePosition(), 100);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 40);
    EXPECT_GT(Ask(List(), LVM_GETTOPINDEX), 80) << "it is in sight";
    user.Press(toolkit::kKeyLeft);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 20);
  });
}

// Windows scrolls to the first column of a row that is to be seen, where Wine leaves the columns alone.
class FirstColumnInSight : public NativeGrid {
 protected:
  static LRESULT CALLBACK Answer(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
    const LRESULT answer = CallWindowProcW(Before(), window, id, wide, low);
    if (id == LVM_ENSUREVISIBLE)
      CallWindowProcW(Before(), window, LVM_SCROLL, static_cast<WPARAM>(-GetScrollPos(window, SB_HORZ)), 0);
    return answer;
  }
};

TEST_F(FirstColumnInSight, IsScrolledBackToWhereTheUserWas) {
  Visit([&] {
    FillWith(100);
    user.ClickRow(1);
    AnswerBefore(List(), Answer);
    user.Press(toolkit::kKeyRight);
    user.Press(toolkit::kKeyRight);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 40);
    user.Press(toolkit::kKeyDown);
    EXPECT_EQ(many->AbsolutePosition(), 2);
    EXPECT_EQ(GetScrollPos(List(), SB_HORZ), 40);
  });
}

TEST_F(NativeGrid, OtherRowsAreThoseOfTheNewRecordset) {
  Visit([&] {
    FillWith(3);
    EXPECT_EQ(Ask(List(), LVM_GETITEMCOUNT), 3);
    const HWND head = reinterpret_cast<HWND>(Ask(List(), LVM_GETHEADER));
    EXPECT_EQ(Ask(head, HDM_GETITEMCOUNT), 1);
    EXPECT_EQ(driver->Row("DGItems"), 0);
    Grid()->SetDataSource(nullptr);
    EXPECT_EQ(Ask(List(), LVM_GETITEMCOUNT), 0);
    EXPECT_EQ(driver->Row("DGItems"), -1);
  });
}

// A page that a handler makes.
TEST_F(NativeGrid, APageAndItsListComeWholeOnceTheEventHasEnded) {
  Visit([&] {
    form->RemovePage();
    form->page = form->Controls().Make<SamplePage>();
    form->page->Move({1900, 500, 7300, 5400});
    Grid()->SetDataSource(form->rows);
    Grid()->SetColumnWidth(0, 900);
    Grid()->SetColumnWidth(1, 0);
    form->rows->SetAbsolutePosition(4);
    const auto* page = static_cast<const win32::NativeView*>(form->page->GetView());
    const HWND list = static_cast<const win32::NativeView*>(Grid()->GetView())->Handle();
    const HWND head = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    EXPECT_FALSE(IsWindowVisible(page->Handle()));
    EXPECT_EQ(SendMessageW(head, HDM_GETITEMCOUNT, 0, 0), 0);
    tests::RunMessages();
    EXPECT_TRUE(IsWindowVisible(page->Handle()));
    EXPECT_EQ(SendMessageW(head, HDM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(Ask(list, LVM_GETCOLUMNWIDTH, 0), 60);
    EXPECT_EQ(Ask(list, LVM_GETCOLUMNWIDTH, 1), 0);
    EXPECT_EQ(Ask(list, LVM_GETITEMCOUNT), 5);
    EXPECT_EQ(driver->Row("DGItems"), 3);
    user.Click("txtName");
    EXPECT_EQ(GetFocus(), Native("txtName"));
  });
}

TEST_F(NativeGrid, APageThatGoesBeforeItCameIsForgotten) {
  Visit([&] {
    form->RemovePage();
    form->page = form->Controls().Make<SamplePage>();
    form->RemovePage();
    tests::RunMessages();
    EXPECT_TRUE(form->Shown());
  });
}

TEST_F(NativeGrid, AnotherPageShowsFromItsUpperLeftCorner) {
  Visit([&] {
    SetWindowPos(Native("frmSample"), nullptr, 0, 0, 360, 240, SWP_NOMOVE | SWP_NOZORDER);
    form->Get("cmdPhoto")->SetFocus();
    const HWND content = GetParent(Native("TbMain"));
    const auto corner = [content] {
      POINT place = {0, 0};
      MapWindowPoints(content, GetParent(content), &place, 1);
      return std::pair(place.x, place.y);
    };
    EXPECT_NE(corner(), std::pair(0L, 0L));
    form->RemovePage();
    form->page = form->Controls().Make<SamplePage>();
    EXPECT_EQ(corner(), std::pair(0L, 0L));
  });
}

// The page closes its recordset while the list still stands.
TEST_F(NativeGrid, ARecordsetThatWasClosedShowsNothingMore) {
  Visit([&] {
    form->rows->Close();
    InvalidateRect(List(), nullptr, TRUE);
    UpdateWindow(List());
    user.Press(toolkit::kKeyDown);
    tests::ClickAt(List(), {20, 40});
    EXPECT_TRUE(form->Shown());
  });
}

TEST_F(NativeGrid, TheChosenRowIsDarkWithTheKeyboardPaleWithoutAndPlainWhereItShowsNone) {
  Visit([&] {
    user.ClickRow(2);
    const int x = 60;
    const int y = MiddleOf(1) - 8;
    EXPECT_EQ(ColorAt(List(), x, y), RGB(0x2B, 0x6C, 0xB0));
    user.Click("txtName");
    EXPECT_EQ(ColorAt(List(), x, y), RGB(0xD3, 0xE4, 0xF7));
    EXPECT_EQ(ColorAt(List(), 1, y), RGB(0x2B, 0x6C, 0xB0)) << "the bar";
    Grid()->SetShowsRow(false);
    EXPECT_EQ(driver->Row("DGItems"), -1);
    EXPECT_EQ(ColorAt(List(), x, y), RGB(0xF7, 0xF9, 0xFC)) << "every second row";
    EXPECT_EQ(ColorAt(List(), x, MiddleOf(0) - 8), RGB(0xFF, 0xFF, 0xFF));
    Grid()->SetShowsRow(true);
    EXPECT_EQ(driver->Row("DGItems"), 1);
  });
}

}  // namespace
}  // namespace dossierkit::views
