// The layout that the pages share, and how their designs are written down. All in twips of the page.
#pragma once

#include <string_view>

#include "pages/page_design.h"

namespace dossierkit::designs {

using toolkit::Rect;

// The part of a page that the window shows.
inline constexpr Rect kVisiblePage = {0, 0, 12600, 9000};

// Below the heading: the fields and the record list at the left, the help frames at the right.
inline constexpr int kBodyTop = 720;
inline constexpr int kBodyBottom = 8700;
inline constexpr int kFieldsLeft = 300;
inline constexpr int kFieldsRight = 9450;
inline constexpr int kFieldsWidth = kFieldsRight - kFieldsLeft;
inline constexpr Rect kExplain = {9600, kBodyTop, 2700, 3180};
inline constexpr Rect kHints = {9600, 4050, 2700, kBodyBottom - 4050};

// On the page with the photograph: the frame in place of the heading, and what stands at its right.
inline constexpr Rect kBasicInfoFrame = {kFieldsLeft, kBodyTop, kFieldsWidth, kBodyBottom - kBodyTop};
inline constexpr Rect kPhotoPlace = {7485, 1080, 1815, 2385};
inline constexpr Rect kAddPhotoPlace = {7485, 3555, 1815, 390};

// The record list of a set with one record per person: hidden for ever.
inline constexpr Rect kStubGrid = {15, 15, 240, 240};

inline constexpr int kBoxHeight = 315;
inline constexpr int kLabelHeight = 285;
inline constexpr int kLabelDrop = (kBoxHeight - kLabelHeight) / 2;  // from a box's top to its label's
inline constexpr int kLabelGap = 60;                                // from a label to its box
inline constexpr int kColumnGap = 150;
inline constexpr int kLinePitch = 465;

// Widths of boxes whose content has one length.
inline constexpr int kMonthWidth = 1305;
inline constexpr int kDayWidth = 1605;
inline constexpr int kYearWidth = 810;
inline constexpr int kNumberWidth = 810;
inline constexpr int kPostcodeWidth = 1005;

// The top of the n-th line of boxes, counted from 0.
constexpr int Line(int n, int first = 780) { return first + n * kLinePitch; }

// The record list from a line down to the end of the body.
constexpr Rect GridFrom(int top) { return {kFieldsLeft, top, kFieldsWidth, kBodyBottom - top}; }

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
  constexpr int kWidth = (kFieldsWidth - kColumnGap) / 2;
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
