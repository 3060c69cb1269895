// FailingFiles: fails instead of carrying out a chosen operation, for tests of what then happens.
#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/files/files.h"

namespace dossierkit::tests {

class FailingFiles : public files::Files {
 public:
  // `inner` must outlive it.
  explicit FailingFiles(files::Files& inner) : inner_(inner) {}

  // From now on operations are counted anew, from 1. Instead of operation number `call` a Failure of
  // this number is thrown, once; 0 is never.
  void FailAt(std::size_t call, int failure_number = environment::kPermissionDenied);
  // The same with any other exception.
  void FailAt(std::size_t call, std::exception_ptr exception);

  // The operations since FailAt with their paths, as in "FileLen a.jpg", the failed one included.
  const std::vector<std::string>& Calls() const { return calls_; }
  // True once the failure was thrown.
  bool HasFailed() const { return fail_at_ > 0 && calls_.size() >= fail_at_; }

  bool FileExists(const std::string& path) const override;
  void DeleteFile(const std::string& path, bool force) override;
  void CopyFile(const std::string& source, const std::string& target, bool overwrite) override;
  std::uint64_t FileLen(const std::string& path) const override;

 private:
  void Count(std::string call) const;

  files::Files& inner_;
  std::size_t fail_at_ = 0;
  std::exception_ptr exception_;
  mutable std::vector<std::string> calls_;
};

}  // namespace dossierkit::tests
