// A whole new person, all sixteen sets, by keyboard alone.
#include <gtest/gtest.h>

#include "tests/support/basic_data.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::kAlt;
using toolkit::kKeyDown;
using toolkit::kKeyReturn;
using Texts = std::vector<std::string>;

class NewPerson : public ::testing::Test {
 protected:
  // Types the values field by field, Enter behind each but the last.
  void Fill(const Texts& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      visit_.user.Type(values[i]);
      if (i + 1 < values.size()) visit_.user.Press(kKeyReturn);
    }
  }
  // From the first field of a page: back into the menu, one item down, and in.
  void NextSet(const std::string& set) {
    visit_.user.BackTab();
    ASSERT_EQ(visit_.Focus(), "VMenu1");
    visit_.user.Press(kKeyDown);
    visit_.user.Press(kKeyReturn);
    ASSERT_EQ(visit_.OnShow().Name(), "ctrlUser" + set);
    EXPECT_EQ(visit_.Caption("labOpt"), "当前操作：增加");
  }
  void Save() { visit_.user.Press('S', kAlt); }
  Texts Stored(const std::string& columns, const std::string& set) {
    return Rows(*visit_.database, "select " + columns + " from " + set + " where A00='" + person_ + "'");
  }

  Visit visit_;
  std::string person_;
};

TEST_F(NewPerson, IsEnteredInAllSixteenSetsByKeyboardAlone) {
  const bool saved = visit_.OpenNew([&] {
    EXPECT_EQ(visit_.Focus(), "A01_A0101_v");
    EXPECT_EQ(visit_.Caption("labOpt"), "当前操作：增加");
    EXPECT_EQ(visit_.Caption("labPersonName"), "");
    // "hz" is 汉族 and 回族, so the picker asks.
    visit_.script.WillRun([this](toolkit::Form&) {
      visit_.user.Tab();
      visit_.user.Press(kKeyReturn);
    });
    Fill(kBasicDataAsTyped);
    EXPECT_EQ(visit_.Focus(), "A01_A0131_v");
    Save();
    ASSERT_TRUE(visit_.Messages().empty()) << visit_.Messages().front();
    EXPECT_EQ(visit_.Caption("labPersonName"), "钱三多");
    EXPECT_EQ(visit_.Caption("labOpt"), "当前操作：修改");
    person_ = visit_.Window().personID;

    NextSet("A02");
    Fill({"199809", "200207", "江南大学", "食品科学", "gxxsxw"});
    visit_.user.Tab();  // resolves the code, which Enter in the last field would not
    Save();
    visit_.user.Press('N', kAlt);
    EXPECT_EQ(visit_.Caption("labOpt"), "当前操作：增加");
    Fill({"200209", "", "江南大学", "食品工程", ""});
    visit_.user.Press(kKeyReturn);  // the last field saves and opens the next record

    NextSet("A03");
    Fill({"200408", "", "酿造研究所", "gjgcs", ""});
    visit_.user.Press(kKeyReturn);
    NextSet("A04");
    Fill({"201501", "", "酿造学会", "理事"});
    Save();
    NextSet("A05");
    Fill({"200801", "200812", "某研究中心", "访问学者", "日本", "研究发酵"});
    Save();
    NextSet("A06");
    Fill({"201810", "酿造会议", "酿造学会", "无锡", "论黄酒"});
    Save();
    NextSet("A08");
    Fill({"新酒曲", "201612", "创新", "效益", "孙某", "zc"});
    Save();
    NextSet("A09");
    Fill({"新酒曲", "科技奖", "某省", "1"});
    for (const char* value : {"ydj", "2019", "", "孙某", "sbj"}) {
      visit_.user.Tab();  // Enter would save in four of these fields
      visit_.user.Type(value);
    }
    Save();
    NextSet("A10");
    Fill({"论黄酒", "2020", "hz", "孙某", "2", "学报", "说明"});
    Save();
    NextSet("A11");
    Fill({"新菌种", "2024", "钱三多"});
    visit_.user.Tab();
    visit_.user.Type("评价");
    Save();
    NextSet("A12");
    visit_.user.Type("成就");
    Save();
    NextSet("A13");
    Fill({"3", "4", "5", "6", "概述"});
    Save();
    NextSet("A14");
    visit_.user.Type("认识");
    Save();
    NextSet("A15");
    Fill({"新项目", "自选", "路线", "孙某"});
    visit_.user.Tab();
    visit_.user.Type("意义");
    Save();
    NextSet("A21");
    Fill({"zg", "2019年至2039年", "酒曲专利", "fmzl", "研究所", "1"});
    Save();
    NextSet("B01");
    visit_.user.Type("主管部门");
    visit_.user.Tab();
    Fill({"第一行", "第二行"});
    Save();
    visit_.user.Press('X', kAlt);
  });
  EXPECT_TRUE(saved);
  for (const auto& message : visit_.Messages()) ADD_FAILURE() << message;
  EXPECT_FALSE(visit_.Window().Loaded());

  EXPECT_EQ(Stored("A0101,A0104,A0140,A0108,A0110,A0115,A0117,A0128,A0131,A0136", "A01"),
            (Texts{"钱三多|1979/10/5|江南大学|2004/7/1|酿造|研究所|214000|2010|320200197910050011|1"}));
  EXPECT_EQ(Stored("A0102,A0103,A0114,A0105,A0106,A0107,A0113,A0112,A0122,A0123,A0124,A0125", "A01"),
            (Texts{"1|01|320481|13|11|208|303|082|210|30|20|20"}));
  EXPECT_EQ(Stored("A0201,A0201A,A0202,A0203,A0204,A0299", "A02"),
            (Texts{"1998/9/1|2002/7/1|江南大学|食品科学|408|1", "2002/9/1|NULL|江南大学|食品工程||2"}));
  EXPECT_EQ(Stored("A0301,A0301A,A0302,A0303,A0304,A0399", "A03"),
            (Texts{"2004/8/1|NULL|酿造研究所||082|1"}));
  EXPECT_EQ(Stored("A0401,A0403,A0404,A0499", "A04"), (Texts{"2015/1/1|酿造学会|理事|1"}));
  EXPECT_EQ(Stored("A0501,A0502,A0503,A0506,A0504,A0505,A0599", "A05"),
            (Texts{"2008/1/1|2008/12/1|某研究中心|访问学者|日本|研究发酵|1"}));
  EXPECT_EQ(Stored("A0601,A0603,A0602,A0604,A0605,A0699", "A06"),
            (Texts{"2018/10/1|酿造会议|酿造学会|无锡|论黄酒|1"}));
  EXPECT_EQ(Stored("A0801,A0802,A0803,A0804,A0806,A0805,A0899", "A08"),
            (Texts{"新酒曲|2016/12/1|创新|效益|孙某|1|1"}));
  EXPECT_EQ(Stored("A0901,A0902,A0904,A0905,A0906,A0907,A0908,A0909,A0910,A0999", "A09"),
            (Texts{"新酒曲|科技奖|某省|1|1|2019||孙某|3|1"}));
  EXPECT_EQ(Stored("A1001,A1002,A1003,A1005,A1004,A1006,A1007,A1099", "A10"),
            (Texts{"论黄酒|2020|02|孙某|2|学报|说明|1"}));
  EXPECT_EQ(Stored("A1101,A1102,A1103,A1104,A1199", "A11"), (Texts{"新菌种|2024|钱三多|评价|1"}));
  EXPECT_EQ(Stored("A1201", "A12"), (Texts{"成就"}));
  EXPECT_EQ(Stored("A1302,A1303,A1301,A1304,A1305", "A13"), (Texts{"3|4|5|6|概述"}));
  EXPECT_EQ(Stored("A1401", "A14"), (Texts{"认识"}));
  EXPECT_EQ(Stored("A1501,A1502,A1503,A1505,A1504,A1599", "A15"), (Texts{"新项目|自选|路线|孙某|意义|1"}));
  EXPECT_EQ(Stored("A2111,A2107,A2101,A2104,A2112,A2113,A2199", "A21"),
            (Texts{"156|2019年至2039年|酒曲专利|1|研究所|1|1"}));
  EXPECT_EQ(Stored("B0101,B0102", "B01"), (Texts{"主管部门|第一行\r\n第二行"}));
}

TEST_F(NewPerson, OtherSetsAreRefusedUntilTheBasicDataAreStored) {
  const bool saved = visit_.OpenNew([&] {
    visit_.user.BackTab();
    visit_.user.Press(kKeyDown);
    visit_.user.Press(kKeyReturn);
    EXPECT_EQ(visit_.OnShow().Name(), "ctrlUserA01");
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ(visit_.Messages(), (Texts{"必须先维护基本信息集，然后再维护其它信息集。"}));
}

}  // namespace
}  // namespace dossierkit::tests
