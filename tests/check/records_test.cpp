// What the check says of the records: one thing made wrong in the sample, and all that is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Records : public Check {};

TEST_P(Records, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"ADateWithT",
     "update A03 set A0301='1990-03-01T00:00:00' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“1990-03-01T00:00:00”不是能读的日期，显示和排序都会出错；请改为 yyyy-mm-dd "
      "的形式，没有日期的改为 NULL。"}},
    {"ADateWithAFraction",
     "update A03 set A0301='1990-03-01 00:00:00.000' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“1990-03-01 00:00:00.000”不是能读的日期，显示和排序都会出错；请改为 "
      "yyyy-mm-dd 的形式，没有日期的改为 NULL。"}},
    {"ADateWithAnOffset",
     "update A03 set A0301='1990-03-01 00:00:00+08:00' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“1990-03-01 00:00:00+08:00”不是能读的日期，显示和排序都会出错；请改为 "
      "yyyy-mm-dd 的形式，没有日期的改为 NULL。"}},
    {"ATextThatIsNoDate",
     "update A03 set A0301='不详' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“不详”不是能读的日期，显示和排序都会出错；请改为 yyyy-mm-dd 的形式，"
      "没有日期的改为 NULL。"}},
    {"ADateThatIsEmpty",
     "update A03 set A0301='' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“”不是能读的日期，显示和排序都会出错；请改为 yyyy-mm-dd 的形式，没有日期的改为 "
      "NULL。"}},
    {"ADateThatIsANumber",
     "update A03 set A0301=32933 where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0301：“32933”不是能读的日期，显示和排序都会出错；请改为 yyyy-mm-dd 的形式，"
      "没有日期的改为 NULL。"}},
    {"ANumberBeyond16Bits",
     "update A13 set A1301=40000 where A00='" + kPerson + "';",
     {"表 A13，行 A00=" + kPerson +
      "，列 A1301：“40000”不是 16 位整数，这条记录无法再保存；请改为 -32768 至 32767 的整数。"}},
    {"ACodeThatItsTableLacks",
     "update A03 set A0303='ZZ' where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0303：代码“ZZ”在代码表 LCZW 中没有，窗口中显示的是代码本身，离开该项时可能被清空；"
      "请改正代码，或在代码表中补上。"}},
    {"AShortTextThatNoSaveTakes",
     "update A03 set A0302=printf('%.*c',256,'x') where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0302：有 256 个字，超过 "
      "255，这条记录无法再保存（提示“数据应该小于256个字符长度”）；请缩短，"
      "或把这一项的 FieldType 改为 Ntext。"}},
    {"ATextLongerThanItsField",
     "update A03 set A0302=replace(printf('%.*c',121,'x'),'x','字') where A00='" + kPerson +
         "' and A0399=2; update A03 set A0302=replace(printf('%.*c',120,'x'),'x','字') where A00='" +
         kPerson + "' and A0399=1;",
     {"表 A03，行 A00=" + kPerson +
      " 第 2 条，列 A0302：有 121 个字，超过 FieldLength 的 "
      "120，在窗口中只能删减，不能再添字；请缩短，或加大 "
      "FieldLength。"}},
    {"OneOfTwoTextsLongerThanItsField",
     "update A04 set A0403=printf('%.*c',120,'x'),A0404=printf('%.*c',61,'x') where A00='" + kPerson +
         "' and A0499=1;",
     {"表 A04，行 A00=" + kPerson +
      " 第 1 条，列 A0404：有 61 个字，超过 FieldLength 的 60，在窗口中只能删减，不能再添字；请缩短，或加大 "
      "FieldLength。"}},
    {"ALongTextLongerThanItsField",
     "update A12 set A1201=printf('%.*c',1001,'x') where A00='" + kPerson + "';",
     {"表 A12，行 A00=" + kPerson +
      "，列 A1201：有 1001 个字，超过 FieldLength 的 1000，在窗口中只能删减，不能再添字；请缩短，或加大 "
      "FieldLength。"}},
    {"ATextOfAFieldWithoutALength",
     "update s_infoitem set FieldLength=null where itemname in ('A0302','A1201');"
     "update A12 set A1201=printf('%.*c',1001,'x') where A00='" +
         kPerson + "'; update A03 set A0302=printf('%.*c',255,'x') where A00='" + kPerson + "' and A0399=2;",
     {}},
    {"RecordsOfNobody",
     "insert into A03(A00,A0399,A0303) values('x',4,'ZZ'); insert into A03(A00,A0399) values('X',9);"
     "insert into A12(A00,A1201) values('x','1'); insert into A12(A00) values('x');",
     {"表 A03，行 A00=x，列 A00：A01 中没有这个标识，谁也看不到这些记录；请在 A01 中补上此人，或删除这些行。",
      "表 A12，行 A00=x，列 A00：A01 中没有这个标识，谁也看不到这些记录；请在 A01 "
      "中补上此人，或删除这些行。"}},
    {"LongTextsOfNobody",
     "insert into A12(A00,A1201) values('x',printf('%.*c',1001,'x'));",
     {"表 A12，行 A00=x，列 A00：A01 中没有这个标识，谁也看不到这些记录；请在 A01 "
      "中补上此人，或删除这些行。"}},
    {"RecordsWithoutAPerson",
     "insert into A12(A1201) values('1'); insert into A12(A00,A1201) values('','2');",
     {"表 A12，列 A00：有的行没有人员标识，谁也看不到它们；请填写所属人员的标识，或删除这些行。"}},
    {"RecordsOfAPersonInSmallLetters", "update A03 set A00=lower(A00) where A00='" + kPerson + "';", {}},
    {"APersonTypeThatDoesNotExist",
     "update A01 set A0136=4 where A00='" + kPerson + "'; update A01 set A0136=3 where A0199=2;",
     {"表 A01，行 A00=" + kPerson +
      "，列 A0136：“4”不是 1、2、3 之一，以它为 PersonType 打开此人时，菜单的最后一项不是推荐情况，一点击它，"
      "窗口就会关闭；请改为 1、2 或 3。"}},
    {"APersonTypeOfZero",
     "update A01 set A0136=0 where A00='" + kPerson + "';",
     {"表 A01，行 A00=" + kPerson +
      "，列 A0136：“0”不是 1、2、3 之一，以它为 PersonType 打开此人时，菜单的最后一项不是推荐情况，一点击它，"
      "窗口就会关闭；请改为 1、2 或 3。"}},
    {"APersonTypeThatIsNull",
     "update A01 set A0136=null where A00='" + kPerson + "';",
     {"表 A01，行 A00=" + kPerson +
      "，列 A0136：是空值，不知道应以哪一个 PersonType 打开此人，也就不知道菜单的最后一项是哪一种推荐情况；"
      "请改为 1、2 或 3。"}},
    {"ARunningNumberTwice", "update A01 set A0199=2 where A0199=3;", {}},
    {"OneRecordThatIsNotNumberOne",
     "delete from A03 where A00='" + kPerson + "' and A0399<>2;",
     {"表 A03，行 A00=" + kPerson +
      "，列 A0399：唯一一条记录的序号是 2 而不是 1，打开后不改动代码项就保存，会把代码项写成空值；"
      "请为此人的记录重新编号。"}},
    {"AGapInTheRecordNumbers",
     "update A03 set A0399=9 where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      "，列 A0399：序号不是从 1 连续编到 "
      "5，打开后不改动代码项就保存，会把代码项写成空值；请为此人的记录重新编号。"}},
    {"EqualRecordNumbers",
     "update A03 set A0399=3 where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      "，列 A0399：有不止一条记录的序号是 "
      "3，保存或删除其中一条会同时替换或删除其余的；请为此人的记录重新编号。"}},
    {"ARecordNumberThatIsNull",
     "update A03 set A0399=null where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      "，列 A0399：有记录的序号是空值，选中它时窗口会关闭；请为此人的记录重新编号。"}},
    {"ARecordNumberOfZero",
     "update A03 set A0399=0 where A00='" + kPerson + "' and A0399=2;",
     {"表 A03，行 A00=" + kPerson +
      "，列 A0399：有记录的序号“0”不是大于 0 "
      "的整数，选中它时表单是空的或窗口会关闭；请为此人的记录重新编号。"}},
    {"APersonTwice",
     "insert into A01(A00,A0101,A0136,A0199) values('47eaa099-2cb6-416d-a6dc-283cf0480ff9','陆怀谷',1,13);",
     {"表 A01，行 A00=" + kPerson +
      "，列 A00：有 2 行，此人会被拒绝（提示“无法维护此人信息”）；请只保留一行。"}},
    {"ARecordTwiceInASetOfOne",
     "insert into A12(A00,A1201) values('" + kPerson + "','再一份');",
     {"表 A12，行 A00=" + kPerson +
      "，列 A00：有 2 行，而“主要成就”一人只有一条，窗口中只看得到第一行，保存会删除其余的；请只保留一行。"}},
    {"TheLastRunningNumberButOne", "update A01 set A0199=32766 where A00='" + kPerson + "';", {}},
    {"TheLastRunningNumber",
     "update A01 set A0199=32767 where A00='" + kPerson + "';",
     {"表 A01，列 A0199：最大值 32767 已到 16 "
      "位整数的上限，新人员无法保存（提示“溢出”）；请重新编排人员序号。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Records, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
