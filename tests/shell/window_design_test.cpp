// The places, captions and images of the window, and its resize rule.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using WindowDesign = ShellTest;
using toolkit::Rect;

TEST_F(WindowDesign, TheCaptionAndTheClientArea) {
  visit.Open([&] {
    EXPECT_EQ(visit.Window().Caption(), "人员维护");
    EXPECT_EQ(visit.Window().DesignWidth(), 15240);
    EXPECT_EQ(visit.Window().DesignHeight(), 11115);
    EXPECT_TRUE(visit.Window().Sizable());
  });
}

TEST_F(WindowDesign, EveryControlStandsInItsPlace) {
  struct Row {
    const char* name;
    toolkit::Kind kind;
    const char* container;
    Rect place;
  };
  const std::vector<Row> rows = {
      {"CBar1", toolkit::Kind::kCoolBar, "frmDossier", {0, 0, 15240, 510}},
      {"P2", toolkit::Kind::kPictureBox, "CBar1", {30, 30, 1995, 450}},
      {"labPersonName", toolkit::Kind::kLabel, "P2", {30, 30, 1920, 330}},
      {"TbMain", toolkit::Kind::kToolbar, "CBar1", {2220, 90, 12930, 330}},
      {"frmVMenu", toolkit::Kind::kFrame, "frmDossier", {15, 360, 2115, 10245}},
      {"VMenu1", toolkit::Kind::kVerticalMenu, "frmVMenu", {0, 120, 2055, 10095}},
      {"frmCtrl", toolkit::Kind::kFrame, "frmDossier", {2175, 525, 12945, 9375}},
  };
  visit.Open([&] {
    for (const auto& row : rows) {
      const auto control = visit.user.Find(row.name);
      EXPECT_EQ(control->GetKind(), row.kind) << row.name;
      EXPECT_EQ(control->Container()->Name(), row.container) << row.name;
      EXPECT_EQ(control->Place(), row.place) << row.name;
    }
    EXPECT_EQ(visit.Window().Controls().Count(), rows.size() + 1) << "the window's own controls and the page";
  });
}

TEST_F(WindowDesign, TheNameStandsInBoldFourteenPoint) {
  visit.Open([&] {
    EXPECT_EQ(visit.user.Find("labPersonName")->GetFont(), (toolkit::Font{"宋体", 14.25, true}));
  });
}

TEST_F(WindowDesign, TheToolbarsButtons) {
  struct Row {
    const char* key;
    const char* caption;
    int image;
  };
  const std::vector<Row> rows = {{"Add", "增加(&N)", 3},
                                 {"Delete", "删除(&D)", 5},
                                 {"Save", "保存(&S)", 6},
                                 {"Cancel", "取消(&C)", 7},
                                 {"", "", 0},
                                 {"Exit", "退出(&X)", 9}};
  visit.Open([&] {
    const auto& buttons = visit.Window().TbMain().Buttons();
    ASSERT_EQ(buttons.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(buttons[i].Key(), rows[i].key) << i;
      EXPECT_EQ(buttons[i].Caption(), rows[i].caption) << i;
      EXPECT_EQ(buttons[i].ImageIndex(), rows[i].image) << i;
      EXPECT_EQ(buttons[i].IsSeparator(), i == 4) << i;
    }
  });
}

TEST_F(WindowDesign, TheBandsAreLoweredWithTheFirstResize) {
  std::vector<toolkit::Band> designed;
  // Before the window is on show its design stands.
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace&) {
        for (const auto& control : visit.Window().Controls()) {
          if (const auto* bar = dynamic_cast<const toolkit::CoolBar*>(control.get()); bar && designed.empty())
            designed = bar->Bands();
        }
      }));
  visit.Open([&] {
    EXPECT_EQ(visit.user.Find<toolkit::CoolBar>("CBar1")->Bands(),
              (std::vector<toolkit::Band>{{1995, 1995, 390}, {10005, 10005, 390}}));
  });
  EXPECT_EQ(designed, (std::vector<toolkit::Band>{{1995, 1995, 450}, {10005, 10005, 330}}));
}

TEST_F(WindowDesign, TheFirstPageFollowsTheWindowAsSoonAsItIsShown) {
  visit.Open([&] {
    const Rect& outer = visit.Window().Place();
    EXPECT_GE(outer.width, 15240);
    EXPECT_GE(outer.height, 11115);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, outer.width - 300, outer.height - 300}));
  });
}

TEST_F(WindowDesign, ThePageIsMeasuredAgainstTheWindowsOuterSize) {
  visit.Open([&] {
    visit.Window().UserResize(12000, 9000);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 11700, 8700}));
    EXPECT_EQ(visit.user.Find("frmCtrl")->Place(), (Rect{2175, 525, 12945, 9375}));
    EXPECT_EQ(visit.user.Find("frmVMenu")->Place(), (Rect{15, 360, 2115, 10245}));
    EXPECT_EQ(visit.user.Find("CBar1")->Place(), (Rect{0, 0, 15240, 510}));
  });
}

TEST_F(WindowDesign, ThePageKeepsASizeThatWouldNotBeAboveZero) {
  visit.Open([&] {
    visit.Window().UserResize(12000, 9000);
    visit.Window().UserResize(300, 300);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 11700, 8700}));
    visit.Window().UserResize(301, 200);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 1, 8700}));
    visit.Window().UserResize(200, 301);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 1, 1}));
  });
}

TEST_F(WindowDesign, APageJustLoadedKeepsItsFirstSizeUntilTheNextResize) {
  visit.Open([&] {
    visit.GoTo("A03");
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 13000, 9800}));
    EXPECT_EQ(visit.OnShow().Container()->Name(), "frmCtrl");
    EXPECT_TRUE(visit.OnShow().Visible());
    visit.Window().UserResize(16000, 12000);
    EXPECT_EQ(visit.OnShow().Place(), (Rect{300, 300, 15700, 11700}));
  });
}

TEST_F(WindowDesign, AResizeMovesNoControlOfThePage) {
  visit.Open([&] {
    visit.GoTo("A03");
    std::vector<Rect> before;
    for (const auto& control : visit.OnShow().Controls()) before.push_back(control->Place());
    visit.Window().UserResize(9000, 7000);
    std::vector<Rect> after;
    for (const auto& control : visit.OnShow().Controls()) after.push_back(control->Place());
    EXPECT_EQ(after, before);
  });
}

TEST_F(WindowDesign, AResizeWithoutAPageOnlyLowersTheBands) {
  visit.Open([&] {
    RemoveUCtrl(visit.Window(), "ctrlUser");
    auto& bar = *visit.user.Find<toolkit::CoolBar>("CBar1");
    bar.SetMinHeight(0, 450);
    bar.SetMinHeight(1, 330);
    visit.Window().UserResize(9000, 7000);
    EXPECT_EQ(bar.Bands(), (std::vector<toolkit::Band>{{1995, 1995, 390}, {10005, 10005, 390}}));
  });
}

// --- icons ---------------------------------------------------------------------------------------

TEST_F(WindowDesign, TheSelectedItemAndTheOneThatLostTheSelectionHaveIcons) {
  visit.Open([&] {
    const auto icons = [&] {
      Statements all;
      for (const auto& item : visit.Window().VMenu1().Items()) all.push_back(item.icon);
      all.resize(4);
      return all;
    };
    const std::string selected = "/opt/dossier\\USER.ICO";
    const std::string other = "/opt/dossier\\xinxj.ico";
    EXPECT_EQ(icons(), (Statements{selected, "", "", ""}));
    visit.GoTo("A03");
    EXPECT_EQ(icons(), (Statements{other, "", selected, ""}));
    visit.GoTo("A03");
    EXPECT_EQ(icons(), (Statements{other, "", selected, ""}));
    visit.GoTo("A02");
    EXPECT_EQ(icons(), (Statements{other, selected, other, ""}));
  });
}

}  // namespace
}  // namespace dossierkit::tests
