// The layout that the pages share, and how their designs are written down. All in twips of the page.
#pragma once

#include <string_view>

#include "pages/page_design.h"

namespace dossierkit::designs {

using toolkit::Rect;

// The part of a page that the window shows.
inline constexpr Rect kVisiblePage = {0, 0, 12600, 9000};

// One distance between whatever stands side by side or one block above another.
inline constexpr int kGutter = 240;

// The fields and the record list at the left, the help at the right: as far from the window's right edge
// as from the menu at the left.
inline constexpr int kFieldsLeft = 0;
inline constexpr int kFieldsWidth = 9360;
inline constexpr int kFieldsRight = kFieldsLeft + kFieldsWidth;
inline constexpr int kHelpLeft = kFieldsRight + kGutter;
inline constexpr int kHelpWidth = 2760;

// The heading: the title and the operation over a line.
inline constexpr Rect kTitlePlace = {kFieldsLeft, 0, kFieldsWidth, 420};
inline constexpr Rect kOperationPlace = {kHelpLeft, 60, kHelpWidth, 300};
inline constexpr Rect kLinePlace = {kFieldsLeft, 540, kHelpLeft + kHelpWidth - kFieldsLeft, 15};

// Below the heading.
inline constexpr int kBodyTop = 720;
inline constexpr int kBodyBottom = 8880;
// The help on every page: Frm1, captioned 填表说明, which holds labExplain, over Frm2, captioned 界面说明,
// which holds LabInterFace.
inline constexpr Rect kExplain = {kHelpLeft, kBodyTop, kHelpWidth, 2730};
inline constexpr int kHintsTop = kExplain.top + kExplain.height + kGutter;
inline constexpr Rect kHints = {kHelpLeft, kHintsTop, kHelpWidth, kBodyBottom - kHintsTop};

// On the page with the photograph: the frame takes the place of the title, so that the line stands under
// the operation alone; and what stands at the frame's right.
inline constexpr Rect kBasicInfoFrame = {kFieldsLeft, 0, kFieldsWidth, kBodyBottom};
inline constexpr Rect kLineBesideFrame = {kHelpLeft, kLinePlace.top, kHelpWidth, kLinePlace.height};
inline constexpr int kFramePadding = 210;
inline constexpr int kPhotoLeft = kFieldsRight - kFramePadding - 1815;
inline constexpr Rect kPhotoPlace = {kPhotoLeft, kBodyTop, 1815, 2385};
inline constexpr Rect kAddPhotoPlace = {kPhotoLeft, kBodyTop + 2385 + 135, 1815, 390};

// The record list of a set with one record per person: hidden for ever.
inline constexpr Rect kStubGrid = {0, 0, 240, 240};

inline constexpr int kBoxHeight = 360;
inline constexpr int kLabelHeight = 300;
inline constexpr int kLabelDrop = (kBoxHeight - kLabelHeight) / 2;  // from a box's top to its label's
inline constexpr int kLabelGap = 60;                                // from a label to its box
inline constexpr int kLinePitch = 495;

// Widths of boxes whose content has one length.
inline constexpr int kMonthWidth = 1440;
inline constexpr int kDayWidth = 1860;
inline constexpr int kYearWidth = 870;
inline constexpr int kNumberWidth = 870;
inline constexpr int kPostcodeWidth = 1125;

// The top of the n-th line of boxes, counted from 0.
constexpr int Line(int n) { return kBodyTop + n * kLinePitch; }

// The height of a box over so many lines.
constexpr int Lines(int n) { return (n - 1) * kLinePitch + kBoxHeight; }

// The record list in place of the n-th line, down to the end of the body.
constexpr Rect GridFrom(int n) {
  const int top = Line(n - 1) + kBoxHeight + kGutter;
  return {kFieldsLeft, top, kFieldsWidth, kBodyBottom - top};
}

// A box of several lines under a caption on the n-th line, down to the end of the body.
constexpr Rect CaptionOver(int n) { return {kFieldsLeft, Line(n), kFieldsWidth, kLabelHeight}; }
constexpr Rect BoxUnder(const Rect& caption) {
  const int top = caption.top + caption.height + kLabelGap;
  return {kFieldsLeft, top, kFieldsWidth, kBodyBottom - top};
}

// Where a field stands: its label, and its box.
struct Place {
  Rect label;
  Rect box;
};

// Labels of one width from `left`, and at their right boxes that end at `right` at most.
struct Column {
  int left;
  int label_width;
  int right;

  // A box of the given width.
  constexpr Place At(int top, int width, int height = kBoxHeight) const {
    return {{left, top + kLabelDrop, label_width, kLabelHeight},
            {left + label_width + kLabelGap, top, width, height}};
  }
  // A box up to the column's right edge.
  constexpr Place At(int top) const { return Tall(top, kBoxHeight); }
  constexpr Place Tall(int top, int height) const {
    return At(top, right - left - label_width - kLabelGap, height);
  }
};

// Two equal columns over the width of the fields, and both as one.
struct Columns {
  Column left;
  Column right;
  Column whole;
};

constexpr Columns ColumnsOf(int label_width) {
  constexpr int kWidth = (kFieldsWidth - kGutter) / 2;
  return {{kFieldsLeft, label_width, kFieldsLeft + kWidth},
          {kFieldsRight - kWidth, label_width, kFieldsRight},
          {kFieldsLeft, label_width, kFieldsRight}};
}

inline constexpr int kLabelWidth = 1200;      // captions of up to six characters, bold
inline constexpr int kWideLabelWidth = 1560;  // of up to eight

struct Mask {
  std::string_view mask;
  std::string_view format;
};

inline constexpr Mask kMonthMask = {"####年##月", "yyyy年mm月"};
inline constexpr Mask kDayMask = {"####年##月##日", "yyyy年mm月dd日"};
inline constexpr Mask kYearMask = {"####", "####"};
inline constexpr Mask kPostcodeMask = {"######", "######"};

inline constexpr std::string_view kBegin = "Begin";
inline constexpr std::string_view kEnd = "End";  // Enter here saves and adds

constexpr FieldDesign Text(std::string_view field, std::string_view caption, const Place& place,
                           std::string_view tag = {}) {
  return {field, FieldDesign::Kind::kText, caption, place.label, place.box, {}, {}, tag};
}

constexpr FieldDesign MultiLine(std::string_view field, std::string_view caption, const Place& place) {
  return {field, FieldDesign::Kind::kMultiLine, caption, place.label, place.box};
}

// A multi-line field without a Label of its own, below or beside a fixed one.
constexpr FieldDesign MultiLineBy(std::string_view field, std::string_view fixed_label, const Rect& box) {
  return {field, FieldDesign::Kind::kMultiLine, {}, {}, box, {}, {}, {}, fixed_label};
}

constexpr FieldDesign Masked(std::string_view field, std::string_view caption, const Place& place,
                             const Mask& mask) {
  return {field, FieldDesign::Kind::kMask, caption, place.label, place.box, mask.mask, mask.format};
}

constexpr FieldDesign Month(std::string_view field, std::string_view caption, const Column& column, int top) {
  return Masked(field, caption, column.At(top, kMonthWidth), kMonthMask);
}

constexpr FieldDesign Year(std::string_view field, std::string_view caption, const Column& column, int top) {
  return Masked(field, caption, column.At(top, kYearWidth), kYearMask);
}

}  // namespace dossierkit::designs
