// The stored design properties of a page: plain values that do not touch its look.
#include "pages/stored_properties.h"

#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

const toolkit::Font kSurrounding = {"宋体", 9, false};
const toolkit::Font kOther = {"黑体", 20, true};

TEST(StoredProperties, OfANewPageAreZeroAndFalseWithTheFontOfTheWindow) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    const auto& stored = visit.OnShow().stored;
    EXPECT_EQ(stored.BackColor(), 0);
    EXPECT_EQ(stored.ForeColor(), 0);
    EXPECT_FALSE(stored.Enabled());
    EXPECT_EQ(stored.BackStyle(), 0);
    EXPECT_EQ(stored.BorderStyle(), 0);
    EXPECT_EQ(stored.Font(), visit.Window().GetFont());
    EXPECT_TRUE(stored.Changed().empty());
  });
}

TEST(StoredProperties, TheFontOfANewPageIsTheSurroundingForms) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.Window().SetFont(kOther);
    visit.GoTo("A03");
    EXPECT_EQ(visit.OnShow().stored.Font(), kOther);
    EXPECT_NE(visit.OnShow().GetFont(), kOther) << "it is stored, and touches nothing";
  });
}

TEST(StoredProperties, SettingOneToTheValueThatItHasMarksItAsChanged) {
  StoredProperties stored;
  stored.InitProperties(kSurrounding);
  stored.SetBackColor(0);
  stored.SetEnabled(false);
  stored.SetFont(kSurrounding);
  EXPECT_EQ(stored.Changed(), (std::set<std::string>{"BackColor", "Enabled", "Font"}));
}

TEST(StoredProperties, DoNotTouchTheLookOfThePage) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    auto& page = visit.OnShow();
    const auto look = std::tuple(page.BackColor(), page.ForeColor(), page.Enabled(), page.GetFont());
    page.stored.SetBackColor(-1);
    page.stored.SetForeColor(255);
    page.stored.SetEnabled(false);
    page.stored.SetFont(kOther);
    page.stored.SetBackStyle(1);
    page.stored.SetBorderStyle(-1);
    EXPECT_EQ(std::tuple(page.BackColor(), page.ForeColor(), page.Enabled(), page.GetFont()), look);
    visit.user.Type("x");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "x陆怀谷");
    EXPECT_EQ(page.stored.BackColor(), -1);
    EXPECT_EQ(page.stored.ForeColor(), 255);
    EXPECT_EQ(page.stored.Font(), kOther);
    EXPECT_EQ(page.stored.BackStyle(), 1);
    EXPECT_EQ(page.stored.BorderStyle(), -1);
  });
}

TEST(StoredProperties, SettingOneMarksItAsChangedUntilItIsWritten) {
  StoredProperties stored;
  stored.SetEnabled(true);
  stored.SetBackColor(7);
  EXPECT_EQ(stored.Changed(), (std::set<std::string>{"BackColor", "Enabled"}));
  DesignBag bag;
  stored.WriteProperties(bag, kSurrounding);
  EXPECT_TRUE(stored.Changed().empty());
}

TEST(StoredProperties, AreWrittenAndReadUnderTheirNames) {
  StoredProperties stored;
  stored.InitProperties(kSurrounding);
  stored.SetBackColor(1);
  stored.SetForeColor(2);
  stored.SetEnabled(true);
  stored.SetFont(kOther);
  stored.SetBackStyle(3);
  stored.SetBorderStyle(4);
  DesignBag bag;
  stored.WriteProperties(bag, kSurrounding);
  EXPECT_EQ(bag, (DesignBag{{"BackColor", std::int32_t{1}},
                            {"ForeColor", std::int32_t{2}},
                            {"Enabled", true},
                            {"Font", kOther},
                            {"BackStyle", std::int16_t{3}},
                            {"BorderStyle", std::int16_t{4}}}));
  StoredProperties read;
  read.ReadProperties(bag, kSurrounding);
  EXPECT_EQ(read.BackColor(), 1);
  EXPECT_EQ(read.ForeColor(), 2);
  EXPECT_TRUE(read.Enabled());
  EXPECT_EQ(read.Font(), kOther);
  EXPECT_EQ(read.BackStyle(), 3);
  EXPECT_EQ(read.BorderStyle(), 4);
}

TEST(StoredProperties, DefaultsAreLeftOutAndComeBack) {
  StoredProperties stored;
  stored.InitProperties(kOther);
  DesignBag bag;
  stored.WriteProperties(bag, kOther);
  EXPECT_TRUE(bag.empty());
  stored.SetBackColor(5);
  stored.SetFont(kOther);
  stored.ReadProperties(bag, kSurrounding);
  EXPECT_EQ(stored.BackColor(), 0);
  EXPECT_FALSE(stored.Enabled());
  EXPECT_EQ(stored.Font(), kSurrounding);
}

TEST(StoredProperties, AValueOfAnotherKindIsTheDefault) {
  StoredProperties stored;
  stored.ReadProperties({{"BackColor", true}, {"Enabled", std::int32_t{1}}, {"BackStyle", std::int16_t{2}}},
                        kSurrounding);
  EXPECT_EQ(stored.BackColor(), 0);
  EXPECT_FALSE(stored.Enabled());
  EXPECT_EQ(stored.BackStyle(), 2);
}

TEST(StoredProperties, RefreshDoesNothing) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.user.Type("x");
    const auto before = visit.statements.size();
    visit.OnShow().Refresh();
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "x陆怀谷");
    EXPECT_EQ(visit.statements.size(), before);
  });
}

TEST(StoredProperties, ResizeIsRaisedWheneverThePageIsResized) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    auto& page = visit.OnShow();
    int raised = 0;
    const auto hook = page.Resize.Subscribe([&] { ++raised; });
    page.Move({300, 300, 20000, 15000});
    EXPECT_EQ(raised, 1);
    page.Move({0, 0, 20000, 15000});
    EXPECT_EQ(raised, 1) << "moved, not resized";
    page.Move({0, 0, 20000, 15001});
    EXPECT_EQ(raised, 2);
    // The window gives it first its width, then its height.
    visit.Window().UserResize(9000, 7000);
    EXPECT_EQ(raised, 4);
  });
}

}  // namespace
}  // namespace dossierkit::tests
