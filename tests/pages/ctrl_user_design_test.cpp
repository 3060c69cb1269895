// The sixteen pages as they come to life: the controls that each makes of its design, and what they
// say before and after the metadata reached them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::Kind;
using toolkit::Label;
using toolkit::MaskEdBox;
using toolkit::TextBox;

struct Page {
  const char* set;
  const char* title;
  const char* hint;
  // In tab order: field, kind, caption in the design, mask, format, tag; the empty ends left out.
  std::vector<std::string> fields;
};

// clang-format off
const std::vector<Page>& Pages() {
  static const std::vector<Page> pages = {
      {"A01", "",
       "",
       {
        "A01_A0101|T|姓    名|||Begin",
        "A01_A0102|T|性   别",
        "A01_A0103|T|民    族",
        "A01_A0114|T|户籍所在地",
        "A01_A0104|M|出生日期|####年##月##日|yyyy年mm月dd日",
        "A01_A0105|T|党    派",
        "A01_A0106|T|文化程度",
        "A01_A0107|T|学    位",
        "A01_A0140|T|毕业院校",
        "A01_A0108|M|毕业时间|####年##月|yyyy年mm月",
        "A01_A0109|T|所学专业",
        "A01_A0110|T|从事专业",
        "A01_A0116|M|参加工作时间|####年##月|yyyy年mm月",
        "A01_A0115|T|工作单位",
        "A01_A0113|T|行政职务",
        "A01_A0121|T|通讯地址",
        "A01_A0117|M|邮政编码|######|######",
        "A01_A0118|T|办公电话",
        "A01_A0119|T|手机号码",
        "A01_A0120|T|E-Mail",
        "A01_A0112|T|专业技术职务",
        "A01_A0122|T|专业分类",
        "A01_A0123|T|单位类别",
        "A01_A0124|T|单位性质",
        "A01_A0125|T|单位隶属",
        "A01_A0128|T|特贴年份",
        "A01_A0129|T|优青年份",
        "A01_A0127|T|卓荐年份",
        "A01_A0131|T|身份证号",
       }},
      {"A02", "主要学习经历（从中专、大专或大学填起）",
       "从中专、大专或大学填起，包括国外学习经历",
       {
        "A02_A0201|M|起始年月|####年##月|yyyy年mm月",
        "A02_A0201A|M|截止年月|####年##月|yyyy年mm月",
        "A02_A0202|T|就读院校||| ",
        "A02_A0203|T|专业",
        "A02_A0204|T|学位|||End",
       }},
      {"A03", "工作经历",
       "包括国内外经历",
       {
        "A03_A0301|M|起始年月|####年##月|yyyy年mm月",
        "A03_A0301A|M|截止年月|####年##月|yyyy年mm月",
        "A03_A0302|T|工作单位",
        "A03_A0304|T|职称",
        "A03_A0303|T|行政职务|||End",
       }},
      {"A04", "主要兼职(限5项，国内外社会兼职、学术团体任职情况)",
       "限五项，国内外社会兼职、学术团体任职情况",
       {
        "A04_A0401|M|起始年月|####年##月|yyyy年mm月",
        "A04_A0402|M|截止时间|####年##月|yyyy年mm月",
        "A04_A0403|T|任职单位名称",
        "A04_A0404|T|职务名称",
       }},
      {"A05", "国内外访问、进修、培训经历",
       "",
       {
        "A05_A0501|M|起始年月|####年##月|yyyy年mm月",
        "A05_A0502|M|截止年月|####年##月|yyyy年mm月",
        "A05_A0503|T|访问机构名称",
        "A05_A0506|T|身份",
        "A05_A0504|T|地点",
        "A05_A0505|TM|有关内容",
       }},
      {"A06", "参加重要学术会议情况",
       "有论文宣读或收入论文集",
       {
        "A06_A0601|M|时间|####年##月|yyyy年mm月",
        "A06_A0603|T|会议名称",
        "A06_A0602|T|主办单位",
        "A06_A0604|T|会议地点",
        "A06_A0605|T|论文题目",
       }},
      {"A08", "主持或参加完成和专业成果",
       "主持或参加完成开拓性或创新性的专业成果，包括具有创新性或开拓性的科研课题；新技术、新"
       "方法的开发、应用、引进、推广项目；重大工程的规划、设计、研制、建造、运行和管理项目；"
       "以及新产品研制、发明创造（专利）、论著等项目；",
       {
        "A08_A0801|T|成果（项目）名称",
        "A08_A0802|M|完成时间|####年##月|yyyy年mm月",
        "A08_A0803|T|创新性成果",
        "A08_A0804|T|经济或社会效益",
        "A08_A0806|T|合作者",
        "A08_A0805|T|角色",
       }},
      {"A09", "专业获奖信息",
       "限填近五年自然科学类所获国家三大奖，省、部级一、二、三等奖以及社会科学类所获国家及省"
       "、部级奖项",
       {
        "A09_A0901|T|成果名称",
        "A09_A0902|T|奖励名称",
        "A09_A0904|T|批准机关",
        "A09_A0905|T|排名|||End",
        "A09_A0906|T|等级|||End",
        "A09_A0907|M|年 份|####|####",
        "A09_A0908|T|证书编号|||End",
        "A09_A0909|T|主要合作者|||End",
        "A09_A0910|T|奖励级别",
       }},
      {"A10", "论文和著作目录",
       "填写在国内一级学报，省、部级一级以上刊物和国外较著名的刊物发表的论文，正式出版的专著"
       "并包括重要总结、技术报告、设计方案、研究报告等。",
       {
        "A10_A1001|T|名称",
        "A10_A1002|M|发表年份|####|####",
        "A10_A1003|T|角色",
        "A10_A1005|T|主要合作者",
        "A10_A1004|T|排名",
        "A10_A1006|T|出版机构",
        "A10_A1007|TM",
       }},
      {"A11", "对专业领域成果的介绍(限5项)",
       "候选人对近两年国内外本专业领域具有创新性和较大影响力成果的介绍，不超过五项",
       {
        "A11_A1101|T|成果名称",
        "A11_A1102|M|完成年份|####|####",
        "A11_A1103|T|主要完成人|||End",
        "A11_A1104|TM|对成果的简要评价",
       }},
      {"A12", "候选人主要成就、贡献及学风道德情况",
       "说明在专业工作中的成就和贡献，以及个人在所承担科研课题、技术项目中发挥作用情况和解决"
       "的主要技术难题，取得的系统性、创造性成果，对科学技术发展的影响及经济效益或社会效益分"
       "析等",
       {
        "A12_A1201|TM",
       }},
      {"A13", "培养人才情况",
       "",
       {
        "A13_A1302|T|硕士数量",
        "A13_A1303|T|专业技术骨干数量",
        "A13_A1301|T|博士数量",
        "A13_A1304|T|其他人员数量",
        "A13_A1305|TM",
       }},
      {"A14", "候选人对所从事领域的现状和发展趋势的认识",
       "候选人对所从事专业领域的现状及发展趋势的认识。概要介绍,限500字以内。包括对科研方向以"
       "及技术开发和应用推广等工作的看法",
       {
        "A14_A1401|TM",
       }},
      {"A15", "近期从事或拟从事的主要业务工作",
       "包括科研课题、技术开发项目、论著等",
       {
        "A15_A1501|T|项目名称",
        "A15_A1502|T|任务来源",
        "A15_A1503|T|技术路线",
        "A15_A1505|T|合作者|||End",
        "A15_A1504|TM|意义",
       }},
      {"A21", "已授权专利情况（按重要性填写近五年主要专利）",
       "限五项，国内外社会兼职、学术团体任职情况",
       {
        "A21_A2111|T|授权国家",
        "A21_A2107|T|专利保护期",
        "A21_A2101|T|专利名称",
        "A21_A2104|T|专利类别",
        "A21_A2112|T|专利所有者",
        "A21_A2113|T|排名",
       }},
      {"B01", "单位推荐情况",
       "",
       {
        "B01_B0101|T|归口推荐部门",
        "B01_B0102|TM|提名单位对候选人主要业绩和贡献的概要评价",
       }},
  };
  return pages;
}
// clang-format on

constexpr toolkit::Color kBlue = 0xFF0000;  // blue, green, red

std::shared_ptr<ctrlUser> MakePage(Visit& visit, const std::string& set) {
  return std::dynamic_pointer_cast<ctrlUser>(
      visit.desktop.Create("DossierKit.ctrlUser" + set, "ctrlUser" + set));
}

template <typename T>
std::shared_ptr<T> Of(ctrlUser& page, const std::string& name) {
  return std::dynamic_pointer_cast<T>(page.Controls().Find(name));
}

bool EndsIn(const std::string& name, const std::string& ending) { return name.ends_with(ending); }

std::string FieldOf(const std::string& line) { return line.substr(0, line.find('|')); }

// The value controls in tab order, as Pages() writes them down.
std::vector<std::string> Describe(ctrlUser& page) {
  std::vector<std::shared_ptr<toolkit::Control>> values;
  for (const auto& control : page.Controls()) {
    if (EndsIn(control->Name(), "_v")) values.push_back(control);
  }
  std::ranges::stable_sort(values, {}, [](const auto& control) { return control->TabIndex(); });
  std::vector<std::string> lines;
  for (const auto& control : values) {
    const std::string field = control->Name().substr(0, control->Name().size() - 2);
    const auto label = Of<Label>(page, field + "_c");
    std::string line = field;
    std::string mask = "|";
    if (const auto* text = dynamic_cast<TextBox*>(control.get())) {
      line += text->MultiLine() ? "|TM|" : "|T|";
    } else if (const auto* masked = dynamic_cast<MaskEdBox*>(control.get())) {
      line += "|M|";
      mask = masked->Mask() + "|" + masked->Format();
      EXPECT_EQ(masked->PromptChar(), "_") << field;
    }
    line += (label ? label->Caption() : "") + "|" + mask + "|" + control->Tag();
    lines.push_back(line.substr(0, line.find_last_not_of('|') + 1));
  }
  return lines;
}

TEST(PageControls, EveryFieldOfEveryPageIsMadeAsDesigned) {
  Visit visit;
  for (const Page& expected : Pages())
    EXPECT_EQ(Describe(*MakePage(visit, expected.set)), expected.fields) << expected.set;
}

TEST(PageControls, EachCaptionStandsBeforeItsValueInTheOrderOfTheControls) {
  Visit visit;
  for (const Page& expected : Pages()) {
    const auto page = MakePage(visit, expected.set);
    std::vector<std::string> wanted;
    std::vector<std::string> made;
    for (const std::string& line : expected.fields) {
      if (Of<Label>(*page, FieldOf(line) + "_c")) wanted.push_back(FieldOf(line) + "_c");
      wanted.push_back(FieldOf(line) + "_v");
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) made.push_back(page->Controls().At(i)->Name());
    EXPECT_EQ(made, wanted) << expected.set;
  }
}

TEST(PageControls, TabVisitsTheFieldsInTheOrderOfTheDesign) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& expected : Pages()) {
      visit.GoTo(expected.set);
      for (const std::string& line : expected.fields) {
        EXPECT_EQ(visit.Focus(), FieldOf(line) + "_v");
        visit.user.Tab();
      }
    }
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(PageControls, HeadingsAndHints) {
  Visit visit;
  for (const Page& expected : Pages()) {
    const auto page = MakePage(visit, expected.set);
    const auto title = Of<Label>(*page, "Title");
    EXPECT_EQ(title ? title->Caption() : "", expected.title) << expected.set;
    EXPECT_EQ(title != nullptr, std::string(expected.set) != "A01");
    const std::string own = std::string(expected.hint).empty() ? "" : std::string(expected.hint) + "\r\n";
    EXPECT_EQ(Of<Label>(*page, "LabInterFace")->Caption(),
              own + "加粗标题为必填项\r\n蓝色文本框可双击鼠标左键选择代码")
        << expected.set;
  }
}

TEST(PageControls, HelpFramesAndOperation) {
  Visit visit;
  for (const Page& expected : Pages()) {
    const auto page = MakePage(visit, expected.set);
    EXPECT_EQ(Of<toolkit::Frame>(*page, "Frm1")->Caption(), "填表说明");
    EXPECT_EQ(Of<toolkit::Frame>(*page, "Frm2")->Caption(), "界面说明");
    EXPECT_EQ(Of<Label>(*page, "labOpt")->ForeColor(), kBlue);
    EXPECT_EQ(Of<Label>(*page, "labOpt")->Caption(), "");
    EXPECT_EQ(Of<Label>(*page, "labExplain")->Caption(), "");
    for (const char* help : {"labExplain", "LabInterFace"}) {
      EXPECT_EQ(Of<Label>(*page, help)->ForeColor(), 0xFFFFFFU);
      EXPECT_EQ(Of<Label>(*page, help)->BackColor(), 0x8000000CU);
      EXPECT_TRUE(Of<Label>(*page, help)->Opaque());
    }
    EXPECT_EQ(Of<Label>(*page, "labExplain")->Container()->Name(), "Frm1");
    EXPECT_EQ(Of<Label>(*page, "LabInterFace")->Container()->Name(), "Frm2");
    EXPECT_TRUE(Of<toolkit::Line>(*page, "Line1"));
  }
}

TEST(PageControls, EveryPageHasAListHiddenInTheDesignOfSix) {
  Visit visit;
  std::vector<std::string> hidden;
  for (const Page& expected : Pages()) {
    const auto grid = Of<toolkit::DataGrid>(*MakePage(visit, expected.set), "DGItems");
    ASSERT_TRUE(grid) << expected.set;
    if (!grid->Visible()) hidden.push_back(expected.set);
    EXPECT_EQ(grid->HeadFont().name, "华文细黑");
    EXPECT_EQ(grid->GetFont().name, "宋体");
  }
  EXPECT_EQ(hidden, (std::vector<std::string>{"A01", "A10", "A12", "A13", "A14", "B01"}));
}

TEST(PageControls, ListsOfOneRecordPagesStayHiddenAndThoseOfManyAreShown) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& expected : Pages()) {
      const std::string set = expected.set;
      visit.GoTo(set);
      const bool single = set == "A01" || set == "A12" || set == "A13" || set == "A14" || set == "B01";
      EXPECT_EQ(visit.user.Find("DGItems")->Visible(), !single) << set;
      EXPECT_EQ(visit.OnShow().AdodcRs() == nullptr, single) << set;
    }
  });
}

TEST(PageControls, OnlyBasicInformationHoldsThePhotograph) {
  Visit visit;
  for (const Page& expected : Pages()) {
    const auto page = MakePage(visit, expected.set);
    for (const char* name : {"frmBasicInfo", "imgPerson", "cmdAddPhoto", "dlgSelPic"}) {
      EXPECT_EQ(page->Controls().Find(name) != nullptr, std::string(expected.set) == "A01")
          << expected.set << name;
    }
  }
  const auto page = MakePage(visit, "A01");
  EXPECT_EQ(Of<toolkit::Frame>(*page, "frmBasicInfo")->Caption(), "基本信息");
  EXPECT_EQ(Of<toolkit::CommandButton>(*page, "cmdAddPhoto")->Caption(), "更新照片");
  EXPECT_EQ(page->Controls().Find("imgPerson")->GetKind(), Kind::kImage);
  EXPECT_EQ(page->Controls().Find("dlgSelPic")->GetKind(), Kind::kCommonDialog);
  for (const char* name : {"A01_A0101_v", "A01_A0131_c", "imgPerson", "cmdAddPhoto"}) {
    EXPECT_EQ(page->Controls().Find(name)->Container()->Name(), "frmBasicInfo") << name;
  }
}

TEST(PageControls, FixedLabelsKeepTheirTextWhenTheMetadataArrives) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A10");
    EXPECT_EQ(visit.Caption("Label5"), "情况说明");
    visit.GoTo("A12");
    EXPECT_EQ(visit.Caption("A12_A1201_cc"),
              "限1000字以内，说明在专业工作中的成就和贡献，以及个人在所承担科研课题、技术项目中发挥作用情况和"
              "解决的主要技"
              "术难题，取得的系统性、创造性成果，对科学技术发展的影响及经济效益或社会效益分析等。");
    visit.GoTo("A13");
    EXPECT_EQ(visit.Caption("A13_A1305_cc"), "培养人才情况概述及今后人才培养和创新团队建设的设想（限300字）");
    visit.GoTo("A14");
    EXPECT_EQ(visit.Caption("A14_A1401_cc"),
              "概要介绍，限500字以内。包括对科研方向以及技术开发和应用推广等工作的看法。");
    for (const auto& [set, field] : std::vector<std::pair<std::string, std::string>>{
             {"A10", "A10_A1007"}, {"A12", "A12_A1201"}, {"A13", "A13_A1305"}, {"A14", "A14_A1401"}}) {
      visit.GoTo(set);
      EXPECT_EQ(visit.OnShow().Controls().Find(field + "_c"), nullptr);
      EXPECT_NE(visit.OnShow().Controls().Find(field + "_v"), nullptr);
    }
  });
}

TEST(PageControls, CaptionsAreReplacedByTheLabelsOfTheMetadata) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    EXPECT_EQ(visit.Caption("A01_A0101_c"), "姓名");
    EXPECT_EQ(visit.Caption("A01_A0120_c"), "电子邮箱");
    visit.GoTo("A08");
    EXPECT_EQ(visit.Caption("A08_A0801_c"), "成果项目名称");
    visit.GoTo("B01");
    EXPECT_EQ(visit.Caption("B01_B0102_c"), "提名单位概要评价");
  });
}

TEST(PageControls, EveryControlIsWrapped) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& expected : Pages()) {
      visit.GoTo(expected.set);
      auto& page = visit.OnShow();
      ASSERT_EQ(page.Items().Count(), static_cast<std::int32_t>(page.Controls().Count())) << expected.set;
      for (std::size_t i = 0; i < page.Controls().Count(); ++i) {
        EXPECT_EQ(page.Items().Item(i + 1)->Ctrl, page.Controls().At(i));
      }
    }
  });
}

TEST(PageControls, PagesAreFoundByTheNameOfTheirClassAlone) {
  Visit visit;
  for (const char* set : {"A07", "A16", "A20", "B02", "B03"}) {
    EXPECT_THROW(visit.desktop.Create(std::string("DossierKit.ctrlUser") + set, "page"), environment::Failure)
        << set;
  }
}

}  // namespace
}  // namespace dossierkit::tests
