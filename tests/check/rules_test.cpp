// What the check says of styles and check rules: one thing made wrong in the sample, and all that is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Rules : public Check {};

TEST_P(Rules, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"AStyleInWords",
     "update s_infoitem set style='Short Date' where itemname='A0301';",
     {"表 s_infoitem，行 A03.A0301，列 style：“Short Date”读不懂，列表中的这一列会面目全非或打不开；"
      "请改为 yyyy-mm、yyyy-mm-dd 这样的格式，或清空。"}},
    {"AStyleOfFourMonths",
     "update s_infoitem set style='mmmm',[Check]=null where itemname='A0301';",
     {"表 s_infoitem，行 A03.A0301，列 style：“mmmm”读不懂，列表中的这一列会面目全非或打不开；请改为 "
      "yyyy-mm、yyyy-mm-dd 这样的格式，或清空。"}},
    {"ATextWithOneBound",
     "update s_infoitem set [Check]='B 1900' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 Check：规则“B "
      "1900”少一个界限，录入后一离开该项，窗口就会关闭（提示“下标越界”）；"
      "请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"ADateWithOneBound",
     "update s_infoitem set [Check]='B 1900-01' where itemname='A0301';",
     {"表 s_infoitem，行 A03.A0301，列 Check：规则“B "
      "1900-01”应当有两个界限，现在不起作用，录入什么日期都能通过；"
      "请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"LengthsWithASemicolon",
     "update s_infoitem set [Check]='L 15;18' where itemname='A0131';",
     {"表 s_infoitem，行 A01.A0131，列 Check：规则“L 15;18”中的“15;18”不是数字，录入后一离开该项，"
      "窗口就会关闭（提示“类型不匹配”）；请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"LengthsWithoutALength",
     "update s_infoitem set [Check]='L ' where itemname='A0131';",
     {"表 s_infoitem，行 A01.A0131，列 Check：规则“L ”没有写长度，除了空值，录入什么都会被拒绝；"
      "请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"ARuleWithoutABlank",
     "update s_infoitem set [Check]='L15' where itemname='A0131';",
     {"表 s_infoitem，行 A01.A0131，列 Check：规则“L15”读不懂，应为一个字母、一个空格和用逗号分开的值，"
      "现在检查不完整或不起作用；请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"ARuleOfAnotherKind",
     "update s_infoitem set [Check]='M 15' where itemname='A0131';",
     {"表 s_infoitem，行 A01.A0131，列 Check：规则“M 15”的种类既不是 L 也不是 B，不起作用；请改为“L "
      "15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"BoundsOfANumber",
     "update s_infoitem set [Check]='B 1,9' where itemname='A0905';",
     {"表 s_infoitem，行 A09.A0905，列 Check：规则“B 1,9”是界限，只对日期和短文本有效，对这一项不起作用；"
      "请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，或清空。"}},
    {"BoundsInAnotherStyle",
     "update s_infoitem set [Check]='B 1900.01,2050.12' where itemname='A0301';",
     {"表 s_infoitem，行 A03.A0301，列 Check：规则“B 1900.01,2050.12”的界限“1900.01”与格式 yyyy-mm "
      "不一致，正确的日期会被拒绝，或错误的日期能通过；请改为“L 15,18”或“B 1900-01,2050-12”这样的写法，"
      "或清空。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Rules, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
