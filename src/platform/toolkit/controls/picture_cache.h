// PictureCache: pictures of files as a view set shows them, each file read once.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace dossierkit::toolkit {

// A file that cannot be read is not asked for again either: what `Read` gives for it is kept as well.
template <typename Picture>
class PictureCache {
 public:
  using Read = std::function<Picture(const std::string& path)>;
  explicit PictureCache(Read read) : read_(std::move(read)) {}

  const Picture& Of(const std::string& path) {
    const auto found = pictures_.find(path);
    return found != pictures_.end() ? found->second : pictures_.emplace(path, read_(path)).first->second;
  }
  // Each file is read anew when it is asked for.
  void Clear() { pictures_.clear(); }

 private:
  Read read_;
  std::map<std::string, Picture> pictures_;
};

}  // namespace dossierkit::toolkit
