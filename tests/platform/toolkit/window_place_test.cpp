#include "platform/toolkit/loop/window_place.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_platform.h"
#include "platform/toolkit/loop/desktop.h"

namespace dossierkit::toolkit {
namespace {

// 600 by 400 pixels.
class PlainForm : public Form {
 public:
  explicit PlainForm(Desktop& desktop) : Form(desktop, "frmPlain") { SetDesignSize(9000, 6000); }
  using Form::SetCenteredOnOwner;

 protected:
  void BuildDesign() override {}
};

class WindowPlaceTest : public testing::Test {
 protected:
  // 1000 by 800 pixels beside a task bar at the left.
  static Surroundings Screen() {
    Surroundings around;
    around.work_area = {60, 0, 1000, 800};
    around.scroll_bar = 14;
    return around;
  }
  static Surroundings Framed(const Margins& frame) {
    Surroundings around = Screen();
    around.frame = frame;
    return around;
  }

  headless::HeadlessPlatform platform;
  Desktop desktop{platform};
  PlainForm form{desktop};
  WindowLayout layout{form, Scale()};
  WindowPlace place{form};
};

TEST_F(WindowPlaceTest, AWindowOpensInTheMiddleOfTheWorkAreaWithRoomForAUsualFrame) {
  EXPECT_EQ(place.Open(layout, Screen()), (Rect{260, 212, 600, 400}));
}

TEST_F(WindowPlaceTest, AWindowOfAnotherOpensOverItsMiddle) {
  Surroundings around = Screen();
  around.below = Rect{100, 50, 700, 500};
  EXPECT_EQ(place.Open(layout, around), (Rect{260, 212, 600, 400})) << "its form wants the screen";
  form.SetCenteredOnOwner(true);
  EXPECT_EQ(place.Open(layout, around), (Rect{150, 112, 600, 400}));
  EXPECT_EQ(place.Open(layout, Screen()), (Rect{260, 212, 600, 400})) << "there is no window below";
}

TEST_F(WindowPlaceTest, AWindowThatTheProgramMovedOpensThere) {
  form.Move({1500, 750, 9000, 6000});
  EXPECT_EQ(place.Open(layout, Screen()), (Rect{104, 78, 600, 400}));
}

TEST_F(WindowPlaceTest, ItsFrameMovesItOnce) {
  EXPECT_EQ(place.Framed(layout, Framed({10, 50, 10, 10}), {600, 400}), std::nullopt) << "it is not open yet";
  place.Open(layout, Screen());
  EXPECT_EQ(place.Framed(layout, Screen(), {600, 400}), std::nullopt) << "it has no frame yet";
  EXPECT_EQ(place.Framed(layout, Framed({10, 50, 10, 10}), {600, 400}), (Rect{260, 220, 600, 400}));
  EXPECT_EQ(place.Framed(layout, Framed({10, 50, 10, 10}), {600, 400}), std::nullopt);
}

TEST_F(WindowPlaceTest, ASizeThatTheUserOrTheDesktopChoseStays) {
  place.Open(layout, Screen());
  EXPECT_EQ(place.Framed(layout, Framed({10, 50, 10, 10}), {640, 400}), std::nullopt);
  EXPECT_EQ(place.Framed(layout, Framed({10, 50, 10, 10}), {600, 400}), std::nullopt) << "once and for all";
  WindowPlace other(form);
  other.Open(layout, Screen());
  Surroundings filled = Framed({10, 50, 10, 10});
  filled.fills_screen = true;
  EXPECT_EQ(other.Framed(layout, filled, {600, 400}), std::nullopt);
}

TEST_F(WindowPlaceTest, AProgramMovesAnOpenWindow) {
  form.Move({1500, 750, 9000, 6000});
  EXPECT_EQ(place.Moved(Scale()), std::nullopt) << "it opens there";
  place.Open(layout, Screen());
  EXPECT_EQ(place.Moved(Scale()), std::nullopt);
  form.Move({1500, 900, 9000, 6000});
  EXPECT_EQ(place.Moved(Scale(2)), (Point{200, 120}));
  form.Move({1500, 900, 9300, 6000});
  EXPECT_EQ(place.Moved(Scale(2)), std::nullopt) << "another size is no other place";
}

}  // namespace
}  // namespace dossierkit::toolkit
