#include "tests/support/failing_files.h"

#include <utility>

namespace dossierkit::tests {

void FailingFiles::FailAt(std::size_t call, int failure_number) {
  FailAt(call, std::make_exception_ptr(environment::MakeFailure(failure_number)));
}

void FailingFiles::FailAt(std::size_t call, std::exception_ptr exception) {
  fail_at_ = call;
  exception_ = std::move(exception);
  calls_.clear();
}

void FailingFiles::Count(std::string call) const {
  calls_.push_back(std::move(call));
  if (calls_.size() == fail_at_) std::rethrow_exception(exception_);
}

bool FailingFiles::FileExists(const std::string& path) const {
  Count("FileExists " + path);
  return inner_.FileExists(path);
}

void FailingFiles::DeleteFile(const std::string& path, bool force) {
  Count("DeleteFile " + path + (force ? " by force" : ""));
  inner_.DeleteFile(path, force);
}

void FailingFiles::CopyFile(const std::string& source, const std::string& target, bool overwrite) {
  Count("CopyFile " + source + (overwrite ? " over " : " to ") + target);
  inner_.CopyFile(source, target, overwrite);
}

std::uint64_t FailingFiles::FileLen(const std::string& path) const {
  Count("FileLen " + path);
  return inner_.FileLen(path);
}

}  // namespace dossierkit::tests
