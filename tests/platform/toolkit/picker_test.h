// The fixture of the tests that use a PickerForm.
#pragma once

#include "tests/platform/toolkit/form_test.h"
#include "tests/platform/toolkit/picker_form.h"

namespace dossierkit::toolkit {

class PickerTest : public FormTest<PickerForm> {
 protected:
  void FillTree() { form->FillTree(); }
  void FillList(int rows) { form->FillList(rows); }
  std::string Selected() { return form->Selected(); }
};

}  // namespace dossierkit::toolkit
