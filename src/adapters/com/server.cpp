#include "adapters/com/server.h"

#include <atomic>
#include <mutex>
#include <string>
#include <utility>

#include "adapters/com/failures.h"
#include "adapters/com/pointers.h"
#include "adapters/com/registration.h"
#include "shell/component.h"
#include "visit/runtime.h"

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
std::mutex making;  // guards what follows
// The thread that the server is of, 0 while there is none, and a handle of it: numbers of threads are given
// again.
DWORD the_thread = 0;
HANDLE the_threads_end = nullptr;
Server* the_server = nullptr;

// A thread that ends takes its apartment along: what belongs to that can neither be called nor released by
// another thread. So such a server is left as it is, and another thread may have one.
void LeaveServerOfAnEndedThread() {
  if (the_thread == 0 || WaitForSingleObject(the_threads_end, 0) != WAIT_OBJECT_0) return;
  UninstallRuntime(TheRuntime());
  CloseHandle(std::exchange(the_threads_end, nullptr));
  the_server = nullptr;
  the_thread = 0;
}

}  // namespace

void Hold() { ++holders; }

void LetGo() { --holders; }

bool RequireServer() {
  const std::lock_guard lock(making);
  LeaveServerOfAnEndedThread();
  if (the_thread != 0) return the_thread == GetCurrentThreadId();
  const HANDLE process = GetCurrentProcess();
  if (!DuplicateHandle(process, GetCurrentThread(), process, &the_threads_end, SYNCHRONIZE, FALSE, 0))
    throw FailureOf(HRESULT_FROM_WIN32(GetLastError()), nullptr);
  try {
    the_server = new Server;
  } catch (...) {
    CloseHandle(std::exchange(the_threads_end, nullptr));
    throw;
  }
  the_thread = GetCurrentThreadId();
  return true;
}

HRESULT EndServer() noexcept {
  if (holders > 0) return S_FALSE;
  const std::lock_guard lock(making);
  if (the_thread != 0 && the_thread != GetCurrentThreadId()) return S_FALSE;
  if (the_thread == 0) return S_OK;
  // What the server lets go of may ask as well.
  Hold();
  delete std::exchange(the_server, nullptr);
  LetGo();
  CloseHandle(std::exchange(the_threads_end, nullptr));
  the_thread = 0;
  return S_OK;
}

}  // namespace dossierkit::com
