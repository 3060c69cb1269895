// The wrappers of a page's controls: which events of which kind they hear, and what becomes of them.
#include "binding/control_items.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/environment/failure.h"

namespace dossierkit::tests {
namespace {

using environment::Value;
using toolkit::CheckBox;
using toolkit::Control;
using toolkit::Image;
using toolkit::Label;
using toolkit::MaskEdBox;
using toolkit::TextBox;
using Heard = std::vector<std::string>;

// Wraps controls and writes down what the collection raises, as "Change box".
class ControlItemsTest : public ::testing::Test {
 protected:
  ControlItemsTest() {
    Hear(items.GotFocus, "GotFocus");
    Hear(items.LostFocus, "LostFocus");
    Hear(items.DblClick, "DblClick");
    Hear(items.Change, "Change");
    Hear(items.ColResize, "ColResize");
    Hear(items.MouseMove, "MouseMove");
    HearButton(items.LButtonDown, "LButtonDown");
    HearButton(items.RButtonDown, "RButtonDown");
    hooks.push_back(items.Validate.Subscribe([this](Control& ctl, bool& cancel) {
      heard.push_back("Validate " + ctl.Name());
      sources.push_back(&ctl);
      cancel = refuse;
    }));
  }

  void Hear(environment::Event<Control&>& event, const std::string& name) {
    hooks.push_back(event.Subscribe([this, name](Control& ctl) {
      heard.push_back(name + " " + ctl.Name());
      sources.push_back(&ctl);
    }));
  }
  void HearButton(environment::Event<Control&, PropertyBag&>& event, const std::string& name) {
    hooks.push_back(event.Subscribe([this, name](Control& ctl, PropertyBag& properties) {
      heard.push_back(name + " " + ctl.Name());
      sources.push_back(&ctl);
      bags.push_back(&properties);
    }));
  }

  template <typename T>
  std::shared_ptr<T> Wrapped() {
    auto control = std::make_shared<T>("box");
    item = items.AddControl(control);
    return control;
  }

  // What the collection raises while that happens.
  Heard HeardDuring(const std::function<void()>& what) {
    heard.clear();
    what();
    return heard;
  }
  Heard PressOn(Control& control, int button) {
    return HeardDuring([&] { control.Raise(control.MouseDown, button, 0, 15, 30); });
  }
  // Everything that every kind has in common, one after the other.
  Heard RaiseAllOn(Control& control) {
    return HeardDuring([&] {
      bool cancel = false;
      int key = 65;
      char32_t character = U'a';
      control.Raise(control.GotFocus);
      control.Raise(control.LostFocus);
      control.Raise(control.Validate, cancel);
      control.Raise(control.KeyDown, key, 0);
      control.Raise(control.KeyPress, character);
      control.Raise(control.MouseDown, 1, 0, 0, 0);
      control.Raise(control.MouseDown, 2, 0, 0, 0);
      control.Raise(control.MouseDown, 4, 0, 0, 0);
      control.Raise(control.MouseMove, 0, 0, 0, 0);
      EXPECT_EQ(character, U'a');
      EXPECT_EQ(key, 65);
    });
  }

  ControlItems items;
  std::shared_ptr<ControlItem> item;
  std::vector<environment::Subscription> hooks;
  Heard heard;
  std::vector<Control*> sources;
  std::vector<PropertyBag*> bags;
  bool refuse = false;
};

TEST_F(ControlItemsTest, EachKindIsTakenByItsOwnMember) {
  Wrapped<TextBox>();
  EXPECT_EQ(item->CtrlType, "controlt");
  EXPECT_EQ(item->controlt, item->Ctrl);
  Wrapped<Label>();
  EXPECT_EQ(item->CtrlType, "controll");
  EXPECT_EQ(item->controll, item->Ctrl);
  Wrapped<CheckBox>();
  EXPECT_EQ(item->CtrlType, "controlc");
  EXPECT_EQ(item->controlc, item->Ctrl);
  Wrapped<Image>();
  EXPECT_EQ(item->CtrlType, "controli");
  EXPECT_EQ(item->controli, item->Ctrl);
  Wrapped<MaskEdBox>();
  EXPECT_EQ(item->CtrlType, "controlMe");
  EXPECT_EQ(item->controlMe, item->Ctrl);
}

TEST_F(ControlItemsTest, AtMostOneMemberIsSet) {
  Wrapped<TextBox>();
  EXPECT_FALSE(item->controll || item->controlc || item->controli || item->controlMe || item->controldg);
  Wrapped<Label>();
  EXPECT_FALSE(item->controlt || item->controlc || item->controli || item->controlMe || item->controldg);
  Wrapped<CheckBox>();
  EXPECT_FALSE(item->controlt || item->controll || item->controli || item->controlMe || item->controldg);
  Wrapped<Image>();
  EXPECT_FALSE(item->controlt || item->controll || item->controlc || item->controlMe || item->controldg);
  Wrapped<MaskEdBox>();
  EXPECT_FALSE(item->controlt || item->controll || item->controlc || item->controli || item->controldg);
}

TEST_F(ControlItemsTest, OtherKindsAreWrappedAndSilent) {
  const std::vector<std::shared_ptr<Control>> others = {
      std::make_shared<toolkit::Frame>("frame"),          std::make_shared<toolkit::Line>("line"),
      std::make_shared<toolkit::CommandButton>("button"), std::make_shared<toolkit::PictureBox>("picture"),
      std::make_shared<toolkit::CommonDialog>("dialog"),
  };
  for (const auto& other : others) {
    item = items.AddControl(other);
    EXPECT_EQ(item->CtrlType, "") << other->Name();
    EXPECT_EQ(item->Ctrl, other);
    EXPECT_EQ(RaiseAllOn(*other), Heard{}) << other->Name();
  }
  EXPECT_EQ(items.Count(), 5);
}

TEST_F(ControlItemsTest, RequiredADataGridIsSilent) {
  const auto grid = Wrapped<toolkit::DataGrid>();
  EXPECT_EQ(item->CtrlType, "");
  EXPECT_EQ(item->Ctrl, grid);
  EXPECT_FALSE(item->controldg);
  EXPECT_EQ(RaiseAllOn(*grid), Heard{});
  EXPECT_EQ(HeardDuring([&] { grid->Raise(grid->ColResize); }), Heard{});
}

TEST_F(ControlItemsTest, ATextBoxForwardsItsEvents) {
  const auto box = Wrapped<TextBox>();
  EXPECT_EQ(HeardDuring([&] { box->SetText("x"); }), Heard{"Change box"});
  EXPECT_EQ(HeardDuring([&] { box->Raise(box->GotFocus); }), Heard{"GotFocus box"});
  EXPECT_EQ(HeardDuring([&] { box->Raise(box->LostFocus); }), Heard{"LostFocus box"});
  EXPECT_EQ(HeardDuring([&] { box->Raise(box->DblClick); }), Heard{"DblClick box"});
  EXPECT_EQ(HeardDuring([&] { box->Raise(box->Click); }), Heard{});
  EXPECT_EQ(RaiseAllOn(*box), (Heard{"GotFocus box", "LostFocus box", "Validate box", "LButtonDown box",
                                     "RButtonDown box", "MouseMove box"}));
}

TEST_F(ControlItemsTest, AMaskEdBoxForwardsNoMouse) {
  const auto box = Wrapped<MaskEdBox>();
  box->SetMask("##");
  EXPECT_EQ(HeardDuring([&] { box->SetText("12"); }), Heard{"Change box"});
  EXPECT_EQ(RaiseAllOn(*box), (Heard{"GotFocus box", "LostFocus box", "Validate box"}));
}

TEST_F(ControlItemsTest, ACheckBoxForwardsTheMouseAlone) {
  const auto box = Wrapped<CheckBox>();
  EXPECT_EQ(HeardDuring([&] {
              box->SetValue(1);
              box->Raise(box->Click);
            }),
            Heard{});
  EXPECT_EQ(RaiseAllOn(*box), (Heard{"LButtonDown box", "RButtonDown box", "MouseMove box"}));
}

TEST_F(ControlItemsTest, ALabelForwardsItsButtonsAlone) {
  const auto label = Wrapped<Label>();
  EXPECT_EQ(HeardDuring([&] { label->SetCaption("x"); }), Heard{});
  EXPECT_EQ(RaiseAllOn(*label), (Heard{"LButtonDown box", "RButtonDown box"}));
}

TEST_F(ControlItemsTest, AnImageForwardsItsButtonsAlone) {
  const auto image = Wrapped<Image>();
  EXPECT_EQ(RaiseAllOn(*image), (Heard{"LButtonDown box", "RButtonDown box"}));
}

TEST_F(ControlItemsTest, OnlyTheLeftAndTheRightButtonCount) {
  const std::vector<std::shared_ptr<Control>> controls = {Wrapped<TextBox>(), Wrapped<CheckBox>(),
                                                          Wrapped<Label>(), Wrapped<Image>()};
  for (const auto& control : controls) {
    EXPECT_EQ(PressOn(*control, 1), Heard{"LButtonDown box"});
    EXPECT_EQ(PressOn(*control, 2), Heard{"RButtonDown box"});
    for (const int other : {0, 3, 4, 5}) EXPECT_EQ(PressOn(*control, other), Heard{}) << other;
  }
}

TEST_F(ControlItemsTest, TheArgumentIsTheWrappedControl) {
  const auto box = Wrapped<TextBox>();
  box->SetText("x");
  box->Raise(box->DblClick);
  RaiseAllOn(*box);
  EXPECT_EQ(sources, std::vector<Control*>(8, box.get()));
}

TEST_F(ControlItemsTest, ButtonsHandThePropertiesAlong) {
  const auto box = Wrapped<TextBox>();
  item->Properties["a"] = Value(1);
  PressOn(*box, 1);
  PressOn(*box, 2);
  EXPECT_EQ(bags, (std::vector<PropertyBag*>{&item->Properties, &item->Properties}));
}

TEST_F(ControlItemsTest, ARefusalReachesTheControlsOwnCheck) {
  const auto text = Wrapped<TextBox>();
  const auto masked = Wrapped<MaskEdBox>();
  for (const bool refused : {true, false}) {
    refuse = refused;
    bool cancel = !refused;
    text->Raise(text->Validate, cancel);
    EXPECT_EQ(cancel, refused);
    cancel = !refused;
    masked->Raise(masked->Validate, cancel);
    EXPECT_EQ(cancel, refused);
  }
}

TEST_F(ControlItemsTest, TheCheckIsHandedWhatStandsInTheRefusalAlready) {
  ControlItems own;
  std::vector<bool> handed;
  const auto hook = own.Validate.Subscribe([&](Control&, bool& cancel) { handed.push_back(cancel); });
  const auto text = std::make_shared<TextBox>("text");
  const auto masked = std::make_shared<MaskEdBox>("masked");
  own.AddControl(text);
  own.AddControl(masked);
  for (const bool refused : {true, false}) {
    bool cancel = refused;
    text->Raise(text->Validate, cancel);
    EXPECT_EQ(cancel, refused);
    masked->Raise(masked->Validate, cancel);
    EXPECT_EQ(cancel, refused);
  }
  EXPECT_EQ(handed, (std::vector<bool>{true, true, false, false}));
}

TEST_F(ControlItemsTest, APropertyIsFoundByItsName) {
  Wrapped<Label>();
  item->Properties["width"] = Value(1200);
  EXPECT_EQ(item->GetProperty("width"), Value(1200));
  EXPECT_EQ(item->GetProperty("width", Value(1)), Value(1200));
}

TEST_F(ControlItemsTest, AnUnknownPropertyIsItsDefaultOrEmpty) {
  Wrapped<Label>();
  EXPECT_TRUE(item->GetProperty("width").IsUnset());
  EXPECT_EQ(item->GetProperty("width", Value("wide")), Value("wide"));
  EXPECT_TRUE(item->GetProperty("").IsUnset());
  EXPECT_TRUE(item->Properties.empty());
}

TEST_F(ControlItemsTest, ItemsStandAtTheirPositionsFromOne) {
  const auto first = std::make_shared<Label>("first");
  const auto second = std::make_shared<Label>("second");
  EXPECT_EQ(items.Count(), 0);
  const auto first_item = items.AddControl(first);
  const auto second_item = items.AddControl(second);
  EXPECT_EQ(items.Count(), 2);
  EXPECT_EQ(items.Item(1), first_item);
  EXPECT_EQ(items.Item(2), second_item);
  items.remove(1);
  EXPECT_EQ(items.Count(), 1);
  EXPECT_EQ(items.Item(1), second_item);
}

TEST_F(ControlItemsTest, OneControlMayBeWrappedTwice) {
  const auto box = Wrapped<TextBox>();
  items.AddControl(box);
  EXPECT_EQ(PressOn(*box, 1), (Heard{"LButtonDown box", "LButtonDown box"}));
}

TEST_F(ControlItemsTest, PositionsOutOfRangeFail) {
  Wrapped<Label>();
  for (const std::size_t position : {0U, 2U}) {
    try {
      items.Item(position);
      ADD_FAILURE() << position;
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.number(), 9);
    }
    EXPECT_THROW(items.remove(position), environment::Failure);
  }
  EXPECT_EQ(items.Count(), 1);
}

TEST_F(ControlItemsTest, ARemovedItemHearsNothingAnyMore) {
  const auto box = Wrapped<TextBox>();
  item.reset();
  items.remove(1);
  EXPECT_EQ(RaiseAllOn(*box), Heard{});
}

TEST_F(ControlItemsTest, ClearEndsAllHooks) {
  const auto text = Wrapped<TextBox>();
  const auto masked = Wrapped<MaskEdBox>();
  item.reset();
  items.Clear();
  EXPECT_EQ(items.Count(), 0);
  EXPECT_EQ(HeardDuring([&] { text->SetText("x"); }), Heard{});
  EXPECT_EQ(RaiseAllOn(*text), Heard{});
  EXPECT_EQ(RaiseAllOn(*masked), Heard{});
  Wrapped<Label>();
  EXPECT_EQ(items.Count(), 1);
}

TEST_F(ControlItemsTest, ClearingInTheMiddleOfAnEventIsSafe) {
  const auto box = Wrapped<TextBox>();
  item.reset();
  hooks.push_back(items.LButtonDown.Subscribe([this](Control&, PropertyBag&) { items.Clear(); }));
  hooks.push_back(items.Change.Subscribe([this](Control&) { items.Clear(); }));
  EXPECT_EQ(PressOn(*box, 1), Heard{"LButtonDown box"});
  items.AddControl(box);
  EXPECT_EQ(HeardDuring([&] { box->SetText("x"); }), Heard{"Change box"});
}

}  // namespace
}  // namespace dossierkit::tests
