// Where the controls of each page stand.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "pages/designs/layout.h"
#include "pages/page_design.h"

namespace dossierkit {
namespace {

using designs::kVisiblePage;
using toolkit::Rect;

struct Part {
  std::string name;
  Rect place;
};

int RightOf(const Rect& rect) { return rect.left + rect.width; }
int BottomOf(const Rect& rect) { return rect.top + rect.height; }

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < RightOf(b) && b.left < RightOf(a) && a.top < BottomOf(b) && b.top < BottomOf(a);
}

bool Inside(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && RightOf(inner) <= RightOf(outer) &&
         BottomOf(inner) <= BottomOf(outer);
}

bool HasStubGrid(const PageDesign& page) { return page.grid == designs::kStubGrid; }
bool HasLabelBeside(const FieldDesign& field) {
  return !field.caption.empty() && field.label.top >= field.box.top;
}

// Everything on the page but a list that the design hides.
std::vector<Part> PartsOf(const PageDesign& page) {
  std::vector<Part> parts;
  for (const FieldDesign& field : page.fields) {
    if (!field.caption.empty()) parts.push_back({std::string(field.field) + "_c", field.label});
    parts.push_back({std::string(field.field) + "_v", field.box});
  }
  for (const FixedLabel& label : page.fixed_labels) parts.push_back({std::string(label.name), label.place});
  if (page.grid_visible) parts.push_back({"DGItems", page.grid});
  if (page.photo) {
    parts.push_back({"imgPerson", designs::kPhotoPlace});
    parts.push_back({"cmdAddPhoto", designs::kAddPhotoPlace});
  }
  parts.push_back({"Frm1", designs::kExplain});
  parts.push_back({"Frm2", designs::kHints});
  return parts;
}

// The width of a text of 9 points in twips: a Chinese character is 12 pixels wide, an ASCII one 6.
int TextWidth(std::string_view text) {
  int width = 0;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x80) {
      width += 90;
    } else if (code >= 0xC0) {
      width += 180;
    }
  }
  return width;
}

// The lines that a text takes, with one lost to line breaks that may not stand anywhere.
int LinesOf(std::string_view text, int width) { return text.empty() ? 0 : TextWidth(text) / width + 2; }

class PageLayout : public testing::TestWithParam<std::string> {
 protected:
  const PageDesign& page_ = *FindPageDesign(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Pages, PageLayout,
                         testing::Values("A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11",
                                         "A12", "A13", "A14", "A15", "A21", "B01"),
                         [](const auto& set) { return set.param; });

TEST_P(PageLayout, EveryControlLiesOnThePage) {
  for (const Part& part : PartsOf(page_)) {
    EXPECT_GT(part.place.width, 0) << part.name;
    EXPECT_GT(part.place.height, 0) << part.name;
    EXPECT_TRUE(Inside(part.place, kVisiblePage)) << part.name;
    EXPECT_GE(part.place.top, designs::kBodyTop) << part.name << " stands in the heading";
  }
  EXPECT_TRUE(Inside(page_.grid, kVisiblePage));
}

TEST_P(PageLayout, NoTwoControlsOverlap) {
  const std::vector<Part> parts = PartsOf(page_);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    for (std::size_t j = i + 1; j < parts.size(); ++j) {
      EXPECT_FALSE(Overlap(parts[i].place, parts[j].place)) << parts[i].name << ", " << parts[j].name;
    }
  }
}

TEST_P(PageLayout, PlacesAreWholePixels) {
  for (const Part& part : PartsOf(page_)) {
    for (const int size : {part.place.left, part.place.top, part.place.width, part.place.height}) {
      EXPECT_EQ(size % 15, 0) << part.name;
    }
  }
}

TEST_P(PageLayout, LabelsOfAColumnShareTheirLeftEdge) {
  for (const FieldDesign& a : page_.fields) {
    for (const FieldDesign& b : page_.fields) {
      if (!HasLabelBeside(a) || !HasLabelBeside(b)) continue;
      if (a.label.left >= RightOf(b.label) || b.label.left >= RightOf(a.label)) continue;
      EXPECT_EQ(a.label.left, b.label.left) << a.field << ", " << b.field;
      EXPECT_EQ(a.label.width, b.label.width) << a.field << ", " << b.field;
      EXPECT_EQ(a.box.left, b.box.left) << a.field << ", " << b.field;
    }
  }
}

TEST_P(PageLayout, LabelsStandBesideOrAboveTheirBoxes) {
  for (const FieldDesign& field : page_.fields) {
    if (field.caption.empty()) continue;
    if (HasLabelBeside(field)) {
      EXPECT_LE(RightOf(field.label), field.box.left) << field.field;
      EXPECT_LE(BottomOf(field.label), BottomOf(field.box)) << field.field;
    } else {
      EXPECT_LE(BottomOf(field.label), field.box.top) << field.field;
      EXPECT_EQ(field.label.left, field.box.left) << field.field;
    }
  }
}

TEST_P(PageLayout, TabOrderReadsFromLeftToRightAndDown) {
  for (std::size_t i = 1; i < page_.fields.size(); ++i) {
    const Rect& before = page_.fields[i - 1].box;
    const Rect& next = page_.fields[i].box;
    EXPECT_TRUE(next.top > before.top || (next.top == before.top && next.left > before.left))
        << page_.fields[i].field;
  }
}

TEST_P(PageLayout, BoxesOfOneLineAreEquallyHigh) {
  for (const FieldDesign& field : page_.fields) {
    if (field.kind == FieldDesign::Kind::kMultiLine) {
      EXPECT_GE(field.box.height, 1200) << field.field;
    } else {
      EXPECT_EQ(field.box.height, designs::kBoxHeight) << field.field;
    }
  }
}

TEST_P(PageLayout, BoldCaptionsFitTheirLabels) {
  for (const FieldDesign& field : page_.fields) {
    EXPECT_LE(TextWidth(field.caption) * 185 / 180, field.label.width) << field.field;
  }
  for (const FixedLabel& label : page_.fixed_labels) {
    if (TextWidth(label.caption) <= label.place.width) continue;
    EXPECT_LE((TextWidth(label.caption) / label.place.width + 1) * 240, label.place.height) << label.name;
  }
}

TEST_P(PageLayout, MasksFitTheirBoxes) {
  for (const FieldDesign& field : page_.fields) {
    if (field.kind == FieldDesign::Kind::kMask) {
      EXPECT_LE(TextWidth(field.mask) + 150, field.box.width) << field.field;
    }
  }
}

TEST_P(PageLayout, HelpTextsFitTheirFrames) {
  const int width = designs::kHints.width - 300;
  const int lines = LinesOf(page_.hint, width) + LinesOf("加粗标题为必填项", width) +
                    LinesOf("蓝色文本框可双击鼠标左键选择代码", width);
  EXPECT_LE(lines * 240 + 450, designs::kHints.height);
  EXPECT_GE((designs::kExplain.height - 450) / 240 * (designs::kExplain.width - 300), 100 * 180);
}

TEST_P(PageLayout, HelpFramesStandOneAboveTheOtherAtTheRight) {
  EXPECT_EQ(designs::kExplain.left, designs::kHints.left);
  EXPECT_EQ(designs::kExplain.width, designs::kHints.width);
  EXPECT_LT(BottomOf(designs::kExplain), designs::kHints.top);
  for (const FieldDesign& field : page_.fields)
    EXPECT_LT(RightOf(field.box), designs::kExplain.left) << field.field;
}

TEST_P(PageLayout, ListStandsBelowTheFields) {
  if (HasStubGrid(page_)) {
    EXPECT_FALSE(page_.grid_visible);
    return;
  }
  EXPECT_GE(page_.grid.height, 2400);
  EXPECT_EQ(BottomOf(page_.grid), designs::kBodyBottom);
  for (const FieldDesign& field : page_.fields) {
    // A box of several lines may have the room of a list that is hidden.
    const bool yields = !page_.grid_visible && field.kind == FieldDesign::Kind::kMultiLine;
    EXPECT_GE(page_.grid.top,
              (yields ? std::min(field.box.top + 2400, BottomOf(field.box)) : BottomOf(field.box)) +
                  designs::kGutter)
        << field.field;
  }
}

TEST(PageLayouts, TheLastBoxOfAPageWithoutAListUsesTheHeight) {
  for (const char* set : {"A12", "A13", "A14", "B01"})
    EXPECT_EQ(BottomOf(FindPageDesign(set)->fields.back().box), designs::kBodyBottom) << set;
}

TEST(PageLayouts, ListOfASingleRecordIsAStub) {
  std::vector<std::string_view> stubs;
  for (const PageDesign* page : PageDesigns()) {
    if (HasStubGrid(*page)) stubs.push_back(page->set);
  }
  EXPECT_EQ(stubs, (std::vector<std::string_view>{"A01", "A12", "A13", "A14"}));
}

TEST(PageLayouts, FrameOfTheFirstPageHoldsFieldsAndPhotograph) {
  const PageDesign& page = *FindPageDesign("A01");
  const Rect& frame = designs::kBasicInfoFrame;
  for (const FieldDesign& field : page.fields) {
    EXPECT_TRUE(Inside(field.label, frame)) << field.field;
    EXPECT_TRUE(Inside(field.box, frame)) << field.field;
  }
  EXPECT_TRUE(Inside(designs::kPhotoPlace, frame));
  EXPECT_TRUE(Inside(designs::kAddPhotoPlace, frame));
  EXPECT_FALSE(Overlap(frame, designs::kExplain));
  EXPECT_FALSE(Overlap(frame, designs::kHints));
  EXPECT_EQ(designs::kPhotoPlace.width, 1815);
  EXPECT_EQ(designs::kPhotoPlace.height, 2385);
}

}  // namespace
}  // namespace dossierkit
