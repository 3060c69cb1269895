#include "platform/toolkit/loop/window_layout.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_platform.h"
#include "platform/toolkit/loop/desktop.h"

namespace dossierkit::toolkit {
namespace {

// 600 by 400 pixels: a bar of 30 along the top, a side of 100 with a menu in it, and the rest. With `panes`
// the rest alone scrolls.
class PaneForm : public Form {
 public:
  PaneForm(Desktop& desktop, bool panes) : Form(desktop, "frmPanes"), panes_(panes) {}
  std::shared_ptr<Frame> bar, side, scrolled, menu, inner;

 protected:
  void BuildDesign() override {
    SetDesignSize(9000, 6000);
    bar = Controls().Make<Frame>("bar");
    bar->Move({0, 0, 9000, 450});
    side = Controls().Make<Frame>("side");
    side->Move({0, 450, 1500, 5550});
    menu = Controls().Make<Frame>("menu");
    menu->SetContainer(*side);
    menu->Move({0, 150, 1500, 5250});
    scrolled = Controls().Make<Frame>("scrolled");
    scrolled->Move({1500, 450, 6000, 4500});
    inner = Controls().Make<Frame>("inner");
    inner->SetContainer(*scrolled);
    inner->Move({15, 30, 45, 60});
    if (panes_) SetPanes(*bar, *side, *scrolled);
  }

 private:
  bool panes_;
};

class WindowLayoutTest : public testing::Test {
 protected:
  void Visit(bool panes, const std::function<void(PaneForm&)>& scene) {
    const auto form = std::make_shared<PaneForm>(desktop, panes);
    platform.WillRun([&](Form&) { scene(*form); });
    form->ShowModal();
  }
  headless::HeadlessPlatform platform;
  Desktop desktop{platform};
};

TEST(Scale, RoundsByEdgesSoThatNeighboursStayNeighbours) {
  const Scale scale(1.25);
  EXPECT_EQ(scale.Pixels(100), 8);
  EXPECT_EQ(scale.Twips(8), 96);
  const Rect left = scale.Pixels(Rect{0, 0, 100, 15});
  const Rect right = scale.Pixels(Rect{100, 0, 100, 15});
  EXPECT_EQ(left.left + left.width, right.left);
  EXPECT_EQ(right.left + right.width, scale.Pixels(200));
  EXPECT_EQ(Scale().Pixels(Rect{15, 30, 45, 60}), (Rect{1, 2, 3, 4}));
}

TEST_F(WindowLayoutTest, WithoutPanesAllOfItScrolls) {
  Visit(false, [](PaneForm& form) {
    const WindowLayout layout(form, Scale());
    EXPECT_FALSE(layout.HasPanes());
    EXPECT_EQ(layout.DesignSize(), (Size{600, 400}));
    EXPECT_EQ(layout.ScrolledSize(), (Size{600, 400}));
    EXPECT_EQ(layout.Viewport({500, 300}), (Rect{0, 0, 500, 300}));
    EXPECT_TRUE(layout.Scrolls(*form.bar));
    EXPECT_EQ(layout.ShownPlace(*form.bar, {500, 300}), (Rect{0, 0, 600, 30}));
    EXPECT_TRUE(layout.Stretched().empty());
    EXPECT_EQ(layout.Opening().content, (Size{600, 400}));
  });
}

TEST_F(WindowLayoutTest, BarAndSideReachTheEdgesAndTheRestScrolls) {
  Visit(true, [](PaneForm& form) {
    const WindowLayout layout(form, Scale());
    EXPECT_TRUE(layout.HasPanes());
    EXPECT_EQ(layout.ScrolledSize(), (Size{400, 300}));
    EXPECT_EQ(layout.Viewport({700, 500}), (Rect{100, 30, 600, 470}));
    EXPECT_TRUE(layout.Scrolls(*form.scrolled));
    EXPECT_FALSE(layout.Scrolls(*form.side));
    EXPECT_EQ(layout.ShownPlace(*form.bar, {700, 500}), (Rect{0, 0, 700, 30}));
    EXPECT_EQ(layout.ShownPlace(*form.side, {700, 500}), (Rect{0, 30, 100, 470}));
    EXPECT_EQ(layout.ShownPlace(*form.menu, {700, 500}), (Rect{0, 10, 100, 450})) << "keeps its lower edge";
    EXPECT_EQ(layout.ShownPlace(*form.scrolled, {700, 500}), (Rect{0, 0, 400, 300})) << "in its viewport";
    EXPECT_EQ(layout.ShownPlace(*form.inner, {700, 500}), (Rect{1, 2, 3, 4}));
    EXPECT_EQ(layout.Stretched(),
              (std::vector<std::shared_ptr<Control>>{form.bar, form.side, form.menu, form.scrolled}));
    EXPECT_EQ(layout.Opening().client, (Size{600, 400}));
    EXPECT_EQ(layout.Opening().content, (Size{500, 330}));
    form.Unload();
    EXPECT_TRUE(layout.Stretched().empty());
  });
}

TEST_F(WindowLayoutTest, AWindowOpensAtTheCornerThatWasSet) {
  Visit(true, [](PaneForm& form) {
    EXPECT_FALSE(WindowLayout(form, Scale()).Opening().at_corner);
    form.Move({150, 300, 9120, 6405});
    EXPECT_TRUE(WindowLayout(form, Scale(2)).Opening().at_corner);
    EXPECT_EQ(WindowLayout(form, Scale(2)).Opening().corner, (Point{20, 40}));
  });
}

TEST_F(WindowLayoutTest, ASmallerWindowKeepsTheSizeOfItsDesignForTheModel) {
  Visit(true, [](PaneForm& form) {
    const WindowLayout layout(form, Scale());
    EXPECT_EQ(layout.ModelSize({600, 400}), (Size{9120, 6405}));
    EXPECT_EQ(layout.ModelSize({300, 500}), (Size{9120, 7905}));
    EXPECT_EQ(layout.ModelSize({700, 200}), (Size{10620, 6405}));
    const WindowLayout enlarged(form, Scale(1.3));
    EXPECT_EQ(enlarged.DesignSize(), (Size{780, 520}));
    EXPECT_EQ(enlarged.ModelSize({780, 520}), (Size{9120, 6405}));
    EXPECT_EQ(enlarged.ModelSize({781, 521}), (Size{9132, 6417}));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
