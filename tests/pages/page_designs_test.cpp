// What each page holds and says, written out once more: a slip in a design fails here.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "pages/page_design.h"

namespace dossierkit {
namespace {

constexpr auto kText = FieldDesign::Kind::kText;
constexpr auto kMultiLine = FieldDesign::Kind::kMultiLine;
constexpr auto kMask = FieldDesign::Kind::kMask;
constexpr auto kSave = MoveQuestion::kSave;
constexpr auto kContinue = MoveQuestion::kContinue;

struct Field {
  std::string_view field;
  FieldDesign::Kind kind;
  std::string_view caption;  // empty: no Label of its own
  std::string_view mask = {};
  std::string_view format = {};
  std::string_view tag = {};
};

struct Fixed {
  std::string_view name;
  std::string_view caption;
};

struct Differences {
  bool caret_step;
  bool key_preview;
  bool photo;
};

void ExpectHeading(const PageDesign& page, std::string_view title, std::string_view hint) {
  EXPECT_EQ(page.title, title);
  EXPECT_EQ(page.hint, hint);
}

void ExpectDifferences(const PageDesign& page, MoveQuestion question, const Differences& expected) {
  EXPECT_EQ(page.move_question, question);
  EXPECT_EQ(page.caret_step, expected.caret_step);
  EXPECT_EQ(page.key_preview, expected.key_preview);
  EXPECT_EQ(page.photo, expected.photo);
}

void ExpectFields(const PageDesign& page, const std::vector<Field>& expected) {
  ASSERT_EQ(page.fields.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    SCOPED_TRACE(expected[i].field);
    const FieldDesign& field = page.fields[i];
    EXPECT_EQ(field.field, expected[i].field);
    EXPECT_EQ(field.kind, expected[i].kind);
    EXPECT_EQ(field.caption, expected[i].caption);
    EXPECT_EQ(field.mask, expected[i].mask);
    EXPECT_EQ(field.format, expected[i].format);
    EXPECT_EQ(field.tag, expected[i].tag);
  }
}

void ExpectFixedLabels(const PageDesign& page, const std::vector<Fixed>& expected) {
  ASSERT_EQ(page.fixed_labels.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(page.fixed_labels[i].name, expected[i].name);
    EXPECT_EQ(page.fixed_labels[i].caption, expected[i].caption);
  }
}

const FieldDesign& FieldOf(std::string_view set, std::string_view name) {
  const auto& fields = FindPageDesign(set)->fields;
  return *std::ranges::find(fields, name, &FieldDesign::field);
}

std::vector<std::string_view> FieldsTaggedEnd(const PageDesign& page) {
  std::vector<std::string_view> found;
  for (const FieldDesign& field : page.fields) {
    if (field.tag == "End") found.push_back(field.field);
  }
  return found;
}

std::vector<std::string_view> SetsWhere(bool (*holds)(const PageDesign&)) {
  std::vector<std::string_view> found;
  for (const PageDesign* page : PageDesigns()) {
    if (holds(*page)) found.push_back(page->set);
  }
  return found;
}

using Names = std::vector<std::string_view>;

// clang-format off
TEST(PageDesigns, A01) {
  const PageDesign& page = *FindPageDesign("A01");
  ExpectHeading(page, "", "");
  ExpectDifferences(page, kSave, {.caret_step = true, .key_preview = false, .photo = true});
  ExpectFields(page, {
      {"A01_A0101", kText, "姓    名", "", "", "Begin"},
      {"A01_A0102", kText, "性   别"},
      {"A01_A0103", kText, "民    族"},
      {"A01_A0114", kText, "户籍所在地"},
      {"A01_A0104", kMask, "出生日期", "####年##月##日", "yyyy年mm月dd日"},
      {"A01_A0105", kText, "党    派"},
      {"A01_A0106", kText, "文化程度"},
      {"A01_A0107", kText, "学    位"},
      {"A01_A0140", kText, "毕业院校"},
      {"A01_A0108", kMask, "毕业时间", "####年##月", "yyyy年mm月"},
      {"A01_A0109", kText, "所学专业"},
      {"A01_A0110", kText, "从事专业"},
      {"A01_A0116", kMask, "参加工作时间", "####年##月", "yyyy年mm月"},
      {"A01_A0115", kText, "工作单位"},
      {"A01_A0113", kText, "行政职务"},
      {"A01_A0121", kText, "通讯地址"},
      {"A01_A0117", kMask, "邮政编码", "######", "######"},
      {"A01_A0118", kText, "办公电话"},
      {"A01_A0119", kText, "手机号码"},
      {"A01_A0120", kText, "E-Mail"},
      {"A01_A0112", kText, "专业技术职务"},
      {"A01_A0122", kText, "专业分类"},
      {"A01_A0123", kText, "单位类别"},
      {"A01_A0124", kText, "单位性质"},
      {"A01_A0125", kText, "单位隶属"},
      {"A01_A0128", kText, "特贴年份"},
      {"A01_A0129", kText, "优青年份"},
      {"A01_A0127", kText, "卓荐年份"},
      {"A01_A0131", kText, "身份证号"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A02) {
  const PageDesign& page = *FindPageDesign("A02");
  ExpectHeading(page, "主要学习经历（从中专、大专或大学填起）",
                "从中专、大专或大学填起，包括国外学习经历");
  ExpectDifferences(page, kSave, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A02_A0201", kMask, "起始年月", "####年##月", "yyyy年mm月"},
      {"A02_A0201A", kMask, "截止年月", "####年##月", "yyyy年mm月"},
      {"A02_A0202", kText, "就读院校", "", "", " "},
      {"A02_A0203", kText, "专业"},
      {"A02_A0204", kText, "学位", "", "", "End"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A03) {
  const PageDesign& page = *FindPageDesign("A03");
  ExpectHeading(page, "工作经历", "包括国内外经历");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A03_A0301", kMask, "起始年月", "####年##月", "yyyy年mm月"},
      {"A03_A0301A", kMask, "截止年月", "####年##月", "yyyy年mm月"},
      {"A03_A0302", kText, "工作单位"},
      {"A03_A0304", kText, "职称"},
      {"A03_A0303", kText, "行政职务", "", "", "End"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A04) {
  const PageDesign& page = *FindPageDesign("A04");
  ExpectHeading(page, "主要兼职(限5项，国内外社会兼职、学术团体任职情况)",
                "限五项，国内外社会兼职、学术团体任职情况");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A04_A0401", kMask, "起始年月", "####年##月", "yyyy年mm月"},
      {"A04_A0402", kMask, "截止时间", "####年##月", "yyyy年mm月"},
      {"A04_A0403", kText, "任职单位名称"},
      {"A04_A0404", kText, "职务名称"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A05) {
  const PageDesign& page = *FindPageDesign("A05");
  ExpectHeading(page, "国内外访问、进修、培训经历", "");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A05_A0501", kMask, "起始年月", "####年##月", "yyyy年mm月"},
      {"A05_A0502", kMask, "截止年月", "####年##月", "yyyy年mm月"},
      {"A05_A0503", kText, "访问机构名称"},
      {"A05_A0506", kText, "身份"},
      {"A05_A0504", kText, "地点"},
      {"A05_A0505", kMultiLine, "有关内容"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A06) {
  const PageDesign& page = *FindPageDesign("A06");
  ExpectHeading(page, "参加重要学术会议情况", "有论文宣读或收入论文集");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A06_A0601", kMask, "时间", "####年##月", "yyyy年mm月"},
      {"A06_A0603", kText, "会议名称"},
      {"A06_A0602", kText, "主办单位"},
      {"A06_A0604", kText, "会议地点"},
      {"A06_A0605", kText, "论文题目"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A08) {
  const PageDesign& page = *FindPageDesign("A08");
  ExpectHeading(page, "主持或参加完成和专业成果",
                "主持或参加完成开拓性或创新性的专业成果，包括具有创新性或开拓性的科研课题；新"
                "技术、新方法的开发、应用、引进、推广项目；重大工程的规划、设计、研制、建造、"
                "运行和管理项目；以及新产品研制、发明创造（专利）、论著等项目；");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A08_A0801", kText, "成果（项目）名称"},
      {"A08_A0802", kMask, "完成时间", "####年##月", "yyyy年mm月"},
      {"A08_A0803", kText, "创新性成果"},
      {"A08_A0804", kText, "经济或社会效益"},
      {"A08_A0806", kText, "合作者"},
      {"A08_A0805", kText, "角色"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A09) {
  const PageDesign& page = *FindPageDesign("A09");
  ExpectHeading(page, "专业获奖信息",
                "限填近五年自然科学类所获国家三大奖，省、部级一、二、三等奖以及社会科学类所获"
                "国家及省、部级奖项");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A09_A0901", kText, "成果名称"},
      {"A09_A0902", kText, "奖励名称"},
      {"A09_A0904", kText, "批准机关"},
      {"A09_A0905", kText, "排名", "", "", "End"},
      {"A09_A0906", kText, "等级", "", "", "End"},
      {"A09_A0907", kMask, "年 份", "####", "####"},
      {"A09_A0908", kText, "证书编号", "", "", "End"},
      {"A09_A0909", kText, "主要合作者", "", "", "End"},
      {"A09_A0910", kText, "奖励级别"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A10) {
  const PageDesign& page = *FindPageDesign("A10");
  ExpectHeading(page, "论文和著作目录",
                "填写在国内一级学报，省、部级一级以上刊物和国外较著名的刊物发表的论文，正式出"
                "版的专著并包括重要总结、技术报告、设计方案、研究报告等。");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"A10_A1001", kText, "名称"},
      {"A10_A1002", kMask, "发表年份", "####", "####"},
      {"A10_A1003", kText, "角色"},
      {"A10_A1005", kText, "主要合作者"},
      {"A10_A1004", kText, "排名"},
      {"A10_A1006", kText, "出版机构"},
      {"A10_A1007", kMultiLine, ""},
  });
  ExpectFixedLabels(page, {{"Label5", "情况说明"}});
}

TEST(PageDesigns, A11) {
  const PageDesign& page = *FindPageDesign("A11");
  ExpectHeading(page, "对专业领域成果的介绍(限5项)",
                "候选人对近两年国内外本专业领域具有创新性和较大影响力成果的介绍，不超过五项");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A11_A1101", kText, "成果名称"},
      {"A11_A1102", kMask, "完成年份", "####", "####"},
      {"A11_A1103", kText, "主要完成人", "", "", "End"},
      {"A11_A1104", kMultiLine, "对成果的简要评价"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A12) {
  const PageDesign& page = *FindPageDesign("A12");
  ExpectHeading(page, "候选人主要成就、贡献及学风道德情况",
                "说明在专业工作中的成就和贡献，以及个人在所承担科研课题、技术项目中发挥作用情"
                "况和解决的主要技术难题，取得的系统性、创造性成果，对科学技术发展的影响及经济"
                "效益或社会效益分析等");
  ExpectDifferences(page, kContinue, {.caret_step = false, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A12_A1201", kMultiLine, ""},
  });
  ExpectFixedLabels(page, {
      {"A12_A1201_cc", "限1000字以内，说明在专业工作中的成就和贡献，以及个人在所承担科研课题、"
                       "技术项目中发挥作用情况和解决的主要技术难题，取得的系统性、创造性成果，"
                       "对科学技术发展的影响及经济效益或社会效益分析等。"},
  });
}

TEST(PageDesigns, A13) {
  const PageDesign& page = *FindPageDesign("A13");
  ExpectHeading(page, "培养人才情况", "");
  ExpectDifferences(page, kContinue, {.caret_step = false, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A13_A1302", kText, "硕士数量"},
      {"A13_A1303", kText, "专业技术骨干数量"},
      {"A13_A1301", kText, "博士数量"},
      {"A13_A1304", kText, "其他人员数量"},
      {"A13_A1305", kMultiLine, ""},
  });
  ExpectFixedLabels(page, {{"A13_A1305_cc", "培养人才情况概述及今后人才培养和创新团队建设的设想（限300字）"}});
}

TEST(PageDesigns, A14) {
  const PageDesign& page = *FindPageDesign("A14");
  ExpectHeading(page, "候选人对所从事领域的现状和发展趋势的认识",
                "候选人对所从事专业领域的现状及发展趋势的认识。概要介绍,限500字以内。包括"
                "对科研方向以及技术开发和应用推广等工作的看法");
  ExpectDifferences(page, kContinue, {.caret_step = false, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A14_A1401", kMultiLine, ""},
  });
  ExpectFixedLabels(page, {
      {"A14_A1401_cc", "概要介绍，限500字以内。包括对科研方向以及技术开发和应用推广等工作的看法。"},
  });
}

TEST(PageDesigns, A15) {
  const PageDesign& page = *FindPageDesign("A15");
  ExpectHeading(page, "近期从事或拟从事的主要业务工作",
                "包括科研课题、技术开发项目、论著等");
  ExpectDifferences(page, kContinue, {.caret_step = false, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A15_A1501", kText, "项目名称"},
      {"A15_A1502", kText, "任务来源"},
      {"A15_A1503", kText, "技术路线"},
      {"A15_A1505", kText, "合作者", "", "", "End"},
      {"A15_A1504", kMultiLine, "意义"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, A21) {
  const PageDesign& page = *FindPageDesign("A21");
  ExpectHeading(page, "已授权专利情况（按重要性填写近五年主要专利）",
                "限五项，国内外社会兼职、学术团体任职情况");
  ExpectDifferences(page, kContinue, {.caret_step = true, .key_preview = false, .photo = false});
  ExpectFields(page, {
      {"A21_A2111", kText, "授权国家"},
      {"A21_A2107", kText, "专利保护期"},
      {"A21_A2101", kText, "专利名称"},
      {"A21_A2104", kText, "专利类别"},
      {"A21_A2112", kText, "专利所有者"},
      {"A21_A2113", kText, "排名"},
  });
  ExpectFixedLabels(page, {});
}

TEST(PageDesigns, B01) {
  const PageDesign& page = *FindPageDesign("B01");
  ExpectHeading(page, "单位推荐情况", "");
  ExpectDifferences(page, kContinue, {.caret_step = false, .key_preview = true, .photo = false});
  ExpectFields(page, {
      {"B01_B0101", kText, "归口推荐部门"},
      {"B01_B0102", kMultiLine, "提名单位对候选人主要业绩和贡献的概要评价"},
  });
  ExpectFixedLabels(page, {});
}
// clang-format on

TEST(PageDesigns, StandInTheOrderOfTheirSets) {
  EXPECT_EQ(SetsWhere([](const PageDesign&) { return true; }),
            (Names{"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A12", "A13", "A14",
                   "A15", "A21", "B01"}));
}

TEST(PageDesigns, AreFoundWithoutRegardToCase) {
  EXPECT_EQ(FindPageDesign("a05"), FindPageDesign("A05"));
  EXPECT_EQ(FindPageDesign("b01")->set, "B01");
}

TEST(PageDesigns, OtherSetsHaveNone) {
  for (std::string_view set : {"A07", "A16", "A20", "B02", "B03", "", "A0", "A010", "Item17"}) {
    EXPECT_EQ(FindPageDesign(set), nullptr) << set;
  }
}

TEST(PageDesigns, EveryFieldBearsTheNameOfItsSet) {
  for (const PageDesign* page : PageDesigns()) {
    for (const FieldDesign& field : page->fields) {
      EXPECT_TRUE(field.field.starts_with(std::string(page->set) + "_" + std::string(page->set)))
          << field.field;
    }
  }
}

TEST(PageDesigns, ListIsHiddenInTheDesignOfSixPages) {
  EXPECT_EQ(SetsWhere([](const PageDesign& page) { return !page.grid_visible; }),
            (Names{"A01", "A10", "A12", "A13", "A14", "B01"}));
}

TEST(PageDesigns, PagesWithoutEndTag) {
  EXPECT_EQ(SetsWhere([](const PageDesign& page) { return FieldsTaggedEnd(page).empty(); }),
            (Names{"A01", "A04", "A05", "A06", "A08", "A10", "A12", "A13", "A14", "A21", "B01"}));
}

TEST(PageDesigns, FourFieldsOfAwardsAreTaggedEnd) {
  EXPECT_EQ(FieldsTaggedEnd(*FindPageDesign("A09")),
            (Names{"A09_A0905", "A09_A0906", "A09_A0908", "A09_A0909"}));
}

TEST(PageDesigns, EndTagStandsAheadOfTheMultiLineField) {
  for (std::string_view set : {"A11", "A15"}) {
    const auto& fields = FindPageDesign(set)->fields;
    EXPECT_EQ(fields[fields.size() - 2].tag, "End") << set;
    EXPECT_EQ(fields.back().kind, kMultiLine) << set;
    EXPECT_EQ(fields.back().tag, "") << set;
  }
}

TEST(PageDesigns, RequiredOneBlankTagOfTheSchool) { EXPECT_EQ(FieldOf("A02", "A02_A0202").tag, " "); }

TEST(PageDesigns, PatentHintIsTheSameAsThePartTimePostHint) {
  EXPECT_EQ(FindPageDesign("A21")->hint, FindPageDesign("A04")->hint);
}

TEST(PageDesigns, OnlyBasicInformationAndEducationAskToSave) {
  EXPECT_EQ(SetsWhere([](const PageDesign& page) { return page.move_question == kSave; }),
            (Names{"A01", "A02"}));
}

TEST(PageDesigns, FieldsWithoutALabelAreNamedByAFixedOne) {
  EXPECT_EQ(FieldOf("A10", "A10_A1007").labelled_by, "Label5");
  EXPECT_EQ(FieldOf("A12", "A12_A1201").labelled_by, "A12_A1201_cc");
  EXPECT_EQ(FieldOf("A13", "A13_A1305").labelled_by, "A13_A1305_cc");
  EXPECT_EQ(FieldOf("A14", "A14_A1401").labelled_by, "A14_A1401_cc");
  for (const PageDesign* page : PageDesigns()) {
    for (const FieldDesign& field : page->fields) {
      EXPECT_EQ(field.caption.empty(), !field.labelled_by.empty()) << field.field;
    }
  }
}

}  // namespace
}  // namespace dossierkit
