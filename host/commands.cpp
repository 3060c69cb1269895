#include "host/commands.h"

#include <filesystem>
#include <iostream>
#include <utility>
#include <vector>

#ifdef DOSSIERKIT_SERVERS
#include "host/copying.h"
#endif
#include "dossierkit/version.h"
#include "host/check/check.h"
#include "host/database.h"
#include "host/json.h"
#include "host/paths.h"
#include "host/system.h"
#include "platform/environment/failure.h"
#include "platform/environment/placed_failure.h"

namespace dossierkit::host {
namespace {

// A database like `source`, in a file or on a server.
void Create(const Options& options, [[maybe_unused]] const std::filesystem::path& source,
            void (*create_file)(const std::filesystem::path& target)) {
  if (options.connection.empty()) return create_file(PathOf(options.file));
  if (const auto file = FileOf(options.connection)) return create_file(PathOf(*file));
#ifdef DOSSIERKIT_SERVERS
  CopyTo(options, TextOf(source));
#else
  OpenUnchecked(options);
#endif
}

// What only a server has.
void RunOnServer(const Options& options) {
  if (FileOf(options.connection))
    throw environment::Failure(environment::kInvalidCall,
                               "数据库文件没有角色和修改记录，请指定数据库服务器的连接字符串。");
#ifdef DOSSIERKIT_SERVERS
  RunServerCommand(options);
#else
  OpenUnchecked(options);
#endif
}

void Copy(const Options& options) {
#ifdef DOSSIERKIT_SERVERS
  CopyAndTell(options.from, options.to);
#else
  throw environment::Failure(environment::kInvalidCall,
                             "此程序没有连接数据库服务器的部分，不能复制 " + options.from + "。");
#endif
}

// One line for each fault.
int RunCheck(const Options& options) {
  const auto database = OpenUnchecked(options);
  std::vector<check::Fault> faults = check::CheckDatabase(*database);
  const bool sample = options.database.empty() && options.connection.empty();
  if (!options.photos.empty() || sample) {
    for (check::Fault& fault : check::CheckPhotos(*database, PhotosFolder(options)))
      faults.push_back(std::move(fault));
  }
  for (const check::Fault& fault : faults) {
    if (!options.json) {
      std::cout << fault.text << "\n";
      continue;
    }
    std::cout << JsonObject({{"table", JsonText(fault.table)},
                             {"row", JsonText(fault.row)},
                             {"column", JsonText(fault.column)},
                             {"fault", JsonText(fault.text)}})
              << "\n";
  }
  return faults.empty() ? 0 : 1;
}

}  // namespace

std::string PhotosFolder(const Options& options) {
  return options.photos.empty() ? TextOf(WorkingPhotos()) : options.photos;
}

std::optional<int> RunCommand(const Options& options) {
  switch (options.action) {
    case Options::Action::kHelp: std::cout << Usage(); return 0;
    case Options::Action::kVersion: std::cout << "dossier " << kVersion << "\n"; return 0;
    case Options::Action::kCreateSample: Create(options, SampleDatabase(), CreateSample); return 0;
    case Options::Action::kCreateEmpty: Create(options, EmptyDatabase(), CreateEmpty); return 0;
    case Options::Action::kCreateRights:
    case Options::Action::kCreateAudit:
    case Options::Action::kHistory:
    case Options::Action::kRestore: RunOnServer(options); return 0;
    case Options::Action::kCopy: Copy(options); return 0;
    case Options::Action::kCheck: return RunCheck(options);
    case Options::Action::kPeople:
    case Options::Action::kVisit:
    case Options::Action::kTour: break;
  }
  return std::nullopt;
}

int RunProgram(int argc, char** argv, int (*run)(const Options&),
               void (*tell)(const std::exception&, const Options&)) {
  Options options;
  std::vector<std::string> arguments;
  try {
    arguments = ArgumentsOf(argc, argv);
    options = ParseOptions(arguments);
    return run(options);
  } catch (const UsageError& error) {
    std::cerr << "dossier: " << error.what() << "\n" << UsageOf(arguments);
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "dossier: " << failure.what() << "\n";
    if (const auto* placed = dynamic_cast<const environment::PlacedFailure*>(&failure))
      std::cerr << environment::DetailsOf(*placed) << "\n";
    if (tell) tell(failure, options);
    return options.action == Options::Action::kCheck ? 2 : 1;
  }
}

}  // namespace dossierkit::host
