#include "adapters/com/server.h"

#include <atomic>
#include <string>

#include "adapters/com/pointers.h"
#include "adapters/com/registration.h"
#include "shell/component.h"

namespace dossierkit::com {
namespace {

struct Server {
  std::unique_ptr<toolkit::Platform> platform = MakePlatform();
  // The icons lie beside the library.
  Component component{*platform, FolderOf(OwnFile())};
  DWORD thread = GetCurrentThreadId();

  static std::string FolderOf(const std::wstring& file) {
    const auto end = file.find_last_of(L"\\/");
    return Utf8(file.substr(0, end == std::wstring::npos ? 0 : end));
  }
};

std::atomic<long> holders{0};
std::atomic<Server*> the_server{nullptr};

}  // namespace

void Hold() { ++holders; }

void LetGo() { --holders; }

bool RequireServer() {
  if (IsOfAnotherThread()) return false;
  if (!the_server) the_server = new Server;
  return true;
}

bool IsOfAnotherThread() {
  const Server* server = the_server;
  return server && server->thread != GetCurrentThreadId();
}

HRESULT EndServer() noexcept {
  if (holders > 0 || IsOfAnotherThread()) return S_FALSE;
  delete the_server.exchange(nullptr);
  return S_OK;
}

}  // namespace dossierkit::com
