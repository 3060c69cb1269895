// The life of a Component: one in use at a time, on its own thread, never ended under its visit.
#include "shell/component.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "adapters/headless/headless_platform.h"
#include "platform/environment/failure.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

class Components : public testing::Test {
 protected:
  Components() {
    dossier_.SetConnection(SampleDatabase());
    dossier_.OperationType = 3;
    dossier_.personID = kPerson;
  }

  std::unique_ptr<Component> Make(headless::HeadlessPlatform& platform) {
    return std::make_unique<Component>(platform, "/opt/dossier");
  }
  // A visit of the platform's window, in which `scene` is played.
  void Visit(headless::HeadlessPlatform& platform, const std::function<void()>& scene) {
    bool played = false;
    platform.WillRun([&](toolkit::Form&) {
      scene();
      played = true;
    });
    dossier_.ShowDossier();
    EXPECT_TRUE(played);
  }
  // The failure of the call, by its number or its words.
  std::string RefusalOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const environment::Failure& failure) {
      return std::to_string(failure.number());
    } catch (const std::logic_error& error) {
      return error.what();
    }
    return "none";
  }
  std::string RefusalOnAnotherThread(const std::function<void()>& call) {
    std::string refusal;
    std::thread([&] { refusal = RefusalOf(call); }).join();
    return refusal;
  }

  headless::HeadlessPlatform platform_;
  headless::HeadlessPlatform other_;
  IUserCtrl dossier_;
};
using ComponentsDeathTest = Components;

TEST_F(Components, WithoutOneTheCallIsRefused) {
  EXPECT_EQ(RefusalOf([&] { dossier_.ShowDossier(); }), "DossierKit: no Component is set up");
}

TEST_F(Components, ASecondOneIsInUseAlsoAfterTheEndOfTheFirst) {
  auto first = Make(platform_);
  const auto second = Make(other_);
  Visit(other_, [] {});
  first.reset();
  Visit(other_, [] {});
}

TEST_F(Components, TheEndOfTheOneInUseLeavesNone) {
  const auto first = Make(platform_);
  auto second = Make(other_);
  second.reset();
  EXPECT_EQ(RefusalOf([&] { dossier_.ShowDossier(); }), "DossierKit: no Component is set up");
}

TEST_F(Components, OneThatIsMadeDuringAVisitIsRefusedAndTheVisitGoesOn) {
  const auto component = Make(platform_);
  Visit(platform_, [&] {
    EXPECT_EQ(RefusalOf([&] { Make(other_); }), "400");
    EXPECT_TRUE(TheRuntime().InVisit());
    EXPECT_EQ(&TheRuntime().desktop.GetPlatform(), &platform_);
    auto& window = dynamic_cast<frmDossier&>(*TheRuntime().window);
    EXPECT_EQ(window.GetUserCtrl()->Name(), "ctrlUserA01");
  });
}

TEST_F(Components, OneThatLostItsPlaceMayEndDuringTheVisitOfTheOther) {
  auto first = Make(platform_);
  const auto second = Make(other_);
  Visit(other_, [&] {
    first.reset();
    EXPECT_TRUE(TheRuntime().InVisit());
  });
}

TEST_F(ComponentsDeathTest, TheEndDuringItsVisitEndsTheProgramWithAMessage) {
  EXPECT_DEATH(
      {
        auto component = Make(platform_);
        Visit(platform_, [&] { component.reset(); });
      },
      "DossierKit: a Component was ended during its visit");
}

TEST_F(ComponentsDeathTest, TheEndDuringItsLoadDoesSo) {
  EXPECT_DEATH(
      {
        auto component = Make(platform_);
        dossier_.SetConnection(std::make_shared<ado::TracingConnection>(
            SampleDatabase(), [&](const ado::Trace&) { component.reset(); }));
        dossier_.ShowDossier();
      },
      "DossierKit: a Component was ended during its visit");
}

TEST_F(ComponentsDeathTest, TheEndOnAnotherThreadEndsTheProgramWithAMessage) {
  EXPECT_DEATH(
      {
        auto component = Make(platform_);
        std::thread([&] { component.reset(); }).join();
      },
      "DossierKit: a Component was ended on another thread than its own");
}

TEST_F(Components, ACallOnAnotherThreadIsRefused) {
  const auto component = Make(platform_);
  EXPECT_EQ(RefusalOnAnotherThread([&] { dossier_.ShowDossier(); }),
            "DossierKit: ShowDossier is called on another thread than the Component's");
  Visit(platform_, [&] {
    EXPECT_EQ(RefusalOnAnotherThread([&] { dossier_.ShowDossier(); }),
              "DossierKit: ShowDossier is called on another thread than the Component's");
  });
}

TEST_F(Components, OneThatIsMadeOnAnotherThreadIsRefused) {
  const auto component = Make(platform_);
  EXPECT_EQ(RefusalOnAnotherThread([&] { Make(other_); }),
            "DossierKit: a Component of another thread is in use");
  Visit(platform_, [] {});
}

}  // namespace
}  // namespace dossierkit::tests
