// dossier: the demo host.
#include <fontconfig/fontconfig.h>
#include <pwd.h>
#include <unistd.h>

#include <QApplication>
#include <QSysInfo>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <thread>
#include <vector>

#include "adapters/qt/qt_platform.h"
#include "host/commands.h"
#include "host/database.h"
#include "host/failure_box.h"
#include "host/keys_window.h"
#include "host/options.h"
#include "host/paths.h"
#include "host/people_window.h"
#include "host/system.h"
#include "host/tour/sample.h"
#include "host/tour/tour.h"
#include "host/visits.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "shell/component.h"
#include "shell/i_user_ctrl.h"

namespace dossierkit::host {
namespace {

// The views, with the host's own windows dressed like theirs.
class Views : public qt::QtPlatform {
 public:
  Views() { qt::DressApplication(*qApp); }
};

int RunTour(const Options& asked) {
  const Options options = WithSampleOfTour(asked);
  const auto database = OpenDatabase(options);
  Views platform;
  const auto connection = TracedForTheComponent(database, options);
  const Component component(platform, ShareFolder().string());
  IUserCtrl dossier;
  dossier.SetConnection(connection);
  dossier.PersonType = options.person_type.value_or(1);
  dossier.PhotoPath = options.photos;
  const auto query = [&](const std::string& sql) {
    std::vector<std::string> lines;
    const auto rows = database->Execute(sql);
    for (int row = 1; row <= rows->RecordCount(); ++row) {
      std::string line;
      for (std::size_t column = 0; column < rows->FieldCount(); ++column) {
        line += (column > 0 ? "|" : "") + environment::TextOr(rows->ValueAt(row, column), "NULL");
      }
      lines.push_back(line);
    }
    return lines;
  };
  return PlayTour(dossier, query, options.folder) ? 0 : 1;
}

void ShowPeople(const std::shared_ptr<ado::Connection>& database, Visits& visits, const Options& options) {
  PeopleWindow window(database,
                      [&](const VisitRequest& request, QWidget& over) { visits.Open(request, &over); });
  if (options.person_type) window.ChoosePersonType(*options.person_type);
  window.show();
  QApplication::exec();
}

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

bool HasDisplay() { return IsSet("DISPLAY") || IsSet("QT_QPA_PLATFORM"); }

// Windows need a display; the tour can do without.
void ChooseDisplay(const Options& options) {
  if (HasDisplay()) return;
  if (options.action != Options::Action::kTour) {
    throw environment::Failure(
        environment::kPathAccess,
        "没有显示器：请设置 DISPLAY，或用 QT_QPA_PLATFORM=vnc 通过网络查看，或用 --tour DIR 播放演示。");
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

// As one who waits for a person would look for whoever has him open.
std::string UserAtMachine() {
  const passwd* user = getpwuid(geteuid());
  return (user ? std::string(user->pw_name) : std::to_string(geteuid())) + "@" +
         QSysInfo::machineHostName().toStdString();
}

int Run(const Options& options) {
  if (const auto code = RunCommand(options)) return *code;
  ChooseDisplay(options);
  // Qt needs the system's list of fonts when it has reached the display: it is read meanwhile.
  const std::jthread fonts([] { FcInit(); });
  if (options.action == Options::Action::kTour) return RunTour(options);
  const auto database = OpenDatabase(options);
  Views platform;
  const auto connection = TracedForTheComponent(database, options);
  const Component component(platform, ShareFolder().string());
  const KeysHelp keys;
  Visits visits(database, connection, PhotosFolder(options),
                {options.own_rows, options.clerk.empty() ? UserAtMachine() : options.clerk});
  if (options.action == Options::Action::kPeople) {
    ShowPeople(database, visits, options);
  } else {
    const bool saved = visits.Open({options.person, options.operation_type, options.person_type});
    std::cout << "ShowDossier returned " << (saved ? "True" : "False") << "\n";
  }
  return 0;
}

// A failure of a program that shows windows is shown in one, too, unless the component told of it.
void ShowFailure(const std::exception& failure, const Options& options) {
  const auto* known = dynamic_cast<const environment::Failure*>(&failure);
  if (known && known->number() == environment::kObjectUnloaded) return;
  const bool with_windows =
      options.action == Options::Action::kPeople || options.action == Options::Action::kVisit;
  if (!with_windows || !HasDisplay()) return;
  const Views platform;
  if (QApplication::platformName() == "offscreen" || QApplication::platformName() == "minimal") return;
  ShowFailureBox(nullptr, failure.what(), failure);
}

}  // namespace
}  // namespace dossierkit::host

int main(int argc, char** argv) {
  return dossierkit::host::RunProgram(argc, argv, dossierkit::host::Run, dossierkit::host::ShowFailure);
}
