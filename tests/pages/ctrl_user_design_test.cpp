// The sixteen pages as they come to life: the controls that each makes of its design, and what they
// say before and after the metadata reached them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/pages/sixteen_pages.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using toolkit::Kind;
using toolkit::Label;
using toolkit::MaskEdBox;
using toolkit::TextBox;

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

// The value controls in tab order, as SixteenPages() writes them down.
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
  for (const Page& expected : SixteenPages())
    EXPECT_EQ(Describe(*MakePage(visit, expected.set)), expected.fields) << expected.set;
}

TEST(PageControls, EachCaptionStandsBeforeItsValueInTheOrderOfTheControls) {
  Visit visit;
  for (const Page& expected : SixteenPages()) {
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
    for (const Page& expected : SixteenPages()) {
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
  for (const Page& expected : SixteenPages()) {
    const auto page = MakePage(visit, expected.set);
    const auto title = Of<Label>(*page, "Title");
    EXPECT_EQ(title ? title->Caption() : "", expected.title) << expected.set;
    EXPECT_EQ(title != nullptr, expected.set != "A01");
    const std::string own = expected.hint.empty() ? "" : expected.hint + "\r\n";
    EXPECT_EQ(Of<Label>(*page, "LabInterFace")->Caption(),
              own + "加粗标题为必填项\r\n蓝色文本框可双击鼠标左键选择代码")
        << expected.set;
  }
}

TEST(PageControls, HelpFramesAndOperation) {
  Visit visit;
  for (const Page& expected : SixteenPages()) {
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
  for (const Page& expected : SixteenPages()) {
    const auto grid = Of<toolkit::DataGrid>(*MakePage(visit, expected.set), "DGItems");
    ASSERT_TRUE(grid) << expected.set;
    if (!grid->Visible()) hidden.push_back(expected.set);
    EXPECT_EQ(grid->HeadFont().name, "华文细黑");
    EXPECT_EQ(grid->GetFont().name, "宋体");
  }
  EXPECT_EQ(hidden, SetsWith(kListHidden));
  EXPECT_EQ(hidden.size(), 6U);
}

TEST(PageControls, ListsOfOneRecordPagesStayHiddenAndThoseOfManyAreShown) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& expected : SixteenPages()) {
      const std::string& set = expected.set;
      visit.GoTo(set);
      const bool single = set == "A01" || set == "A12" || set == "A13" || set == "A14" || set == "B01";
      EXPECT_EQ(visit.user.Find("DGItems")->Visible(), !single) << set;
      EXPECT_EQ(visit.OnShow().AdodcRs() == nullptr, single) << set;
    }
  });
}

TEST(PageControls, OnlyBasicInformationHoldsThePhotograph) {
  Visit visit;
  for (const Page& expected : SixteenPages()) {
    const auto page = MakePage(visit, expected.set);
    for (const char* name : {"frmBasicInfo", "imgPerson", "cmdAddPhoto", "dlgSelPic"}) {
      EXPECT_EQ(page->Controls().Find(name) != nullptr, expected.Has(kPhoto)) << expected.set << name;
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
  int count = 0;
  visit.OpenPerson(kPerson, [&] {
    for (const Page& expected : SixteenPages()) {
      const auto designed = MakePage(visit, expected.set);
      visit.GoTo(expected.set);
      for (const auto& [name, text] : expected.fixed_labels) {
        EXPECT_EQ(Of<Label>(*designed, name)->Caption(), text);
        EXPECT_EQ(visit.Caption(name), text);
        ++count;
      }
    }
  });
  EXPECT_EQ(count, 4);
}

// The labels of a page beside those of its fields and those that every page has.
std::vector<std::string> OtherLabels(ctrlUser& page) {
  const std::vector<std::string> common = {"labOpt", "labExplain", "LabInterFace", "Title"};
  std::vector<std::string> names;
  for (const auto& control : page.Controls()) {
    const std::string& name = control->Name();
    if (control->GetKind() != Kind::kLabel || std::ranges::count(common, name) > 0 || EndsIn(name, "_c"))
      continue;
    names.push_back(name);
  }
  return names;
}

TEST(PageControls, NoOtherLabelStandsOnAPage) {
  Visit visit;
  for (const Page& expected : SixteenPages()) {
    std::vector<std::string> names;
    for (const auto& label : expected.fixed_labels) names.push_back(label.first);
    EXPECT_EQ(OtherLabels(*MakePage(visit, expected.set)), names) << expected.set;
  }
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
    for (const Page& expected : SixteenPages()) {
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
