// FormTest: the fixture of tests with one window, on views without a screen.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "adapters/headless/headless_platform.h"
#include "adapters/headless/headless_user.h"
#include "platform/environment/event.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"
#include "tests/support/failures.h"

namespace dossierkit::toolkit {

using tests::NumberOfFailure;

// What happened, in order: "txtName.GotFocus".
using Log = std::vector<std::string>;

// A platform and a window that write down what happens are given the log.
template <typename Window, typename Views = headless::HeadlessPlatform>
class FormTest : public testing::Test {
 protected:
  // Shows the window, runs `scene` while it is open, and leaves it by the close box.
  void Visit(const std::function<void()>& scene) {
    platform.WillRun([scene](Form&) { scene(); });
    form->ShowModal();
  }

  // Subscribes for the rest of the test.
  template <typename... Arguments, typename Handler>
  void On(environment::Event<Arguments...>& event, Handler handler) {
    hooks.push_back(event.Subscribe(handler));
  }

  std::string Focus() const { return form->ActiveControl() ? form->ActiveControl()->Name() : ""; }
  // What was noted since the last call.
  Log TakeLog() { return std::exchange(log, {}); }

  Log log;
  Views platform = MakeViews(log);
  Desktop desktop{platform};
  headless::HeadlessUser user{desktop};
  std::vector<environment::Subscription> hooks;
  std::shared_ptr<Window> form = MakeWindow(desktop, log);

 private:
  static Views MakeViews([[maybe_unused]] Log& log) {
    if constexpr (std::is_constructible_v<Views, Log&>) {
      return Views(log);
    } else {
      return Views();
    }
  }
  static std::shared_ptr<Window> MakeWindow(Desktop& desktop, [[maybe_unused]] Log& log) {
    if constexpr (std::is_constructible_v<Window, Desktop&, Log&>) {
      return std::make_shared<Window>(desktop, log);
    } else {
      return std::make_shared<Window>(desktop);
    }
  }
};

}  // namespace dossierkit::toolkit
