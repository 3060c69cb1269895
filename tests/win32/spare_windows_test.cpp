// What a page takes over from the windows of the one before it, and what it must not.
#include <algorithm>
#include <set>

#include "tests/win32/native_test.h"

namespace dossierkit::views {
namespace {

// Of a few parts.
class ShortPage : public toolkit::UserControl {
 public:
  ShortPage() : UserControl("short") {
    Controls().Make<toolkit::Control>(toolkit::Kind::kLine, "linOnly")->Move({300, 1200, 1500, 30});
    auto label = Controls().Make<toolkit::Label>("labOnly");
    label->SetCaption("没有记录");
    label->Move({300, 600, 1500, 300});
  }
};

// A box where the sample page has one, with larger letters.
class LargePage : public toolkit::UserControl {
 public:
  LargePage() : UserControl("large") {
    auto box = Controls().Make<toolkit::TextBox>("txtLarge");
    box->SetFont({.size = 12});
    box->Move({1200, 120, 2400, 330});
  }
};

// It still does something while it is removed.
class LeavingPage : public SamplePage {
 public:
  std::function<void()> on_terminate;

 protected:
  void UserControl_Terminate() override {
    if (on_terminate) on_terminate();
  }
};

class SpareWindows : public NativeTest {
 protected:
  static HWND WindowOf(const toolkit::Control& control) {
    return static_cast<const win32::NativeView*>(control.GetView())->Handle();
  }
  template <typename Page = SamplePage>
  std::shared_ptr<Page> NewPage() {
    auto page = form->Controls().Make<Page>();
    page->SetContainer(*form->Get("frmCtrl"));
    page->Move({0, 0, 7300, 5400});
    return page;
  }
  void NextPage() {
    form->RemovePage();
    form->page = NewPage();
    tests::RunMessages();
  }
  // Those of which all are alike.
  std::set<HWND> Windows(const std::vector<std::string>& names) {
    std::set<HWND> windows;
    for (const std::string& name : names) windows.insert(Native(name));
    return windows;
  }
  static int VisibleIn(HWND window) {
    int visible = 0;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      if (IsWindowVisible(child)) ++visible;
    }
    return visible;
  }
  static std::wstring TextOf(HWND window) {
    wchar_t text[100] = {};
    GetWindowTextW(window, text, 100);
    return text;
  }
};

TEST_F(SpareWindows, APageTakesThePanesAndTheBoxesOfOneLine) {
  Visit([&] {
    const std::vector<std::string> panes = {"page", "labName", "frmInner", "txtInner"};
    const std::vector<std::string> boxes = {"txtName", "txtCode", "mskDate"};
    const std::set<HWND> panes_before = Windows(panes);
    const std::set<HWND> boxes_before = Windows(boxes);
    const std::vector<HWND> others = {Native("txtNote"), Native("chkFlag"), Native("cmdPhoto"),
                                      Native("DGItems")};
    form->RemovePage();
    for (const HWND other : others) EXPECT_FALSE(IsWindow(other));
    form->page = NewPage();
    tests::RunMessages();
    EXPECT_EQ(Windows(panes), panes_before);
    EXPECT_EQ(Windows(boxes), boxes_before);
    EXPECT_EQ(VisibleIn(Native("page")), 9);
    EXPECT_EQ(VisibleIn(Native("frmInner")), 1);
  });
}

TEST_F(SpareWindows, ABoxHasNothingOfTheFormerOne) {
  Visit([&] {
    for (const std::string name : {"txtName", "txtCode"}) {
      auto box = form->Get<toolkit::TextBox>(name);
      user.Click(name);
      user.Type("abcdef");
      user.Press(toolkit::kKeyHome, toolkit::kShift);
      box->SetToolTipText("提示");
    }
    user.Click("txtName");
    user.Press(toolkit::kKeyHome);
    for (int i = 0; i < 6; ++i) user.Press(toolkit::kKeyDelete);
    ASSERT_EQ(TextOf(Native("txtName")), L"");
    form->Get("txtName")->SetEnabled(false);
    form->Get("txtCode")->SetVisible(false);
    NextPage();
    for (const std::string name : {"txtName", "txtCode", "mskDate"}) {
      const HWND box = Native(name);
      EXPECT_TRUE(IsWindowEnabled(box)) << name;
      EXPECT_TRUE(IsWindowVisible(box)) << name;
      EXPECT_EQ(Ask(box, EM_CANUNDO), FALSE) << name;
      EXPECT_EQ(Ask(box, EM_GETSEL), 0) << name;
      EXPECT_EQ(TipOf(box), L"") << name;
      EXPECT_EQ(TextOf(box), name == "mskDate" ? L"____年__月" : L"") << name;
    }
    user.Click("txtCode");
    user.Type("新");
    EXPECT_EQ(form->Get<toolkit::TextBox>("txtCode")->Text(), "新");
    EXPECT_EQ(form->Get<toolkit::TextBox>("txtName")->Text(), "");
  });
}

TEST_F(SpareWindows, ABoxThatWasDisabledOnBothPagesStaysSo) {
  Visit([&] {
    form->Get("txtName")->SetEnabled(false);
    form->RemovePage();
    form->page = NewPage();
    form->Get("txtName")->SetEnabled(false);
    tests::RunMessages();
    EXPECT_FALSE(IsWindowEnabled(Native("txtName")));
    EXPECT_TRUE(IsWindowEnabled(Native("txtCode")));
  });
}

TEST_F(SpareWindows, WhatNobodyTakesIsHiddenUntilAPageNeedsIt) {
  Visit([&] {
    const HWND page = Native("page");
    form->RemovePage();
    const auto shorter = NewPage<ShortPage>();
    tests::RunMessages();
    EXPECT_EQ(WindowOf(*shorter), page);
    EXPECT_EQ(VisibleIn(page), 2);
    form->Controls().Remove(form->Controls().Count() - 1);
    form->page = NewPage();
    tests::RunMessages();
    EXPECT_EQ(Native("page"), page);
    EXPECT_EQ(VisibleIn(page), 9);
    EXPECT_EQ(VisibleIn(Native("frmInner")), 1);
  });
}

TEST_F(SpareWindows, APaneStandsWhereItsControlIsAndSaysWhatThatSays) {
  Visit([&] {
    form->RemovePage();
    const auto shorter = NewPage<ShortPage>();
    tests::RunMessages();
    const HWND label = WindowOf(*shorter->Controls().Find("labOnly"));
    const HWND line = WindowOf(*shorter->Controls().Find("linOnly"));
    EXPECT_EQ(TextOf(label), L"没有记录");
    EXPECT_EQ(Spoken(label), "没有记录");
    EXPECT_EQ(TextOf(line), L"");
    long role = 0;
    EXPECT_EQ(Spoken(line, CHILDID_SELF, &role), "");
    EXPECT_EQ(role, ROLE_SYSTEM_SEPARATOR);
    RECT place;
    GetWindowRect(label, &place);
    MapWindowPoints(nullptr, WindowOf(*shorter), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 20);
    EXPECT_EQ(place.top, 40);
    EXPECT_EQ(place.right, 120);
    EXPECT_EQ(place.bottom, 60);
  });
}

// A screen reader may keep what it asked for.
TEST_F(SpareWindows, WhatSpokeForAControlThatWentSaysNothingMore) {
  Visit([&] {
    IAccessible* former = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(Native("labName"), static_cast<DWORD>(OBJID_CLIENT),
                                         __uuidof(IAccessible), reinterpret_cast<void**>(&former)),
              S_OK);
    NextPage();
    VARIANT self;
    V_VT(&self) = VT_I4;
    V_I4(&self) = CHILDID_SELF;
    BSTR name = nullptr;
    EXPECT_EQ(former->get_accName(self, &name), S_FALSE);
    EXPECT_EQ(name, nullptr);
    former->Release();
    EXPECT_EQ(driver->Spoken("labName"), "姓名");
  });
}

TEST_F(SpareWindows, APageMovesOverIntoAnotherFrame) {
  Visit([&] {
    const HWND page = Native("page");
    const HWND area = GetParent(page);
    auto other = form->Controls().Make<toolkit::Frame>("frmOther");
    other->Move({2000, 600, 7000, 5000});
    form->RemovePage();
    form->page = NewPage();
    form->page->SetContainer(*other);
    tests::RunMessages();
    EXPECT_EQ(Native("page"), page);
    EXPECT_EQ(GetParent(page), Native("frmOther"));
    EXPECT_TRUE(IsWindowVisible(Native("txtInner")));
    NextPage();
    EXPECT_EQ(GetParent(Native("page")), area);
  });
}

TEST_F(SpareWindows, APageMovesOverIntoAnotherWindow) {
  Visit([&] {
    const HWND window = Native("page");
    form->RemovePage();
    driver->Play(*picker, [&] {
      const auto page = picker->Controls().Make<ShortPage>();
      tests::RunMessages();
      EXPECT_EQ(WindowOf(*page), window);
      EXPECT_EQ(GetAncestor(window, GA_ROOT), WindowOf(*picker));
      EXPECT_EQ(VisibleIn(window), 2);
    });
    EXPECT_FALSE(IsWindow(window));
    form->page = NewPage();
    tests::RunMessages();
    EXPECT_EQ(VisibleIn(Native("page")), 9);
  });
}

TEST_F(SpareWindows, APageWhoseFrameWentMeanwhileIsNotTaken) {
  Visit([&] {
    form->RemovePage();
    for (std::size_t i = form->Controls().Count(); i-- > 0;) {
      if (form->Controls().At(i)->Name() == "frmCtrl") form->Controls().Remove(i);
    }
    form->page = form->Controls().Make<SamplePage>();
    form->page->Move({1900, 500, 7300, 5400});
    tests::RunMessages();
    EXPECT_TRUE(IsWindowVisible(Native("page")));
    EXPECT_EQ(VisibleIn(Native("page")), 9);
  });
}

TEST_F(SpareWindows, OnePageIsKept) {
  Visit([&] {
    const HWND first = Native("page");
    const auto second = NewPage();
    tests::RunMessages();
    const HWND other = WindowOf(*second);
    form->RemovePage();
    EXPECT_TRUE(IsWindow(first));
    form->page = second;
    form->RemovePage();
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindow(other));
  });
}

TEST_F(SpareWindows, APageInWhichTheMouseIsHeldIsNotKept) {
  Visit([&] {
    const HWND page = Native("page");
    PostMessageW(Native("txtName"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    tests::RunMessages();
    ASSERT_EQ(GetCapture(), Native("txtName"));
    form->RemovePage();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(IsWindow(page));
  });
}

TEST_F(SpareWindows, APaneThatScrolledIsNotTaken) {
  Visit([&] {
    const auto label = form->Get<toolkit::Label>("labName");
    label->SetWordWrap(true);
    label->SetOpaque(true);
    label->SetCaption("一\n二\n三\n四");
    ASSERT_NE(GetWindowLongPtrW(Native("labName"), GWL_STYLE) & WS_VSCROLL, 0);
    form->RemovePage();
    const auto shorter = NewPage<ShortPage>();
    tests::RunMessages();
    for (const auto& control : shorter->Controls())
      EXPECT_EQ(GetWindowLongPtrW(WindowOf(*control), GWL_STYLE) & WS_VSCROLL, 0) << control->Name();
  });
}

// As in a box that is made for it.
TEST_F(SpareWindows, ALineStandsInTheMiddleOfABoxThatHadAnother) {
  Visit([&] {
    const HWND former = Native("txtName");
    form->RemovePage();
    const auto page = NewPage<LargePage>();
    tests::RunMessages();
    const auto box = page->Controls().Find("txtLarge");
    const auto& view = *static_cast<const win32::NativeView*>(box->GetView());
    ASSERT_EQ(view.Handle(), former);
    RECT outer;
    GetWindowRect(former, &outer);
    POINT inner = {0, 0};
    ClientToScreen(former, &inner);
    const int line = view.GetLook().LineHeight(view.GetLook().FontOf(box->GetFont()));
    const int ring = view.GetMetrics().Ring();
    EXPECT_EQ(inner.y - outer.top, ring + std::max(0, (22 - 2 * ring - line) / 2));
  });
}

// Its window goes once the message has ended.
TEST_F(SpareWindows, APageThatIsRemovedInsideItsOwnMessageIsNotKept) {
  Visit([&] {
    const HWND page = Native("page");
    const HWND button = Native("cmdPhoto");
    On(form->Get<toolkit::CommandButton>("cmdPhoto")->Click, [&] {
      for (int i = 0; i < 2; ++i) {
        form->RemovePage();
        form->page = NewPage();
        EXPECT_NE(WindowOf(*form->page), page);
        EXPECT_TRUE(IsWindow(button)) << i;
      }
    });
    user.Click("cmdPhoto");
    EXPECT_FALSE(IsWindow(page));
    EXPECT_EQ(VisibleIn(Native("page")), 9);
    NextPage();
    user.Click("txtInner");
    user.Type("x");
    EXPECT_EQ(form->Get<toolkit::TextBox>("txtInner")->Text(), "x");
  });
}

TEST_F(SpareWindows, WhatAPageDoesWhileItIsRemovedDoesNotShow) {
  Visit([&] {
    form->RemovePage();
    const auto page = NewPage<LeavingPage>();
    form->page = page;
    tests::RunMessages();
    const HWND label = Native("labName");
    page->on_terminate = [&] {
      std::dynamic_pointer_cast<toolkit::Label>(page->Controls().Find("labName"))->SetCaption("再见");
      EXPECT_EQ(TextOf(label), L"姓名");
    };
    form->RemovePage();
    page->on_terminate = nullptr;
  });
}

}  // namespace
}  // namespace dossierkit::views
