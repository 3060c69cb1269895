// Stage: the views on which a test is played, with somebody to play the user. A journey is written once; each
// program of tests is linked with the stage that its journeys run on.
#pragma once

#include <memory>

#include "adapters/headless/script.h"
#include "platform/toolkit/loop/desktop.h"
#include "tests/support/user.h"

namespace dossierkit::tests {

class Stage {
 public:
  virtual ~Stage() = default;
  virtual toolkit::Platform& GetPlatform() = 0;
  // Scenes and answers for that platform.
  virtual headless::Script& GetScript() = 0;
  // Plays on the windows of a desktop of that platform.
  virtual std::unique_ptr<User> MakeUser(toolkit::Desktop& desktop) = 0;
};

// Defined for each view set: in headless_stage.cpp and scripted_qt.cpp.
std::unique_ptr<Stage> MakeStage();

// The stage of a platform that follows a script.
template <typename Platform, typename PlatformsUser>
class StageOf : public Stage {
 public:
  toolkit::Platform& GetPlatform() override { return platform_; }
  headless::Script& GetScript() override { return platform_; }
  std::unique_ptr<User> MakeUser(toolkit::Desktop& desktop) override {
    return std::make_unique<PlatformsUser>(desktop);
  }

 private:
  Platform platform_;
};

}  // namespace dossierkit::tests
