#include <chrono>

#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class BusyPointerTest : public ToolkitTest {
 protected:
  void Work(int milliseconds) { platform.moment += std::chrono::milliseconds(milliseconds); }
};

TEST_F(BusyPointerTest, ShowsAfter300MillisecondsOfAnEventUntilItsEnd) {
  Visit([&] {
    InEvent([&] {
      Work(299);
      desktop.Busy().Tick();
      EXPECT_FALSE(platform.busy);
      Work(1);
      EXPECT_FALSE(platform.busy) << "it looks at the clock where it is told to";
      desktop.Busy().Tick();
      EXPECT_TRUE(platform.busy);
      desktop.Busy().Tick();
      EXPECT_EQ(platform.busy_pointers, 1);
    });
    EXPECT_FALSE(platform.busy);
  });
}

TEST_F(BusyPointerTest, ShowsAsSoonAsAControlChanges) {
  Visit([&] {
    InEvent([&] {
      Work(300);
      form->Get<TextBox>("txtName")->SetText("x");
      EXPECT_TRUE(platform.busy);
    });
  });
}

TEST_F(BusyPointerTest, ShowsInTheLoadOfAWindow) {
  form->on_load = [&] {
    Work(300);
    desktop.Busy().Tick();
    EXPECT_TRUE(platform.busy);
  };
  Visit([&] { EXPECT_FALSE(platform.busy) << "the user has the word"; });
  EXPECT_EQ(platform.busy_pointers, 1);
}

TEST_F(BusyPointerTest, EventsInsideOneAnotherCountAsOne) {
  Visit([&] {
    InEvent([&] {
      Work(150);
      InEvent([&] { Work(150); });
      desktop.Busy().Tick();
      EXPECT_TRUE(platform.busy);
      InEvent([] {});
      EXPECT_TRUE(platform.busy);
    });
  });
}

TEST_F(BusyPointerTest, AMessageBoxIsNoWork) {
  Visit([&] {
    platform.on_message = [&](const headless::Message&) {
      EXPECT_FALSE(platform.busy);
      Work(300);
      desktop.Busy().Tick();
      EXPECT_FALSE(platform.busy);
    };
    InEvent([&] {
      Work(300);
      desktop.Busy().Tick();
      EXPECT_TRUE(platform.busy);
      desktop.MsgBox("注意");
      desktop.Busy().Tick();
      EXPECT_FALSE(platform.busy) << "the time of the event begins anew";
      Work(300);
      desktop.Busy().Tick();
      EXPECT_TRUE(platform.busy);
    });
  });
  EXPECT_EQ(platform.busy_pointers, 2);
}

TEST_F(BusyPointerTest, IsTakenBackWhereTheEventFails) {
  EXPECT_EQ(NumberOfFailure([&] {
              Visit([&] {
                InEvent([&] {
                  Work(300);
                  desktop.Busy().Tick();
                  throw environment::MakeFailure(environment::kOverflow);
                });
                EXPECT_FALSE(platform.busy);
              });
            }),
            environment::kOverflow);
  EXPECT_EQ(platform.busy_pointers, 1);
}

TEST_F(BusyPointerTest, OutsideAnEventNothingShows) {
  Work(300);
  desktop.Busy().Tick();
  EXPECT_EQ(platform.busy_pointers, 0);
}

}  // namespace
}  // namespace dossierkit::toolkit
