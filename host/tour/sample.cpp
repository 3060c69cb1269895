#include "host/tour/sample.h"

#include <filesystem>

#include "host/paths.h"

namespace dossierkit::host {

Options WithSampleOfTour(Options options) {
  const std::filesystem::path data = PathOf(options.folder) / "tour-data";
  std::filesystem::create_directories(data);
  if (options.database.empty() && options.connection.empty()) {
    options.database = TextOf(data / "tour.db");
    for (const char* ending : {"", "-wal", "-shm"})
      std::filesystem::remove(PathOf(options.database + ending));
    CreateSample(PathOf(options.database));
  }
  if (options.photos.empty()) {
    options.photos = TextOf(data / "photos");
    CopyPhotos(SamplePhotos(), PathOf(options.photos));
  }
  return options;
}

}  // namespace dossierkit::host
