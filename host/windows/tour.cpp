#include "host/windows/tour.h"

#include <filesystem>
#include <iostream>

#include "adapters/win32/native_view.h"
#include "adapters/win32/win32_platform.h"
#include "host/database.h"
#include "host/paths.h"
#include "host/system.h"
#include "host/tour/sample.h"
#include "host/windows/picture.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "platform/toolkit/loop/form.h"
#include "shell/component.h"
#include "shell/i_user_ctrl.h"

namespace dossierkit::host {
namespace {

// Plays in the loop of the window, by messages to it.
class TourViews : public win32::Win32Platform {
 public:
  explicit TourViews(std::filesystem::path folder) : folder_(std::move(folder)) {}

  void RunLoop(toolkit::Form& form) override {
    for (const auto& control : form.Controls()) {
      if (control->GetKind() == toolkit::Kind::kVerticalMenu)
        menu_ = std::static_pointer_cast<toolkit::VerticalMenu>(control);
    }
    InLoop([this, &form] { Step(form); });
    Win32Platform::RunLoop(form);
  }

 private:
  static HWND Native(const toolkit::Control& control) {
    return static_cast<const win32::NativeView*>(control.GetView())->Handle();
  }

  // The picture of the page on show, and a click on the next one's item.
  void Step(toolkit::Form& form) {
    const std::string number = (step_ < 9 ? "0" : "") + std::to_string(step_ + 1);
    std::cout << number << " " << menu_->Items()[step_].caption << std::endl;
    WritePicture(Native(form), folder_ / (number + ".png"));
    if (++step_ == menu_->Items().size()) return form.UserClose();
    const HWND list = FindWindowExW(Native(*menu_), nullptr, L"LISTBOX", nullptr);
    RECT item = {};
    SendMessageW(list, LB_GETITEMRECT, step_, reinterpret_cast<LPARAM>(&item));
    const LPARAM at = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(list, WM_LBUTTONUP, 0, at);
    // What the click leaves to be done later comes before the picture.
    InLoop([this, &form] { InLoop([this, &form] { Step(form); }); });
  }

  std::filesystem::path folder_;
  std::shared_ptr<toolkit::VerticalMenu> menu_;
  std::size_t step_ = 0;
};

}  // namespace

int RunTour(const Options& asked) {
  const Options options = WithSampleOfTour(asked);
  const auto database = OpenDatabase(options);
  TourViews platform(PathOf(options.folder));
  const Component component(platform, TextOf(ShareFolder()));
  IUserCtrl dossier;
  dossier.SetConnection(TracedForTheComponent(database, options));
  const auto person = database->Execute("select A00 from A01 order by A0101");
  if (person->RecordCount() > 0) dossier.personID = environment::TextOr(person->ValueAt(1, 0), "");
  dossier.OperationType = dossier.personID.empty() ? 0 : 3;
  dossier.PersonType = options.person_type.value_or(1);
  dossier.PhotoPath = options.photos;
  dossier.ShowDossier();
  return 0;
}

}  // namespace dossierkit::host
