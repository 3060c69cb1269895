// The designs as data: what the controls that are made of them do not show.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "pages/page_design.h"
#include "tests/pages/sixteen_pages.h"

namespace dossierkit::tests {
namespace {

const FieldDesign& FieldOf(std::string_view set, std::string_view name) {
  const auto& fields = FindPageDesign(set)->fields;
  return *std::ranges::find(fields, name, &FieldDesign::field);
}

TEST(PageDesigns, StandInTheOrderOfTheirSets) {
  std::vector<std::string> designed;
  for (const PageDesign* page : PageDesigns()) designed.emplace_back(page->set);
  std::vector<std::string> written;
  for (const Page& page : SixteenPages()) written.push_back(page.set);
  EXPECT_EQ(designed, written);
}

TEST(PageDesigns, DifferAsWrittenDown) {
  for (const Page& page : SixteenPages()) {
    const PageDesign& design = *FindPageDesign(page.set);
    EXPECT_EQ(design.move_question == MoveQuestion::kSave, page.Has(kAsksToSave)) << page.set;
    EXPECT_EQ(design.caret_step, page.Has(kCaretStep)) << page.set;
    EXPECT_EQ(design.key_preview, page.Has(kKeyPreview)) << page.set;
    EXPECT_EQ(design.photo, page.Has(kPhoto)) << page.set;
    EXPECT_EQ(design.grid_visible, !page.Has(kListHidden)) << page.set;
  }
}

TEST(PageDesigns, RequiredOneBlankTagOfTheSchool) { EXPECT_EQ(FieldOf("A02", "A02_A0202").tag, " "); }

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
}  // namespace dossierkit::tests
