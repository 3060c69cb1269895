// How the metadata and the values of a record reach the controls of a page.
#include <gtest/gtest.h>

#include "metadata/field_items.h"
#include "metadata/loaders.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using environment::Failure;
using environment::Value;

constexpr toolkit::Color kLightBlue = 16572617;
constexpr toolkit::Color kSystemWindow = 2147483653;

// A field of the page of set A03, ready to be changed.
class Filling : public ::testing::Test {
 protected:
  // Opens the page of A03 and hands the metadata of a record without values to `scene`.
  void OnPage(const std::function<void(ctrlUser& page)>& scene) {
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A03");
      items_ = LoadFieldItems("A03");
      scene(visit_.OnShow());
    });
  }
  cFieldItem& Item(const std::string& key) { return *items_->Item(std::string_view(key)); }
  toolkit::TextBox& Box() { return visit_.Text("A03_A0302"); }
  toolkit::MaskEdBox& Month() { return visit_.Masked("A03_A0301"); }

  Visit visit_;
  std::shared_ptr<cFieldItems> items_;
};

TEST_F(Filling, ACodedFieldIsLightBlueAndShowsTheCaptionOfItsCode) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0303").Dmcod = "310";
    Item("A03_A0303").Dmcpt = "某长";
    page.setCtrl(items_);
    EXPECT_EQ(visit_.Text("A03_A0303").BackColor(), kLightBlue);
    EXPECT_EQ(visit_.Text("A03_A0303").Text(), "某长");
    EXPECT_EQ(visit_.Text("A03_A0302").BackColor(), kSystemWindow);
  });
}

TEST_F(Filling, ACodeWithoutACaptionIsShownItself) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0303").Dmcod = "310";
    page.setCtrl(items_);
    EXPECT_EQ(visit_.Text("A03_A0303").Text(), "310");
  });
}

TEST_F(Filling, AnUnsetValueIsAnEmptyText) {
  OnPage([&](ctrlUser& page) {
    page.setCtrl(items_);
    EXPECT_EQ(Box().Text(), "");
    EXPECT_EQ(Month().Text(), "____年__月");
  });
}

TEST_F(Filling, ColourFollowsTheMetadataOfEachFill) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").CodeTable = "GB6864";
    page.setCtrl(items_);
    EXPECT_EQ(Box().BackColor(), kLightBlue);
    Item("A03_A0302").CodeTable = "";
    page.setCtrl(items_);
    EXPECT_EQ(Box().BackColor(), kSystemWindow);
  });
}

TEST_F(Filling, LengthIsLimitedForTheTwoTypesWithACapitalAlone) {
  OnPage([&](ctrlUser& page) {
    cFieldItem& item = Item("A03_A0302");
    const auto limit = [&](const char* type, const char* length, const char* codes) {
      item.FieldType = type;
      item.FieldLength = length;
      item.CodeTable = codes;
      page.setCtrl(items_);
      return Box().MaxLength();
    };
    EXPECT_EQ(limit("Varchar", "120", ""), 120U);
    EXPECT_EQ(limit("Ntext", "500", ""), 500U);
    EXPECT_EQ(limit("Varchar", "", ""), 0U);
    EXPECT_EQ(limit("Varchar", "120", "GB6864"), 0U);
    EXPECT_EQ(limit("int", "5", ""), 0U);
    EXPECT_EQ(limit("Varchar", "0", ""), 0U);
  });
}

TEST_F(Filling, RequiredTypesInOtherLettersSetNoLimit) {
  OnPage([&](ctrlUser& page) {
    cFieldItem& item = Item("A03_A0302");
    item.FieldLength = "120";
    for (const char* type : {"varchar", "ntext", "VARCHAR", "NTEXT", "NText"}) {
      item.FieldType = type;
      Box().SetMaxLength(7);
      page.setCtrl(items_);
      EXPECT_EQ(Box().MaxLength(), 0U) << type;
    }
  });
}

TEST_F(Filling, ALengthThatIsNoNumberFails) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").FieldLength = "viele";
    Item("A03_A0302").Dmcod = "新单位";
    EXPECT_THROW(page.setCtrl(items_), Failure);
    EXPECT_EQ(Box().Text(), "新单位") << "the length comes last";
    Item("A03_A0302").FieldLength = "40000";
    EXPECT_THROW(page.setCtrl(items_), Failure);
  });
}

TEST_F(Filling, ALengthThatIsNoNumberIsNotReadForAnUnlimitedField) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").FieldLength = "viele";
    Item("A03_A0302").FieldType = "varchar";
    EXPECT_NO_THROW(page.setCtrl(items_));
  });
}

TEST_F(Filling, AMaskedDateIsFormattedByTheControlsOwnFormat) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0301").FieldType = "DateTime";
    Item("A03_A0301").Dmcod = environment::DateTime{1990, 3, 5};
    page.setCtrl(items_);
    EXPECT_EQ(Month().Text(), "1990年03月");
    Item("A03_A0301").Dmcod = "1985-12-01";
    page.setCtrl(items_);
    EXPECT_EQ(Month().Text(), "1985年12月");
  });
}

TEST_F(Filling, AMaskedTextOrNumberIsShownAsItIs) {
  OnPage([&](ctrlUser& page) {
    for (const char* type : {"varchar", "Varchar", "int", "INT"}) {
      Item("A03_A0301").FieldType = type;
      Item("A03_A0301").Dmcod = "";
      page.setCtrl(items_);
      Item("A03_A0301").Dmcod = "2001年07月";
      page.setCtrl(items_);
      EXPECT_EQ(Month().Text(), "2001年07月") << type;
    }
  });
}

TEST_F(Filling, AMaskedFieldOfAnotherTypeIsLeftAlone) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0301").FieldType = "varchar";
    Item("A03_A0301").Dmcod = "2001年07月";
    page.setCtrl(items_);
    Item("A03_A0301").Dmcod = "1990年01月";
    for (const char* type : {"ntext", "bit", "", "money"}) {
      Item("A03_A0301").FieldType = type;
      page.setCtrl(items_);
      EXPECT_EQ(Month().Text(), "2001年07月") << type;
    }
  });
}

TEST_F(Filling, AnEmptyMaskedFieldOfAnyTypeShowsItsBlankMask) {
  OnPage([&](ctrlUser& page) {
    for (const char* type : {"datetime", "varchar", "ntext"}) {
      Month().SetText("2001年07月");
      Item("A03_A0301").FieldType = type;
      Item("A03_A0301").Dmcod = "";
      page.setCtrl(items_);
      EXPECT_EQ(Month().Text(), "____年__月") << type;
    }
  });
}

TEST_F(Filling, CaptionsComeFromTheMetadataAndRequiredOnesAreBold) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").ItemDesc = "单位 名称";
    Item("A03_A0302").IsNUll = false;
    Item("A03_A0304").IsNUll = true;
    page.setCtrl(items_);
    const auto& label = *visit_.user.Find<toolkit::Label>("A03_A0302_c");
    EXPECT_EQ(label.Caption(), "单位 名称");
    EXPECT_TRUE(label.FontBold());
    EXPECT_FALSE(visit_.user.Find<toolkit::Label>("A03_A0304_c")->FontBold());
  });
}

TEST_F(Filling, ACaptionFollowsEachFillThoughTheMetadataHasNoneOrItIsRequiredNoMore) {
  OnPage([&](ctrlUser& page) {
    const auto& label = *visit_.user.Find<toolkit::Label>("A03_A0302_c");
    Item("A03_A0302").IsNUll = false;
    page.setCtrl(items_);
    EXPECT_EQ(label.Caption(), "工作单位");
    EXPECT_TRUE(label.FontBold());
    Item("A03_A0302").IsNUll = true;
    Item("A03_A0302").ItemDesc = "";
    page.setCtrl(items_);
    EXPECT_EQ(label.Caption(), "");
    EXPECT_FALSE(label.FontBold());
  });
}

TEST_F(Filling, ACaptionOfACodeIsShownForAFieldWithoutACodeTableToo) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").Dmcod = "310";
    Item("A03_A0302").Dmcpt = "某长";
    page.setCtrl(items_);
    EXPECT_EQ(Box().Text(), "某长");
    EXPECT_EQ(Box().BackColor(), kSystemWindow);
  });
}

TEST_F(Filling, AFillThatFailsHasFilledWhatStandsBefore) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0302").Dmcod = "前";
    Item("A03_A0303").Dmcod = "后";
    items_->remove("A03_A0304");
    EXPECT_THROW(page.setCtrl(items_), Failure);
    EXPECT_EQ(Month().Text(), "____年__月");
    EXPECT_EQ(Box().Text(), "前");
    EXPECT_NE(visit_.Text("A03_A0303").Text(), "后");
    EXPECT_NE(visit_.Text("A03_A0303").Text(), "");
  });
}

TEST_F(Filling, NeverLeavesTheMarkOfEdits) {
  OnPage([&](ctrlUser& page) {
    visit_.user.Type("2");
    EXPECT_TRUE(page.WhInfo().IsChange);
    Item("A03_A0302").Dmcod = "别的单位";
    page.setCtrl(items_);
    EXPECT_FALSE(page.WhInfo().IsChange);
  });
}

TEST_F(Filling, AFieldWithoutItsMetadataFailsAndNoEditIsNoticedAnyMore) {
  OnPage([&](ctrlUser& page) {
    items_->remove("A03_A0304");
    try {
      page.setCtrl(items_);
      ADD_FAILURE() << "a field without metadata was filled";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), environment::kInvalidCall);
    }
    visit_.user.Type("1");
    EXPECT_FALSE(page.WhInfo().IsChange);
  });
}

TEST_F(Filling, MetadataWithoutAControlIsNotShown) {
  OnPage([&](ctrlUser& page) {
    auto extra = std::make_shared<cFieldItem>();
    items_->Add(extra, "A03_A0398");
    EXPECT_NO_THROW(page.setCtrl(items_));
  });
}

TEST_F(Filling, TheKeyIsTheNameWithoutItsLastTwoCharacters) {
  OnPage([&](ctrlUser& page) {
    Item("A03_A0301A").Dmcod = "2003-06-01";
    page.setCtrl(items_);
    EXPECT_EQ(visit_.Masked("A03_A0301A").Text(), "2003年06月");
    EXPECT_EQ(Month().Text(), "____年__月");
  });
}

TEST_F(Filling, NothingBeforeTheFirstFillMarksTheRecordAsEdited) {
  OnPage([&](ctrlUser&) {
    const auto page = visit_.Window().LoadUCtrl("ctrlUserA03");
    visit_.Text("A03_A0302").SetText("x");
    EXPECT_FALSE(page->WhInfo().IsChange);
    page->setCtrl(items_);
    visit_.Text("A03_A0302").SetText("y");
    EXPECT_TRUE(page->WhInfo().IsChange);
  });
}

// The page of A12 with a check box, and a list box with the ending of a value, added to its design.
class PageWithACheckBox : public ctrlUser {
 public:
  explicit PageWithACheckBox(const std::string& name) : ctrlUser(name, *FindPageDesign("A12")) {
    Controls().Make<toolkit::CheckBox>("A12_A1202_v");
    Controls().Make<toolkit::CommandButton>("A12_A1203_v");
    Controls().Make<toolkit::CheckBox>("A12_A1204_c");
  }
};

class CheckBoxes : public ::testing::Test {
 protected:
  void OnPage(const std::function<void(DossierPage&, toolkit::CheckBox&)>& scene) {
    visit_.desktop.RegisterClass("DossierKit.ctrlUserA12", [](const std::string& name) {
      return std::make_shared<PageWithACheckBox>(name);
    });
    visit_.OpenPerson(kPerson, [&] {
      const auto page = visit_.Window().LoadUCtrl("ctrlUserA12");
      items_ = LoadFieldItems("A12");
      item_ = std::make_shared<cFieldItem>();
      item_->FieldType = "bit";
      auto added = item_;
      items_->Add(added, "A12_A1202");
      page->SetFieldItems(items_);
      scene(*page, *visit_.user.Find<toolkit::CheckBox>("A12_A1202_v"));
    });
  }

  Visit visit_;
  std::shared_ptr<cFieldItems> items_;
  std::shared_ptr<cFieldItem> item_;
};

TEST_F(CheckBoxes, AreOffForFalseZeroAndNothingAndElseOn) {
  OnPage([&](DossierPage& page, toolkit::CheckBox& box) {
    for (const Value& off : {Value(false), Value(0), Value(""), Value("0"), Value("False"), Value()}) {
      box.SetValue(1);
      item_->Dmcod = off;
      page.setCtrl(items_);
      EXPECT_EQ(box.Value(), 0) << environment::TextOf(off);
    }
    for (const Value& on : {Value(true), Value(1), Value(-1), Value("1"), Value("True"), Value("是")}) {
      box.SetValue(0);
      item_->Dmcod = on;
      page.setCtrl(items_);
      EXPECT_EQ(box.Value(), 1) << environment::TextOf(on);
    }
  });
}

TEST_F(CheckBoxes, AChangeOfOneDoesNotMarkTheRecordAsEdited) {
  OnPage([&](DossierPage& page, toolkit::CheckBox& box) {
    page.setCtrl(items_);
    visit_.user.Click("A12_A1202_v");
    EXPECT_EQ(box.Value(), 1);
    EXPECT_FALSE(page.WhInfo().IsChange);
  });
}

TEST_F(CheckBoxes, ControlsOfAnotherKindNeedNoMetadata) {
  OnPage([&](DossierPage& page, toolkit::CheckBox&) { EXPECT_NO_THROW(page.setCtrl(items_)); });
}

}  // namespace
}  // namespace dossierkit::tests
