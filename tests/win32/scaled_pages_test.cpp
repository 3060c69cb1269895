// The pages and the windows over them on a screen of another resolution: they look the same whether they
// opened there or came there.
#include <gtest/gtest.h>

#include "adapters/win32/native_view.h"
#include "tests/adapters/views/sample_form.h"
#include "tests/support/paths.h"
#include "tests/support/visit.h"
#include "tests/support/win32_user.h"
#include "tests/win32/picture.h"

namespace dossierkit::tests {
namespace {

// With a photograph, with a list, with long texts.
const std::vector<std::string> kSets = {"A01", "A03", "A14"};

class ScaledPages : public testing::TestWithParam<int> {
 protected:
  ScaledPages() {
    visit_.component.PhotoPath = SourceFolder() + "/data/photos";
    visit_.runtime.app_path = SourceFolder() + "/data/icons";
  }

  static HWND WindowOf(const toolkit::Form& form) {
    return static_cast<const win32::NativeView*>(form.GetView())->Handle();
  }
  HWND TheWindow() { return WindowOf(*visit_.desktop.TopmostForm()); }
  // Of a window and of what it has done since.
  static Picture Shown(HWND window) {
    RunMessages();
    return PictureOf(window);
  }
  // The picture of the window that opens over the page when a control is clicked, and what it was when it
  // came to the screen from another one.
  struct Above {
    Picture opened;
    Picture came;
    Picture back;
  };
  void LookAbove(const std::string& name, Above& seen, bool twice) {
    visit_.script.WillRun([&](toolkit::Form& above) {
      const auto& view = static_cast<const win32::NativeView&>(*above.GetView());
      const HWND window = view.Handle();
      // Its frame is smaller than a screen of another resolution would have it.
      GiveClient(window, view.GetMetrics().Pixels(above.DesignWidth()),
                 view.GetMetrics().Pixels(above.DesignHeight()));
      seen.opened = Shown(window);
      ToScreen(window, GetParam());
      seen.came = Shown(window);
      ToScreen(window, 96);
      seen.back = Shown(window);
    });
    if (twice) {
      visit_.user.DoubleClick(name);
    } else {
      visit_.user.Click(name);
    }
  }

  Visit visit_;
};

TEST_P(ScaledPages, LookTheSameWhicheverWayTheyCameThere) {
  visit_.Open([&] {
    const HWND window = TheWindow();
    ToScreen(window, GetParam());
    ToScreen(window, 96);
    for (const std::string& set : kSets) {
      visit_.GoTo(set);
      const Picture first = Shown(window);
      ToScreen(window, GetParam());
      const Picture came = Shown(window);
      EXPECT_NE(Difference(came, first), "") << set;
      visit_.GoTo(set);
      EXPECT_EQ(Difference(Shown(window), came), "") << set << ": the page was made there";
      ToScreen(window, 96);
      EXPECT_EQ(Difference(Shown(window), first), "") << set;
    }
  });
}

// Over a window that stands on that screen.
TEST_P(ScaledPages, LookTheSameInAWindowThatOpensThere) {
  std::vector<Picture> came;
  visit_.Open([&] {
    ToScreen(TheWindow(), GetParam());
    for (const std::string& set : kSets) {
      visit_.GoTo(set);
      came.push_back(Shown(TheWindow()));
    }
  });
  const auto below = std::make_shared<views::SampleForm>(visit_.desktop);
  visit_.script.WillRun([&](toolkit::Form& form) {
    ToScreen(WindowOf(form), GetParam());
    visit_.Open([&] {
      // The screen of the tests may be too small for it, where it opens smaller, and its frame is.
      GiveClient(TheWindow(), came[0].width, came[0].height);
      for (std::size_t i = 0; i < kSets.size(); ++i) {
        visit_.GoTo(kSets[i]);
        EXPECT_EQ(Difference(Shown(TheWindow()), came[i]), "") << kSets[i];
      }
    });
  });
  below->ShowModal();
}

TEST_P(ScaledPages, TheWindowsOverThemFollowThePageThatTheyOpenOver) {
  visit_.Open([&] {
    for (const auto& [set, name, twice] :
         {std::tuple("A03", "A03_A0304_v", true), std::tuple("A01", "cmdAddPhoto", false)}) {
      ToScreen(TheWindow(), 96);
      visit_.GoTo(set);
      Above over_small;
      LookAbove(name, over_small, twice);
      EXPECT_EQ(Difference(over_small.back, over_small.opened), "") << name;
      ToScreen(TheWindow(), GetParam());
      Above over_large;
      LookAbove(name, over_large, twice);
      EXPECT_EQ(Difference(over_large.opened, over_small.came), "") << name;
      EXPECT_EQ(Difference(over_large.back, over_small.opened), "") << name;
      EXPECT_GT(over_large.opened.width, over_small.opened.width) << name;
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Screens, ScaledPages, testing::Values(120, 144));

}  // namespace
}  // namespace dossierkit::tests
