// The road of one record: a work-history record typed by keyboard alone, and saved.
#include <gtest/gtest.h>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

TEST(WorkHistory, ARecordTypedByKeyboardAloneIsStored) {
  Visit visit;
  const bool saved = visit.OpenPerson(kPerson, [&] {
    EXPECT_EQ(visit.Focus(), "A01_A0101_v");
    EXPECT_EQ(visit.Caption("labPersonName"), "陆怀谷");
    visit.GoTo("A03");
    EXPECT_EQ(visit.Focus(), "A03_A0301_v");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    visit.user.Press('N', toolkit::kCtrl);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    visit.user.Type("202001");
    EXPECT_EQ(visit.Masked("A03_A0301").Text(), "2020年01月");
    visit.user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(visit.Focus(), "A03_A0301A_v");
    visit.user.Type("202212");
    visit.user.Press(toolkit::kKeyReturn);
    visit.user.Type("农业科学院");
    visit.user.Press('S', toolkit::kCtrl);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    EXPECT_EQ(visit.Focus(), "A03_A0301_v");
  });
  EXPECT_TRUE(saved);
  EXPECT_TRUE(visit.Messages().empty()) << visit.Messages().front();
  EXPECT_EQ(Rows(*visit.database,
                 "select A0301,A0301A,A0302 from A03 where A00='" + kPerson + "' and A0302='农业科学院'"),
            std::vector<std::string>{"2020/1/1|2022/12/1|农业科学院"});
}

TEST(WorkHistory, EverySetOfTheSamplePersonOpens) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A12", "A13",
                            "A14", "A15", "A21", "B01"}) {
      visit.GoTo(set);
      EXPECT_EQ(visit.OnShow().Name(), std::string("ctrlUser") + set);
    }
  });
  EXPECT_TRUE(visit.Messages().empty());
}

}  // namespace
}  // namespace dossierkit::tests
