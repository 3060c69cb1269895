// SystemCalls: the calls of this program on files, noted, and made to fail where a test wants it.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace dossierkit::files {

class SystemCalls {
 public:
  // While it lives each call is noted by its name, and fails with the number that `decide` gives for it; 0
  // lets it through. `place` counts from 1.
  explicit SystemCalls(std::function<int(const std::string& name, std::size_t place)> decide);
  ~SystemCalls();
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;

  const std::vector<std::string>& Calls() const { return calls_; }
  // The path that the present call opens or creates.
  const std::string& Path() const { return path_; }

  // For the calls themselves.
  static int Decide(const std::string& name, const std::string& path = {});

 private:
  std::function<int(const std::string&, std::size_t)> decide_;
  std::vector<std::string> calls_;
  std::string path_;
};

}  // namespace dossierkit::files
