// Visit: the component on a fresh sample database, on the stage of the program.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/headless/headless_platform.h"
#include "pages/ctrl_user.h"
#include "platform/ado/tracing_connection.h"
#include "shell/frm_dossier.h"
#include "shell/i_user_ctrl.h"
#include "tests/support/database.h"
#include "tests/support/failing_connection.h"
#include "tests/support/failing_files.h"
#include "tests/support/stage.h"
#include "visit/runtime.h"

namespace dossierkit::tests {

// A person of the sample database with records in every set: 陆怀谷.
inline const std::string kPerson = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";

class FixedClock : public environment::Clock {
 public:
  environment::DateTime now{2026, 11, 21, 10, 30, 0};
  environment::DateTime Now() const override { return now; }
};

// The first column of the rows that a query gives, as text; Null as "NULL".
std::vector<std::string> Column(ado::Connection& database, const std::string& query);
// The rows that a query gives, their columns joined by "|".
std::vector<std::string> Rows(ado::Connection& database, const std::string& query);
// The single value that a query gives.
std::string One(ado::Connection& database, const std::string& query);

// Everything that a test of the system needs; one component per object.
class Visit {
 public:
  Visit();
  ~Visit();

  // Opens the component and plays `scene` in its window, which is closed behind it if still open.
  bool Open(const std::function<void()>& scene);
  bool OpenPerson(const std::string& person, const std::function<void()>& scene);
  bool OpenNew(const std::function<void()>& scene);

  frmDossier& Window() { return dynamic_cast<frmDossier&>(*runtime.window); }
  ctrlUser& OnShow() { return dynamic_cast<ctrlUser&>(*Window().GetUserCtrl()); }
  // The value control of a field, as in "A03_A0302".
  toolkit::TextBox& Text(const std::string& field) { return *user.Find<toolkit::TextBox>(field + "_v"); }
  toolkit::MaskEdBox& Masked(const std::string& field) {
    return *user.Find<toolkit::MaskEdBox>(field + "_v");
  }
  // Enters a code as if it had been looked up: the code in the field, a caption in its box.
  void EnterCode(const std::string& field, const std::string& code);
  std::string Caption(const std::string& label) { return user.Find<toolkit::Label>(label)->Caption(); }
  std::string Focus();
  // Clicks the item of a set in the menu, as in "A03".
  void GoTo(const std::string& set);
  bool Enabled(const std::string& button) { return Window().TbMain().Button(button).Enabled(); }

  // From now on each statement that begins so throws std::bad_alloc instead of running.
  void RunOutOfMemoryAt(const std::string& beginning);

  // The texts of the message boxes shown so far.
  std::vector<std::string> Messages() const;

  // The views that have no screen, where the program of tests has those.
  headless::HeadlessPlatform& HeadlessViews() {
    return dynamic_cast<headless::HeadlessPlatform&>(stage->GetPlatform());
  }

  const std::unique_ptr<Stage> stage = MakeStage();
  headless::Script& script = stage->GetScript();
  toolkit::Desktop desktop{stage->GetPlatform()};
  const std::unique_ptr<User> stages_user = stage->MakeUser(desktop);
  User& user = *stages_user;
  FixedClock clock;
  files::LocalFiles local_files;
  FailingFiles files{local_files};
  std::shared_ptr<Database> database = SampleDatabase();
  std::shared_ptr<FailingConnection> failing = std::make_shared<FailingConnection>(database);
  std::vector<std::string> statements;  // that reached the connection, in order
  Runtime runtime{desktop, clock, files, "/opt/dossier", nullptr, nullptr};
  IUserCtrl component;
};

}  // namespace dossierkit::tests
