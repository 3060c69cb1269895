#include "platform/toolkit/loop/placement.h"

#include <gtest/gtest.h>

#include <ostream>

namespace dossierkit::toolkit {

// For the messages of failed tests.
static void PrintTo(const Rect& rect, std::ostream* out) {
  *out << rect.left << "," << rect.top << " " << rect.width << "x" << rect.height;
}
static void PrintTo(const Point& point, std::ostream* out) { *out << point.left << "," << point.top; }

namespace {

// A window of 1016 by 741 pixels of which 1008 by 660 hold something, in the frame of a usual desktop.
WindowRequest Main(const Rect& screen) {
  WindowRequest request;
  request.client = {1016, 741};
  request.content = {1008, 660};
  request.scroll_bar = 14;
  request.frame = {4, 28, 4, 4};
  request.screen = screen;
  request.over = screen;
  return request;
}

TEST(PlaceWindow, ALargeScreenShowsTheWholeDesignInItsMiddle) {
  EXPECT_EQ(PlaceWindow(Main({0, 0, 1920, 1080})), (Rect{452, 181, 1016, 741}));
}

TEST(PlaceWindow, TheFrameIsCountedOnAScreenThatItFills) {
  EXPECT_EQ(PlaceWindow(Main({0, 0, 1024, 768})), (Rect{4, 28, 1016, 736}));
}

TEST(PlaceWindow, ATaskBarIsLeftAlone) {
  EXPECT_EQ(PlaceWindow(Main({0, 0, 1366, 728})), (Rect{175, 28, 1016, 696}));
  EXPECT_EQ(PlaceWindow(Main({60, 40, 1306, 728})), (Rect{205, 68, 1016, 696})) << "at the left and above";
}

TEST(PlaceWindow, ASmallScreenIsFilled) {
  EXPECT_EQ(PlaceWindow(Main({0, 0, 853, 533})), (Rect{4, 28, 845, 501}));
  EXPECT_EQ(PlaceWindow(Main({0, 0, 960, 540})), (Rect{4, 28, 952, 508}));
}

TEST(PlaceWindow, AScrollBarTakesNothingFromTheOtherDirection) {
  EXPECT_EQ(PlaceWindow(Main({0, 0, 1366, 600})), (Rect{172, 28, 1022, 568}));
  EXPECT_EQ(PlaceWindow(Main({0, 0, 1366, 692})), (Rect{175, 28, 1016, 660})) << "all of it shows";
  WindowRequest tall = Main({0, 0, 1000, 1080});
  tall.client = {1016, 660};
  EXPECT_EQ(PlaceWindow(tall), (Rect{4, 215, 992, 674}));
}

TEST(PlaceWindow, ContentBeyondTheDesignAsksForNoRoom) {
  WindowRequest small = Main({0, 0, 800, 600});
  small.client = {200, 100};
  EXPECT_EQ(PlaceWindow(small), (Rect{300, 262, 200, 100}));
}

TEST(PlaceWindow, OpensOverTheMiddleOfItsOwner) {
  WindowRequest picker;
  picker.client = picker.content = {337, 437};
  picker.frame = {1, 20, 1, 5};
  picker.screen = {0, 0, 1366, 728};
  picker.over = {171, 0, 1024, 728};
  EXPECT_EQ(PlaceWindow(picker), (Rect{514, 153, 337, 437}));
}

TEST(PlaceWindow, StaysOnTheScreenOfAnOwnerAtItsEdge) {
  WindowRequest picker;
  picker.client = picker.content = {337, 437};
  picker.frame = {1, 20, 1, 5};
  picker.screen = {0, 0, 1366, 728};
  picker.over = {1200, 600, 300, 300};
  EXPECT_EQ(PlaceWindow(picker), (Rect{1028, 286, 337, 437}))
      << "its lower edge with the frame is the screen's";
  picker.over = {-250, -250, 300, 300};
  EXPECT_EQ(PlaceWindow(picker), (Rect{1, 20, 337, 437}));
}

TEST(PlaceWindow, AWantedCornerIsThatOfTheFrame) {
  WindowRequest preview = Main({0, 0, 1920, 1080});
  preview.at_corner = true;
  preview.corner = {100, 50};
  EXPECT_EQ(PlaceWindow(preview), (Rect{104, 78, 1016, 741}));
  preview.corner = {1800, 1000};
  EXPECT_EQ(PlaceWindow(preview), (Rect{900, 335, 1016, 741}));
}

constexpr Panes kDesign = {{0, 0, 1016, 34}, {1, 24, 141, 683}, {145, 35, 863, 625}};

TEST(FitPanes, InASmallerWindowAllStayInSight) {
  const Panes shown = FitPanes(kDesign, {845, 501});
  EXPECT_EQ(shown.bar, (Rect{0, 0, 845, 34}));
  EXPECT_EQ(shown.side, (Rect{1, 24, 141, 477}));
  EXPECT_EQ(shown.scrolled, (Rect{145, 35, 700, 466}));
}

TEST(FitPanes, InALargerWindowTheyReachItsEdges) {
  const Panes shown = FitPanes(kDesign, {1400, 900});
  EXPECT_EQ(shown.bar, (Rect{0, 0, 1400, 34}));
  EXPECT_EQ(shown.side, (Rect{1, 24, 141, 876}));
  EXPECT_EQ(shown.scrolled, (Rect{145, 35, 1255, 865}));
}

TEST(FitPanes, NothingIsSmallerThanNothing) {
  const Panes shown = FitPanes(kDesign, {100, 20});
  EXPECT_EQ(shown.side, (Rect{1, 24, 141, 0}));
  EXPECT_EQ(shown.scrolled, (Rect{145, 35, 0, 0}));
}

TEST(FollowLowerEdge, WhatStandsInASideKeepsItsDistance) {
  EXPECT_EQ(FollowLowerEdge({0, 8, 137, 673}, kDesign.side, {1, 24, 141, 477}), (Rect{0, 8, 137, 467}));
  EXPECT_EQ(FollowLowerEdge({0, 8, 137, 673}, kDesign.side, {1, 24, 141, 876}), (Rect{0, 8, 137, 866}));
  EXPECT_EQ(FollowLowerEdge({0, 8, 137, 673}, kDesign.side, {1, 24, 141, 5}), (Rect{0, 8, 137, 0}));
}

// A viewport of 700 by 466 on 863 by 625.
Point Scroll(const Point& offset, const Rect& target, const Rect& label) {
  return ScrollIntoSight({offset, {700, 466}, {863, 625}}, target, label, 8);
}

TEST(ScrollIntoSight, WhatIsInSightIsLeftWhereItIs) {
  EXPECT_EQ(Scroll({0, 0}, {100, 100, 200, 21}, {20, 101, 80, 19}), (Point{0, 0}));
  EXPECT_EQ(Scroll({10, 90}, {100, 100, 200, 21}, {20, 101, 80, 19}), (Point{10, 90}));
}

TEST(ScrollIntoSight, MovesNoMoreThanNeeded) {
  EXPECT_EQ(Scroll({0, 0}, {500, 500, 240, 21}, {420, 501, 80, 19}), (Point{48, 63}));
  EXPECT_EQ(Scroll({163, 159}, {100, 100, 200, 21}, {100, 100, 200, 21}), (Point{92, 92}));
}

TEST(ScrollIntoSight, TheLabelComesAlongWhereThereIsRoom) {
  EXPECT_EQ(Scroll({163, 0}, {300, 100, 200, 21}, {120, 101, 80, 19}), (Point{112, 0}));
  EXPECT_EQ(Scroll({163, 0}, {300, 100, 560, 21}, {20, 101, 80, 19}), (Point{163, 0}))
      << "of both only one fits: the field itself";
}

TEST(ScrollIntoSight, WhatIsTooLargeShowsFromItsBeginning) {
  EXPECT_EQ(Scroll({0, 0}, {20, 60, 800, 500}, {20, 40, 100, 19}), (Point{0, 0})) << "it does already";
  EXPECT_EQ(Scroll({0, 0}, {20, 241, 60, 500}, {20, 241, 60, 500}), (Point{0, 0})) << "in the upper half";
  EXPECT_EQ(Scroll({0, 0}, {20, 242, 60, 500}, {20, 242, 60, 500}), (Point{0, 159}));
  EXPECT_EQ(Scroll({163, 159}, {20, 60, 800, 500}, {20, 40, 100, 19}), (Point{12, 52}));
}

TEST(ScrollIntoSight, ScrollsNotBeyondTheContent) {
  EXPECT_EQ(Scroll({0, 0}, {800, 600, 63, 25}, {800, 600, 63, 25}), (Point{163, 159}));
  EXPECT_EQ(Scroll({50, 50}, {0, 0, 20, 20}, {0, 0, 20, 20}), (Point{0, 0}));
  EXPECT_EQ(ScrollIntoSight({{0, 0}, {900, 700}, {863, 625}}, {800, 600, 63, 25}, {800, 600, 63, 25}, 8),
            (Point{0, 0}))
      << "all of it shows";
}

}  // namespace
}  // namespace dossierkit::toolkit
