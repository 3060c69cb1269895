// The fixture of the suite of tests for views.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/adapters/views/driver.h"
#include "tests/adapters/views/sample_form.h"
#include "tests/platform/toolkit/picker_form.h"

namespace dossierkit::views {

using Log = std::vector<std::string>;

class ViewTest : public testing::Test {
 protected:
  void Visit(const std::function<void()>& scene) { driver->Play(*form, scene); }
  void Pick(const std::function<void()>& scene) { driver->Play(*picker, scene); }

  // Subscribes for the rest of the test.
  template <typename... Arguments, typename Handler>
  void On(environment::Event<Arguments...>& event, Handler handler) {
    hooks.push_back(event.Subscribe(handler));
  }
  // The control of that name refuses to lose the focus from now on.
  void Refuse(toolkit::Control& control) {
    On(control.Validate, [](bool& cancel) { cancel = true; });
  }
  Log TakeLog() { return std::exchange(log, {}); }

  Log log;
  const std::unique_ptr<Driver> driver = MakeDriver();
  tests::User& user = driver->User();
  std::vector<environment::Subscription> hooks;
  std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(driver->Desktop());
  std::shared_ptr<toolkit::PickerForm> picker = std::make_shared<toolkit::PickerForm>(driver->Desktop());
};

}  // namespace dossierkit::views
