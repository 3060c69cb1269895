// The fixture of the tests that use a PickerForm.
#pragma once

#include "tests/platform/toolkit/picker_form.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {

class PickerTest : public testing::Test {
 protected:
  // Shows the window, runs `scene` while it is open, and leaves it by the close box.
  void Visit(const std::function<void()>& scene) {
    platform.WillRun([scene](Form&) { scene(); });
    form->ShowModal();
  }
  template <typename... Arguments, typename Handler>
  void On(environment::Event<Arguments...>& event, Handler handler) {
    hooks.push_back(event.Subscribe(handler));
  }
  std::string Focus() const { return form->ActiveControl() ? form->ActiveControl()->Name() : ""; }

  void FillTree() { form->FillTree(); }
  void FillList(int rows) { form->FillList(rows); }
  std::string Selected() { return form->Selected(); }

  headless::HeadlessPlatform platform;
  Desktop desktop{platform};
  headless::HeadlessUser user{desktop};
  std::vector<environment::Subscription> hooks;
  std::shared_ptr<PickerForm> form = std::make_shared<PickerForm>(desktop);
};

}  // namespace dossierkit::toolkit
