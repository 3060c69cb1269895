// BenchVisit: the component on a database file, on a stage of the tests.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "platform/ado/tracing_connection.h"
#include "shell/component.h"
#include "shell/frm_dossier.h"
#include "shell/i_user_ctrl.h"
#include "tests/support/stage.h"
#include "visit/runtime.h"

namespace dossierkit::bench {

// The first person of the sample and of every generated database.
inline const std::string kPerson = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";

// A copy of the sample database that goes with the object.
class Copy {
 public:
  explicit Copy(const std::filesystem::path& original);
  ~Copy();
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

// A generated database of that many persons with that many records each in A02; made at its first use
// and kept in bench-data of the build folder.
std::string GeneratedDatabase(int persons, int records);

// The statements of SQLite that add a code table "BIG" of that many codes in three levels, with captions of
// which every second one holds 甲.
std::string CodeTable(int codes);
// Adds it to a database file.
void AddCodeTable(const std::string& database, int codes);

class BenchVisit {
 public:
  // `observer` is told of each statement, where there is one.
  explicit BenchVisit(const std::string& database, ado::TracingConnection::Observer observer = {});
  // On a connection, of any engine.
  explicit BenchVisit(std::shared_ptr<ado::Connection> connection);

  // Opens the component on the person and plays `scene` in its window.
  void Open(const std::function<void()>& scene);
  void OpenPerson(const std::string& person, const std::function<void()>& scene);
  void OpenNew(const std::function<void()>& scene);
  void GoTo(const std::string& set);
  frmDossier& Window() { return dynamic_cast<frmDossier&>(*TheRuntime().window); }

  const std::unique_ptr<tests::Stage> stage = tests::MakeStage();
  headless::Script& script = stage->GetScript();

 private:
  Component component_{stage->GetPlatform(), "/opt/dossier"};
  IUserCtrl dossier_;

 public:
  const std::unique_ptr<tests::User> stages_user = stage->MakeUser(TheRuntime().desktop);
  tests::User& user = *stages_user;
};

// The sets of the menu besides A01.
const std::vector<std::string>& AllSets();

}  // namespace dossierkit::bench
