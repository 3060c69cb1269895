// What the check says of the fields of a set: one thing made wrong in the sample, and all that is found.
#include "tests/check/check_test.h"

namespace dossierkit::tests {
namespace {

class Fields : public Check {};

TEST_P(Fields, AreTold) {
  database->RunScript(GetParam().script);
  EXPECT_EQ(Faults(), GetParam().faults);
}

const std::vector<Mutation> kMutations = {
    {"ARowOfAControlThatIsMissing",
     "delete from s_infoitem where itemname='A0302';",
     {"表 s_infoitem，行 "
      "A03."
      "A0302：缺少这一行，而页面上有这一项，一打开“工作经历”，窗口就会关闭（提示“无效的过程调用或参数”）；"
      "请补上这一行。"}},
    {"ARowTwice",
     "insert into s_infoitem select * from s_infoitem where itemname='A0404';",
     {"表 s_infoitem，行 A04.A0404，列 "
      "itemname：这一项有不止一行，一打开“主要兼职”，窗口就会关闭（提示“此键已经与该集合的一个元素关联”）；"
      "请只保留一行。"}},
    {"AColumnThatIsMissing",
     "alter table A03 drop column A0303;",
     {"表 s_infoitem，行 A03.A0303，列 itemname：表 A03 没有列 A0303，一打开“工作经历”，窗口就会关闭；"
      "请在表中补上这一列，或改正 itemname。"}},
    {"ATypeThatIsUnknown",
     "update s_infoitem set FieldType='Text' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FieldType：“Text”不是已知的类型，这一项能录入却不会保存，"
      "原有内容也会丢失；请改为 Varchar、Ntext、int、datetime 或 bit。"}},
    {"AShortTextInSmallLetters",
     "update s_infoitem set FieldType='varchar' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FieldType：“varchar”的大小写不对，录入框不限制长度，可以录入超过 "
      "120 个字；请改写为 Varchar。"}},
    {"ALongTextInSmallLetters",
     "update s_infoitem set FieldType='ntext' where itemname='A1201';",
     {"表 s_infoitem，行 A12.A1201，列 FieldType：“ntext”的大小写不对，录入框不限制长度，可以录入超过 "
      "1000 个字；请改写为 Ntext。"}},
    {"ATypeThatIsNotTheColumns",
     "update s_infoitem set FieldType='int' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FieldType：“int”与表 A03 中列 A0302 "
      "的类型不一致，保存的内容会出错或被拒绝；"
      "请把该列改为整数（integer），或改正 FieldType。"}},
    {"ALengthThatIsNoNumber",
     "update s_infoitem set FieldLength='12O' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FieldLength：“12O”不是 16 位整数，一打开“工作经历”，窗口就会关闭；"
      "请改为字数，至多 32767。"}},
    {"ANegativeLength",
     "update s_infoitem set FieldLength='-1' where itemname in ('A0302','A1201');",
     {"表 s_infoitem，行 A03.A0302，列 FieldLength：“-1”是负数，录入框不限制长度；请改为字数，至多 "
      "255，或清空。",
      "表 s_infoitem，行 A12.A1201，列 FieldLength：“-1”是负数，录入框不限制长度；请改为字数，至多 "
      "32767，或清空。"}},
    {"ALengthOfZero", "update s_infoitem set FieldLength='0' where itemname='A0302';", {}},
    {"ALengthThatNoShortTextMayHave",
     "update s_infoitem set FieldLength='256' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FieldLength：“256”超过 255，录入 256 个字以上就无法保存"
      "（提示“数据应该小于256个字符长度”）；请改为至多 255，或把 FieldType 改为 Ntext。"}},
    {"TheGreatestLengthOfAShortText", "update s_infoitem set FieldLength='255' where itemname='A0302';", {}},
    {"ALengthWithoutEffect",
     "update s_infoitem set FieldLength='300' where itemname in ('A0303','A0117');",
     {}},
    {"ANegativeLengthWithoutEffect",
     "update s_infoitem set FieldLength='-1' where itemname in ('A0303','A0117');",
     {}},
    {"CodesOnALongText",
     "update s_infoitem set FieldType='Ntext' where itemname='A0303';",
     {"表 s_infoitem，行 A03.A0303，列 FieldType：有代码表 LCZW，类型却是 "
      "Ntext，保存的是代码的名称而不是代码，"
      "在列表中成了空白；请改为 Varchar，或清空 CodeTable。"}},
    {"CodesOnANumber",
     "update s_infoitem set CodeTable='LCCYJS' where itemname='A0905';",
     {"表 s_infoitem，行 A09.A0905，列 FieldType：有代码表 LCCYJS，类型却是 "
      "int，保存的是代码的名称而不是代码，"
      "会出错或被拒绝；请改为 Varchar，或清空 CodeTable。"}},
    {"AWidthThatIsNoNumber",
     "update s_infoitem set FldWidth='宽' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FldWidth：“宽”不是 16 位整数，一打开“工作经历”，窗口就会关闭；"
      "请改为 0（不显示）至 32767 的整数。"}},
    {"AWidthBeyond16Bits",
     "update s_infoitem set FldWidth=40000 where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 FldWidth：“40000”不是 16 位整数，一打开“工作经历”，窗口就会关闭；"
      "请改为 0（不显示）至 32767 的整数。"}},
    {"AMarkOfRequiredFieldsThatIsNoFlag",
     "update s_infoitem set [IsNUll]='否' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 IsNUll：“否”不是 0 或 "
      "1，一打开“工作经历”，窗口就会关闭（提示“类型不匹配”）；"
      "请改为 1（可以为空）或 0（必填）。"}},
    {"NoRowOfTheRecordNumber",
     "delete from s_infoitem where itemname='A0399';",
     {"表 s_infoitem，行 A03.A0399：缺少序号这一行，“工作经历”的记录都显示不出来，保存会替换第 "
      "1 条记录；请补上这一行，itemdesc 填“序号”，FldWidth 填 0。"}},
    {"ARecordNumberWithoutACaption",
     "update s_infoitem set itemdesc=null where itemname='A0399';",
     {"表 s_infoitem，行 A03.A0399，列 itemdesc：是空的，“工作经历”的记录都显示不出来，保存会替换第 "
      "1 条记录；请填写“序号”，FldWidth 填 0。"}},
    {"ACaptionTwice",
     "update s_infoitem set itemdesc='起始年月' where itemname='A0301A';",
     {"表 s_infoitem，行 A03.A0301A，列 itemdesc：“起始年月”与本信息集的另一项相同，列表中分不清，"
      "序号也可能读错；请改为本信息集中唯一的汉字名称。"}},
    {"ACaptionTwiceOnAPageWithoutAList",
     "update s_infoitem set itemdesc='毕业院校' where itemname='A0115';",
     {"表 s_infoitem，行 A01.A0115，列 "
      "itemdesc：“毕业院校”与本信息集的另一项相同，页面上和提示中分不清是哪一项；"
      "请改为本信息集中唯一的名称。"}},
    {"ACaptionTwiceThatThePageDoesNotShow",
     "alter table A12 add column A1202 varchar(20) collate nocase;"
     "insert into s_infoitem(tblname,itemname,itemdesc,FieldType)"
     " select tblname,'A1202',itemdesc,'Varchar' from s_infoitem where itemname='A1201';",
     {}},
    {"ACaptionWithABlank",
     "update s_infoitem set itemdesc='工作 单位' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 itemdesc：“工作 单位”中有空格，一打开“工作经历”，窗口就会关闭；"
      "请改为本信息集中唯一的汉字名称。"}},
    {"ACaptionWithAHyphen",
     "update s_infoitem set itemdesc='E-Mail' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 itemdesc：“E-Mail”中有连字符，一打开“工作经历”，窗口就会关闭；"
      "请改为本信息集中唯一的汉字名称。"}},
    {"ACaptionThatBeginsWithADigit",
     "update s_infoitem set itemdesc='1级单位' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 itemdesc：“1级单位”以数字开头，一打开“工作经历”，窗口就会关闭；"
      "请改为本信息集中唯一的汉字名称。"}},
    {"ACaptionThatIsAReservedWord",
     "update s_infoitem set itemdesc='Order' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 "
      "itemdesc：“Order”是数据库的保留字，或有不能用的字符，一打开“工作经历”，"
      "窗口就会关闭；请改为本信息集中唯一的汉字名称。"}},
    {"ACaptionWithParentheses",
     "update s_infoitem set itemdesc='单位(全称)' where itemname='A0302';",
     {"表 s_infoitem，行 A03.A0302，列 itemdesc：“单位(全称)”是数据库的保留字，或有不能用的字符，"
      "一打开“工作经历”，窗口就会关闭；请改为本信息集中唯一的汉字名称。"}},
};

INSTANTIATE_TEST_SUITE_P(Check, Fields, testing::ValuesIn(kMutations), NameOf);

}  // namespace
}  // namespace dossierkit::tests
