// Component: what a program sets up once before it uses IUserCtrl.
#pragma once

#include <memory>
#include <string>

#include "dossierkit/share_folder.h"
#include "platform/environment/export.h"

namespace dossierkit {

namespace environment {
class Clock;
}
namespace files {
class Files;
}
namespace toolkit {
class Desktop;
class Platform;
}  // namespace toolkit

// Joins the component with the views of a platform and is the one in use from then on: one made later takes
// the place of an earlier one, whose end changes nothing any more. It must outlive every use of IUserCtrl,
// and belongs to the thread that made it. Throws 400 where it is made during a visit, std::logic_error where
// one of another thread is in use. Ended during a visit, or on another thread, it ends the program with a
// message: what it holds is in use.
class DOSSIERKIT_EXPORT Component {
 public:
  // `app_path` is the folder of the component, in which USER.ICO and xinxj.ico lie; by default the one of
  // this installation.
  explicit Component(toolkit::Platform& platform, std::string app_path = kShareFolder);
  // The same with a clock and files of the caller's, which must outlive it.
  Component(toolkit::Platform& platform, std::string app_path, const environment::Clock& clock,
            files::Files& files);
  ~Component();
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  // Its windows, for a HeadlessUser.
  toolkit::Desktop& GetDesktop() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace dossierkit
