#include "adapters/com/server.h"

#include <atomic>
#include <string>
#include <utility>

#include "adapters/com/pointers.h"
#include "adapters/com/registration.h"
#include "shell/component.h"

namespace dossierkit::com {
namespace {

struct Server {
  std::unique_ptr<toolkit::Platform> platform = MakePlatform();
  // The icons lie beside the library.
  Component component{*platform, FolderOf(OwnFile())};

  static std::string FolderOf(const std::wstring& file) {
    const auto end = file.find_last_of(L"\\/");
    return Utf8(file.substr(0, end == std::wstring::npos ? 0 : end));
  }
};

std::atomic<long> holders{0};
// The thread that the server is of; 0 while there is none. Whoever sets it makes the server, and alone ends
// it.
std::atomic<DWORD> the_thread{0};
Server* the_server = nullptr;

}  // namespace

void Hold() { ++holders; }

void LetGo() { --holders; }

bool RequireServer() {
  DWORD thread = 0;
  if (!the_thread.compare_exchange_strong(thread, GetCurrentThreadId()))
    return thread == GetCurrentThreadId();
  try {
    the_server = new Server;
  } catch (...) {
    the_thread = 0;
    throw;
  }
  return true;
}

HRESULT EndServer() noexcept {
  const DWORD thread = the_thread;
  if (holders > 0 || (thread != 0 && thread != GetCurrentThreadId())) return S_FALSE;
  if (thread == 0) return S_OK;
  delete std::exchange(the_server, nullptr);
  the_thread = 0;
  return S_OK;
}

}  // namespace dossierkit::com
