#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

// Notes which aspects are shown, and whether a container's view comes before its controls'.
class NotingPlatform : public headless::HeadlessPlatform {
 public:
  std::unique_ptr<View> CreateView(Control& control) override {
    struct NotingView : View {
      NotingView(NotingPlatform& noting, std::string viewed) : platform(noting), name(std::move(viewed)) {}
      ~NotingView() override { --platform.alive; }
      void Show(Aspect aspect) override { platform.shown.push_back({name, aspect}); }
      NotingPlatform& platform;
      std::string name;
    };
    if (Control* container = control.Container()) {
      EXPECT_NE(container->GetView(), nullptr) << control.Name();
    }
    created.push_back(control.Name());
    ++alive;
    return std::make_unique<NotingView>(*this, control.Name());
  }
  Log created;
  std::vector<std::pair<std::string, Aspect>> shown;
  int alive = 0;
};

class ControlsTest : public ToolkitTest {};

class ViewsTest : public ToolkitTestOn<NotingPlatform> {
 protected:
  using Shown = std::vector<std::pair<std::string, Aspect>>;
  Shown TakeShown() { return std::exchange(platform.shown, {}); }
};

TEST_F(ControlsTest, KeepTheOrderOfCreationAndAreFlat) {
  Visit([&] {
    Log names;
    for (const auto& control : form->Page()->Controls()) names.push_back(control->Name());
    EXPECT_EQ(names,
              (Log{"labName", "txtName", "mskDate", "txtNote", "chkFlag", "frmInner", "txtInner", "grid"}));
    EXPECT_EQ(form->Page()->Controls().Count(), 8U);
    EXPECT_EQ(form->Page()->Controls().At(6)->Container(), form->Get("frmInner").get());
    EXPECT_EQ(form->Page()->Controls().At(6)->Owner(), form->Page().get());
  });
}

TEST_F(ControlsTest, FindByNameIgnoresCase) {
  Visit([&] {
    EXPECT_EQ(form->Page()->Controls().Find("TXTNAME")->Name(), "txtName");
    EXPECT_EQ(form->Page()->Controls().Find("txtNone"), nullptr);
    EXPECT_THROW(form->Page()->Controls().At(8), std::out_of_range);
  });
}

TEST_F(ControlsTest, ControlKnowsItsPageAndWindow) {
  Visit([&] {
    EXPECT_EQ(form->Get("txtInner")->Page(), form->Page().get());
    EXPECT_EQ(form->Get("txtInner")->Window(), form.get());
    EXPECT_EQ(form->Page()->Page(), form->Page().get());
    EXPECT_EQ(form->Page()->Container()->Name(), "frmCtrl");
    EXPECT_EQ(form->Get("TbMain")->Page(), nullptr);
    EXPECT_EQ(form->Get("TbMain")->Container(), form.get());
    EXPECT_EQ(form->Owner(), nullptr);
  });
}

TEST_F(ControlsTest, CheckBoxRaisesClickOnlyIfItsValueDiffers) {
  Visit([&] {
    auto flag = form->Get<CheckBox>("chkFlag");
    int clicks = 0;
    On(flag->Click, [&] { ++clicks; });
    flag->SetValue(1);
    flag->SetValue(1);
    EXPECT_EQ(clicks, 1);
    user.Click("chkFlag");
    EXPECT_EQ(flag->Value(), 0);
    EXPECT_EQ(clicks, 2);
  });
}

TEST_F(ControlsTest, PageIsToldOfAResizeOnlyIfItsSizeDiffers) {
  struct Sized : UserControl {
    using UserControl::UserControl;
    void UserControl_Resize() override { ++resized; }
    int resized = 0;
  };
  auto page = std::make_shared<Sized>("page");
  page->Move({0, 0, 100, 100});
  page->Move({50, 50, 100, 100});
  EXPECT_EQ(page->resized, 1);
  page->Move({50, 50, 100, 200});
  EXPECT_EQ(page->resized, 2);
}

TEST_F(ControlsTest, AccessibleNameIsTheLabelsTextOrTheOwnCaption) {
  Visit([&] {
    auto box = form->Get("txtName");
    auto label = form->Get<Label>("labName");
    EXPECT_EQ(box->AccessibleName(), "");
    box->SetLabelledBy(*label);
    EXPECT_EQ(box->AccessibleName(), "姓名");
    label->SetCaption("名称(&N)");
    EXPECT_EQ(box->AccessibleName(), "名称(N)");
    EXPECT_EQ(label->AccessibleName(), "名称(N)");
    box->SetAccessibleName("人员姓名");
    EXPECT_EQ(box->AccessibleName(), "人员姓名");
  });
}

TEST_F(ControlsTest, FileDialogGivesTheChoiceOrNothing) {
  Visit([&] {
    auto dialog = form->Controls().Make<CommonDialog>("dlg");
    platform.WillChoose("/tmp/照片.jpg");
    dialog->ShowOpen();
    EXPECT_EQ(dialog->file_name, "/tmp/照片.jpg");
    dialog->ShowOpen();
    EXPECT_EQ(dialog->file_name, "");
  });
}

// --- views ---------------------------------------------------------------------------------------

TEST_F(ViewsTest, ViewsComeWithTheWindowAndGoWithIt) {
  Visit([&] { EXPECT_EQ(platform.created.size(), 13U); });
  EXPECT_EQ(platform.alive, 0);
}

TEST_F(ViewsTest, ContainersViewComesFirstThoughItWasMadeLater) {
  form->on_load = [&] {
    auto box = form->Controls().Make<TextBox>("txtEarly");
    box->SetContainer(*form->Controls().Make<Frame>("frmLate"));
  };
  Visit([] {});
  EXPECT_EQ(platform.alive, 0);
}

TEST_F(ViewsTest, OwnerMayBeNamedAsContainer) {
  form->on_load = [&] {
    auto page = form->LoadPage();
    page->Controls().Find("txtName")->SetContainer(*page);
    page->SetContainer(*form);
    form->Get("frmCtrl")->SetContainer(*form);
  };
  Visit([&] { EXPECT_EQ(platform.created.size(), 13U); });
}

TEST_F(ViewsTest, ViewsOfADroppedPageGoAtOnce) {
  Visit([&] {
    const int alive = platform.alive;
    form->RemovePage();
    EXPECT_EQ(platform.alive, alive - 9);
  });
}

TEST_F(ViewsTest, PropertyThatKeepsItsValueShowsNothing) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    TakeShown();
    box->SetText("");
    box->SetEnabled(true);
    box->SetVisible(true);
    box->SetBackColor(box->BackColor());
    box->Move(box->Place());
    EXPECT_EQ(TakeShown(), Shown{});
    box->SetText("张三");
    box->SetEnabled(false);
    EXPECT_EQ(TakeShown(), (Shown{{"txtName", Aspect::kText}, {"txtName", Aspect::kState}}));
  });
}

TEST_F(ViewsTest, RefusedReportsShowTheModelAgain) {
  Visit([&] {
    form->Get("txtNote")->SetFocus();
    hooks.push_back(form->Get("txtNote")->Validate.Subscribe([](bool& cancel) { cancel = true; }));
    const auto shown_after = [&](const std::function<void()>& report) {
      TakeShown();
      report();
      return TakeShown();
    };
    const std::pair<std::string, Aspect> focus = {"txtNote", Aspect::kFocus};
    EXPECT_EQ(shown_after([&] { form->Get<CheckBox>("chkFlag")->UserToggle(); }),
              (Shown{focus, {"chkFlag", Aspect::kText}}));
    EXPECT_EQ(shown_after([&] { form->Get<VerticalMenu>("VMenu1")->UserClick(2); }),
              (Shown{focus, {"VMenu1", Aspect::kSelection}}));
    EXPECT_EQ(shown_after([&] { form->Get<DataGrid>("grid")->UserSelectRow(1); }),
              (Shown{{"grid", Aspect::kSelection}}));
    EXPECT_EQ(shown_after([&] { form->Get("txtName")->UserFocus(); }), (Shown{focus, focus}));
    form->Get<MaskEdBox>("mskDate")->UserType("x");
    EXPECT_EQ(TakeShown(), (Shown{{"mskDate", Aspect::kText}}));
  });
}

TEST_F(ViewsTest, ReportsBelowAModalWindowShowTheModelAgain) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  Visit([&] {
    platform.WillRun([&](Form&) {
      TakeShown();
      form->Get<TextBox>("txtName")->UserReplace(0, 0, "x");
      form->Get<MaskEdBox>("mskDate")->UserType("1");
      form->Get<CheckBox>("chkFlag")->UserToggle();
      form->Get<DataGrid>("grid")->UserSelectRow(1);
      EXPECT_EQ(TakeShown(), (Shown{{"txtName", Aspect::kText},
                                    {"mskDate", Aspect::kText},
                                    {"chkFlag", Aspect::kText},
                                    {"grid", Aspect::kSelection}}));
    });
    form->Deliver([&] { inner->ShowModal(); });
  });
}

TEST_F(ViewsTest, LabelsNewCaptionRenamesTheControlThatItNames) {
  Visit([&] {
    form->Get("txtName")->SetLabelledBy(*form->Get("labName"));
    TakeShown();
    form->Get<Label>("labName")->SetCaption("名称");
    EXPECT_EQ(TakeShown(),
              (Shown{{"labName", Aspect::kText}, {"labName", Aspect::kStyle}, {"txtName", Aspect::kStyle}}));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
