// What view.h promises of the order in which views are told, beside the events that the program hears.
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tree_view.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

const char* NameOf(Aspect aspect) {
  switch (aspect) {
    case Aspect::kPlacement: return "placement";
    case Aspect::kState: return "state";
    case Aspect::kStyle: return "style";
    case Aspect::kText: return "text";
    case Aspect::kContent: return "content";
    case Aspect::kSelection: return "selection";
    case Aspect::kFocus: return "focus";
  }
  return "";
}

// Views that note what they are told, and when they come and go.
class NotingPlatform : public headless::HeadlessPlatform {
 public:
  explicit NotingPlatform(Log& log) : log_(log) {}
  std::unique_ptr<View> CreateView(Control& control) override {
    log_.push_back(control.Name() + " comes");
    return std::make_unique<Noting>(log_, control.Name());
  }

 private:
  class Noting : public View {
   public:
    Noting(Log& log, std::string name) : log_(log), name_(std::move(name)) {}
    ~Noting() override { log_.push_back(name_ + " goes"); }
    void Show(Aspect aspect) override { log_.push_back(name_ + " " + NameOf(aspect)); }
    void Settle() override { log_.push_back(name_ + " settles"); }

   private:
    Log& log_;
    std::string name_;
  };
  Log& log_;
};

class RulesForm : public Form {
 public:
  explicit RulesForm(Desktop& desktop) : Form(desktop, "window") {}
  std::shared_ptr<Toolbar> bar;
  std::shared_ptr<TextBox> box, other;
  std::shared_ptr<TreeView> tree;
  std::shared_ptr<Frame> frame;
  std::shared_ptr<Image> image;
  std::shared_ptr<CommandButton> button;

 protected:
  void BuildDesign() override {
    box = Controls().Make<TextBox>("box");
    other = Controls().Make<TextBox>("other");
    bar = Controls().Make<Toolbar>("bar");
    bar->AddButton("Add", "增加(&N)", 0);
    tree = Controls().Make<TreeView>("tree");
    frame = Controls().Make<Frame>("frame");
    image = Controls().Make<Image>("image");
    button = Controls().Make<CommandButton>("button");
    box->SetContainer(*frame);
  }
};

class ViewRules : public FormTest<RulesForm, NotingPlatform> {
 protected:
  // What was noted while `action` ran.
  Log Noted(const std::function<void()>& action) {
    log.clear();
    action();
    return log;
  }
};

TEST_F(ViewRules, AViewComesAfterItsContainersAndGoesWithItsControl) {
  Visit([&] {
    const auto at = [&](const std::string& entry) { return std::find(log.begin(), log.end(), entry); };
    EXPECT_EQ(log.front(), "window comes");
    EXPECT_LT(at("frame comes"), at("box comes")) << "although it was made later";
    const auto later = form->Controls().Make<Label>("later");
    EXPECT_EQ(log.back(), "later comes");
    EXPECT_EQ(Noted([&] { form->Controls().Remove(form->Controls().Count() - 1); }), Log{"later goes"});
    log.clear();
  });
  EXPECT_EQ(log.back(), "window goes");
  EXPECT_EQ(log.size(), 8U);
}

TEST_F(ViewRules, BordersAndTheDefaultButtonAreStyle) {
  Visit([&] {
    EXPECT_EQ(Noted([&] { form->frame->SetBorder(false); }), Log{"frame style"});
    EXPECT_EQ(Noted([&] { form->image->SetBorder(false); }), Log{"image style"});
    EXPECT_EQ(Noted([&] { form->button->SetDefault(true); }), Log{"button style"});
    EXPECT_EQ(Noted([&] {
                form->button->SetCancel(true);
                form->button->SetTag("x");
                form->button->SetTabIndex(7);
                form->box->SetMaxLength(7);
              }),
              Log{});
  });
}

TEST_F(ViewRules, AToolbarThatShowsGetsNoMoreButtons) {
  Visit([&] {
    EXPECT_EQ(NumberOfFailure([&] { form->bar->AddButton("Late", "迟", 0); }), 5);
    EXPECT_EQ(NumberOfFailure([&] { form->bar->AddSeparator(); }), 5);
    EXPECT_EQ(form->bar->Buttons().size(), 1U);
  });
}

TEST_F(ViewRules, TheFocusIsShownBetweenLostFocusAndGotFocus) {
  Visit([&] {
    form->box->SetFocus();
    On(form->box->LostFocus, [&] { log.push_back("LostFocus"); });
    On(form->other->GotFocus, [&] { log.push_back("GotFocus"); });
    EXPECT_EQ(Noted([&] { form->other->SetFocus(); }), (Log{"LostFocus", "other focus", "GotFocus"}));
    On(form->other->Validate, [&](bool& cancel) { cancel = true; });
    EXPECT_EQ(Noted([&] { form->box->SetFocus(); }), Log{"other focus"}) << "which keeps it";
  });
}

TEST_F(ViewRules, AnEditShowsBeforeItsChangeAndAnIgnoredOneAsWell) {
  Visit([&] {
    form->box->SetFocus();
    On(form->box->Change, [&] { log.push_back("Change"); });
    EXPECT_EQ(Noted([&] { form->box->UserReplace(0, 0, "a"); }), (Log{"box text", "Change", "box settles"}));
    form->box->SetEnabled(false);
    EXPECT_EQ(Noted([&] { form->box->UserReplace(0, 0, "b"); }), (Log{"box settles", "box text"}));
  });
}

TEST_F(ViewRules, WhatTheUserFoldedSettlesLastOfAll) {
  Visit([&] {
    auto& nodes = form->tree->Nodes();
    const int parent = nodes.Add("a", "甲").Index();
    nodes.Add(parent, Relation::kChild, "b", "乙");
    form->tree->SetFocus();
    const Log folded = Noted([&] { form->tree->UserExpand(parent, true); });
    ASSERT_GE(folded.size(), 2U);
    EXPECT_EQ(folded[folded.size() - 2], "tree selection");
    EXPECT_EQ(folded.back(), "tree settles");
    EXPECT_EQ(Noted([&] { nodes.At(parent).SetExpanded(false); }), Log{"tree selection"})
        << "a program's many may wait";
    form->tree->SetSelectedItem(parent);
    const Log clicked = Noted([&] { form->tree->UserDblClick(); });
    EXPECT_TRUE(nodes.At(parent).Expanded());
    ASSERT_GE(clicked.size(), 2U);
    EXPECT_EQ(clicked[clicked.size() - 2], "tree selection");
    EXPECT_EQ(clicked.back(), "tree settles");
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
