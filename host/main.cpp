// dossier: the demo host.
#include <QApplication>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "adapters/qt/qt_platform.h"
#include "host/database.h"
#include "host/options.h"
#include "host/paths.h"
#include "host/people_window.h"
#include "host/tour/tour.h"
#include "platform/ado/recordset.h"
#include "platform/ado/tracing_connection.h"
#include "platform/environment/failure.h"
#include "shell/component.h"
#include "shell/i_user_ctrl.h"

namespace dossierkit::host {
namespace {

std::string PhotosFolder(const Options& options) {
  return options.photos.empty() ? WorkingPhotos().string() : options.photos;
}

IUserCtrl MakeComponent(const std::shared_ptr<ado::Connection>& connection, const Options& options) {
  IUserCtrl dossier;
  dossier.SetConnection(connection);
  dossier.personID = options.person;
  dossier.OperationType = options.operation_type;
  dossier.PersonType = options.person_type;
  dossier.PhotoPath = PhotosFolder(options);
  return dossier;
}

bool ShowVisit(const std::shared_ptr<ado::Connection>& connection, const Options& options) {
  return MakeComponent(connection, options).ShowDossier();
}

// Between two statements of a long command the pointer may become a busy one.
std::shared_ptr<ado::Connection> WithBusyPointer(std::shared_ptr<ado::Connection> connection,
                                                 qt::QtPlatform& platform) {
  return std::make_shared<ado::TracingConnection>(std::move(connection),
                                                  [&platform](const ado::Trace&) { platform.Tick(); });
}

// The tour starts from fresh copies of the sample database and the photographs, unless others were named.
int RunTour(Options options) {
  std::filesystem::create_directories(options.folder);
  if (options.database.empty() && options.connection.empty()) {
    options.database = (std::filesystem::path(options.folder) / "tour.db").string();
    CreateSample(options.database);
  }
  if (options.photos.empty()) {
    options.photos = (std::filesystem::path(options.folder) / "photos").string();
    CopyPhotos(SamplePhotos(), options.photos);
  }
  const auto database = OpenDatabase(options);
  qt::QtPlatform platform;
  const auto connection = WithBusyPointer(database, platform);
  const Component component(platform, ProgramFolder().string());
  options.operation_type = 0;
  IUserCtrl dossier = MakeComponent(connection, options);
  const auto query = [&](const std::string& sql) {
    std::vector<std::string> lines;
    const auto rows = connection->Execute(sql);
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

void ShowPeople(const std::shared_ptr<ado::Connection>& connection, const Options& options) {
  PeopleWindow window(connection, [&](const VisitRequest& request) {
    Options visit = options;
    visit.person = request.person;
    visit.operation_type = request.person.empty() ? 0 : 3;
    visit.person_type = request.person_type;
    ShowVisit(connection, visit);
  });
  window.show();
  QApplication::exec();
}

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

// Windows need a display; the tour can do without.
void ChooseDisplay(const Options& options) {
  if (IsSet("DISPLAY") || IsSet("QT_QPA_PLATFORM")) return;
  if (options.action != Options::Action::kTour) {
    throw environment::Failure(
        environment::kPathAccess,
        "没有显示器：请设置 DISPLAY，或用 QT_QPA_PLATFORM=vnc 通过网络查看，或用 --tour DIR 播放演示。");
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

int Run(const Options& options) {
  switch (options.action) {
    case Options::Action::kHelp: std::cout << Usage(); return 0;
    case Options::Action::kVersion: std::cout << "dossier " DOSSIERKIT_VERSION "\n"; return 0;
    case Options::Action::kCreateSample: CreateSample(options.file); return 0;
    case Options::Action::kPeople:
    case Options::Action::kVisit:
    case Options::Action::kTour: break;
  }
  ChooseDisplay(options);
  if (options.action == Options::Action::kTour) return RunTour(options);
  const auto database = OpenDatabase(options);
  qt::QtPlatform platform;
  const auto connection = WithBusyPointer(database, platform);
  const Component component(platform, ProgramFolder().string());
  if (options.action == Options::Action::kPeople) {
    ShowPeople(connection, options);
  } else {
    std::cout << "ShowDossier returned " << (ShowVisit(connection, options) ? "True" : "False") << "\n";
  }
  return 0;
}

}  // namespace
}  // namespace dossierkit::host

int main(int argc, char** argv) {
  using namespace dossierkit::host;
  try {
    return Run(ParseOptions({argv + 1, argv + argc}));
  } catch (const UsageError& error) {
    std::cerr << "dossier: " << error.what() << "\n" << Usage();
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "dossier: " << failure.what() << "\n";
    return 1;
  }
}
