// The stored design properties of a page: plain values that do not touch its look.
#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

TEST(StoredProperties, AreZeroAndFalseAtFirst) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    const auto& stored = visit.OnShow().stored;
    EXPECT_EQ(stored.BackColor, 0);
    EXPECT_EQ(stored.ForeColor, 0);
    EXPECT_FALSE(stored.Enabled);
    EXPECT_EQ(stored.BackStyle, 0);
    EXPECT_EQ(stored.BorderStyle, 0);
    EXPECT_EQ(stored.Font, visit.Window().GetFont());
  });
}

TEST(StoredProperties, DoNotTouchTheLookOfThePage) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    auto& page = visit.OnShow();
    const auto look = std::tuple(page.BackColor(), page.ForeColor(), page.Enabled(), page.GetFont());
    page.stored = {-1, 255, false, {"黑体", 20, true}, 1, -1};
    EXPECT_EQ(std::tuple(page.BackColor(), page.ForeColor(), page.Enabled(), page.GetFont()), look);
    visit.user.Type("x");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "x陆怀谷");
    EXPECT_EQ(page.stored.BackColor, -1);
    EXPECT_EQ(page.stored.ForeColor, 255);
    EXPECT_EQ(page.stored.Font.name, "黑体");
    EXPECT_EQ(page.stored.BackStyle, 1);
    EXPECT_EQ(page.stored.BorderStyle, -1);
  });
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
    visit.Window().UserResize(20000, 15000);
    EXPECT_GT(raised, 0);
  });
}

}  // namespace
}  // namespace dossierkit::tests
