// What a view is told of: each change of the model, by the aspect that it belongs to.
#include "platform/ado/recordset.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/tree_view.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using Aspects = std::vector<Aspect>;

class SpyView : public View {
 public:
  explicit SpyView(Aspects& told) : told_(told) {}
  void Show(Aspect aspect) override { told_.push_back(aspect); }

 private:
  Aspects& told_;
};

// Views without a screen, that note what they are told.
class SpyPlatform : public headless::HeadlessPlatform {
 public:
  std::map<std::string, Aspects> told;  // by the control's name
  std::unique_ptr<View> CreateView(Control& control) override {
    return std::make_unique<SpyView>(told[control.Name()]);
  }
};

class AspectsForm : public Form {
 public:
  explicit AspectsForm(Desktop& desktop) : Form(desktop, "frmAspects") {}
  std::shared_ptr<TreeView> tree;
  std::shared_ptr<DataGrid> grid;
  std::shared_ptr<Label> label;
  std::shared_ptr<TextBox> box;
  std::shared_ptr<CommandButton> button;
  std::shared_ptr<CheckBox> check;
  std::shared_ptr<TabStrip> tabs;

 protected:
  void BuildDesign() override {
    label = Controls().Make<Label>("label");
    box = Controls().Make<TextBox>("box");
    box->SetLabelledBy(*label);
    tree = Controls().Make<TreeView>("tree");
    grid = Controls().Make<DataGrid>("grid");
    button = Controls().Make<CommandButton>("button");
    check = Controls().Make<CheckBox>("check");
    tabs = Controls().Make<TabStrip>("tabs");
    for (int tab = 0; tab < 3; ++tab) {
      tabs->AddTab("页");
      tabs->SetTabPage(*Controls().Make<Frame>("frame" + std::to_string(tab)), tab);
    }
  }
};

class AspectsTest : public FormTest<AspectsForm, SpyPlatform> {
 protected:
  // What the view of a control is told while `action` runs.
  Aspects Told(const std::string& control, const std::function<void()>& action) {
    platform.told[control].clear();
    action();
    return platform.told[control];
  }
  static std::shared_ptr<ado::Recordset> Rows(int count) {
    ado::Snapshot rows;
    rows.AddColumn({"序号", ado::ColumnKind::kInteger, ""});
    rows.AddColumn({"单位", ado::ColumnKind::kText, ""});
    for (int i = 1; i <= count; ++i) {
      rows.AppendInteger(i);
      rows.AppendText("单位");
    }
    return std::make_shared<ado::Recordset>(std::move(rows));
  }
};

TEST_F(AspectsTest, NodesWithTheirTextsAndColoursAreContentAndWhatIsOpenIsSelection) {
  Visit([&] {
    auto& nodes = form->tree->Nodes();
    EXPECT_EQ(Told("tree", [&] { nodes.Add("a", "甲"); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("tree", [&] { nodes.Find("a").SetText("乙"); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("tree", [&] { nodes.Find("a").SetForeColor(255); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("tree", [&] { nodes.Find("a").SetExpanded(true); }), Aspects{Aspect::kSelection});
    EXPECT_EQ(Told("tree", [&] { form->tree->SetSelectedItem(0); }), Aspects{Aspect::kSelection});
    EXPECT_EQ(Told("tree", [&] { form->tree->SetForeColor(255); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("tree", [&] { nodes.Clear(); }), Aspects{Aspect::kContent});
  });
}

TEST_F(AspectsTest, ATreeThatTheFocusSelectsANodeOfTellsThatFirst) {
  Visit([&] {
    form->tree->Nodes().Add("a", "甲");
    EXPECT_EQ(Told("tree", [&] { form->tree->SetFocus(); }), (Aspects{Aspect::kSelection, Aspect::kFocus}));
    EXPECT_EQ(form->tree->SelectedItem(), 0);
  });
}

TEST_F(AspectsTest, AGridTellsItsContentItsWidthsAndTheCursor) {
  Visit([&] {
    auto& grid = *form->grid;
    const auto rows = Rows(3);
    EXPECT_EQ(Told("grid", [&] { grid.SetDataSource(rows); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("grid", [&] { grid.SetColumnWidth(1, 300); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("grid", [&] { rows->MoveNext(); }), Aspects{Aspect::kSelection});
    EXPECT_EQ(Told("grid", [&] { grid.UserColumnWidth(1, 400); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("grid", [&] { grid.SetHeadFont({"黑体", 9, true}); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("grid", [&] { grid.SetDataSource(Rows(1)); }), Aspects{Aspect::kContent});
    EXPECT_EQ(Told("grid", [&] { rows->MoveNext(); }), Aspects{}) << "the former rows are no longer its own";
    grid.SetDataSource(rows);
    grid.SetDataSource(nullptr);
    EXPECT_EQ(Told("grid", [&] { rows->MovePrevious(); }), Aspects{}) << "nor where it has none";
  });
}

TEST_F(AspectsTest, ARowThatTheUserWantedIsToldWhateverBecameOfIt) {
  Visit([&] {
    auto& grid = *form->grid;
    const auto rows = Rows(3);
    grid.SetDataSource(rows);
    grid.SetFocus();
    const auto last = [&](std::int32_t row) {
      const auto told = Told("grid", [&] { grid.UserSelectRow(row); });
      return told.empty() ? std::optional<Aspect>() : told.back();
    };
    EXPECT_EQ(last(2), Aspect::kSelection);
    EXPECT_EQ(last(9), Aspect::kSelection);
    form->box->SetFocus();
    const auto hook = form->box->Validate.Subscribe([](bool& cancel) { cancel = true; });
    EXPECT_EQ(last(3), Aspect::kSelection);
    EXPECT_EQ(rows->AbsolutePosition(), 2);
  });
}

TEST_F(AspectsTest, ACaptionIsTextAndTheAccessibleNameThatComesFromItIsStyle) {
  Visit([&] {
    EXPECT_EQ(Told("label", [&] { form->label->SetCaption("姓名"); }),
              (Aspects{Aspect::kText, Aspect::kStyle}));
    EXPECT_EQ(Told("box", [&] { form->label->SetCaption("曾用名"); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(form->box->AccessibleName(), "曾用名");
    EXPECT_EQ(Told("label", [&] { form->label->SetCaption("曾用名"); }), Aspects{});
    EXPECT_EQ(Told("button", [&] { form->button->SetCaption("确定"); }),
              (Aspects{Aspect::kText, Aspect::kStyle}));
    form->check->SetAccessibleName("在职");
    EXPECT_EQ(Told("check", [&] { form->check->SetCaption("是"); }), Aspects{Aspect::kText});
    EXPECT_EQ(Told("frmAspects", [&] { form->SetCaption("档案"); }),
              (Aspects{Aspect::kText, Aspect::kStyle}));
  });
}

TEST_F(AspectsTest, TheStyleOfALabelIsToldWheneverItChanges) {
  Visit([&] {
    auto& label = *form->label;
    EXPECT_EQ(Told("label", [&] { label.SetFontBold(true); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("label", [&] { label.SetFontBold(true); }), Aspects{});
    EXPECT_EQ(Told("label", [&] { label.SetAlignCenter(true); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("label", [&] { label.SetWordWrap(true); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("label", [&] { label.SetOpaque(true); }), Aspects{Aspect::kStyle});
    EXPECT_TRUE(label.AlignCenter() && label.WordWrap() && label.Opaque());
    EXPECT_EQ(Told("label", [&] { label.SetBackColor(255); }), Aspects{Aspect::kStyle});
    EXPECT_EQ(Told("label", [&] { label.SetToolTipText("注"); }), Aspects{Aspect::kStyle});
  });
}

TEST_F(AspectsTest, PlaceStateAndTextAreToldOnceForEachChange) {
  Visit([&] {
    auto& box = *form->box;
    EXPECT_EQ(Told("box", [&] { box.Move({15, 15, 300, 300}); }), Aspects{Aspect::kPlacement});
    EXPECT_EQ(Told("box", [&] { box.Move({15, 15, 300, 300}); }), Aspects{});
    EXPECT_EQ(Told("box", [&] { box.SetContainer(*form->Controls().Find("frame0")); }),
              Aspects{Aspect::kPlacement});
    EXPECT_EQ(Told("box", [&] { box.SetContainer(*form); }), Aspects{Aspect::kPlacement});
    EXPECT_EQ(Told("box", [&] { box.SetEnabled(false); }), Aspects{Aspect::kState});
    EXPECT_EQ(Told("box", [&] { box.SetEnabled(true); }), Aspects{Aspect::kState});
    EXPECT_EQ(Told("box", [&] { box.SetVisible(false); }), Aspects{Aspect::kState});
    EXPECT_EQ(Told("box", [&] { box.SetVisible(true); }), Aspects{Aspect::kState});
    EXPECT_EQ(Told("box", [&] { box.SetText("张"); }), Aspects{Aspect::kText});
    EXPECT_EQ(Told("box", [&] { box.Select(0, 1); }), Aspects{Aspect::kSelection});
    EXPECT_EQ(Told("box", [&] { box.UserSelect(1, 0); }), Aspects{}) << "the native widget has moved already";
    EXPECT_EQ(Told("check", [&] { form->check->SetValue(1); }), Aspects{Aspect::kText});
    form->check->SetFocus();
    EXPECT_EQ(Told("box", [&] { box.SetFocus(); }), Aspects{Aspect::kFocus});
  });
}

TEST_F(AspectsTest, ATabInFrontTellsWhatItHidesAndWhatItShows) {
  Visit([&] {
    for (const char* frame : {"frame0", "frame1", "frame2"}) platform.told[frame].clear();
    EXPECT_EQ(Told("tabs", [&] { form->tabs->SetTab(1); }), Aspects{Aspect::kSelection});
    EXPECT_EQ(platform.told["frame0"], Aspects{Aspect::kState});
    EXPECT_EQ(platform.told["frame1"], Aspects{Aspect::kState});
    EXPECT_EQ(platform.told["frame2"], Aspects{});
    EXPECT_EQ(Told("frame1", [&] { form->tabs->SetTab(1); }), Aspects{}) << "it is in front already";
    EXPECT_EQ(Told("frame1", [&] { form->tabs->UserSelectTab(2); }), Aspects{Aspect::kState});
    EXPECT_EQ(Told("tabs", [&] { form->tabs->SetTabCaption(0, "甲"); }), Aspects{Aspect::kContent});
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
