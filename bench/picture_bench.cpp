// The slowest pictures that are accepted: the processor's time from the click in the menu to the painted page
// of the basic data.
#include <unistd.h>

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "platform/files/picture_file.h"
#include "tests/support/jpeg.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

namespace fs = std::filesystem;

const std::string kEnd = "\xFF\xD9";

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Progressive scans of the means of all blocks, in all colours.
std::string ScansOfMeans(int width, int height, int colours, int scans) {
  const std::size_t blocks =
      std::size_t(width + 7) / 8 * (std::size_t(height + 7) / 8) * std::size_t(colours);
  std::string bytes;
  for (int scan = 0; scan < scans; ++scan) {
    bytes += tests::JpegScan(0, 0, colours, scan == 0 ? 0 : 0x10) + std::string((blocks + 7) / 8, 0);
  }
  return bytes;
}

// Four colours in six passes over a hundred megapixels.
std::string FourColours() {
  return "\xFF\xD8" + tests::JpegTables() + tests::JpegFrame(0xC2, 10000, 10000, 4) +
         ScansOfMeans(10000, 10000, 4, 6) + kEnd;
}

// As many bytes as a file may have, of noise, and passes up to the limit over that.
std::string Noise() {
  constexpr int kSide = 5000;
  QImage image(kSide, kSide, QImage::Format_RGB32);
  std::mt19937 random(1);
  for (int y = 0; y < kSide; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < kSide; ++x) line[x] = static_cast<QRgb>(random());
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, "jpeg");
  writer.setProgressiveScanWrite(true);
  writer.setQuality(93);
  writer.write(image);
  std::string file = bytes.toStdString();
  file.resize(file.size() - kEnd.size());
  return file + tests::JpegTables() + ScansOfMeans(kSide, kSide, 3, 24 - 10) + kEnd;
}

// As many notes as a picture may have.
std::string Notes() {
  std::string notes;
  for (std::uint64_t i = 0; i < files::kMostNotes; ++i) notes += tests::JpegSegment(0xE1, "");
  return "\xFF\xD8" + notes + tests::ProgressiveJpeg(48, 63, 2).substr(2);
}

void Showing(benchmark::State& state, const std::string& picture) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(picture.data());
  if (picture.size() > files::kLargestPictureFile ||
      files::IsBeyondLimits(files::CountPicture({bytes, picture.size()}))) {
    state.SkipWithError("the picture is beyond the limits");
    return;
  }
  const Copy copy(tests::SampleDatabaseFile());
  const fs::path folder = copy.Path() + "-photos";
  fs::create_directories(folder);
  BenchVisit visit(copy.Path());
  visit.Open([&] {
    visit.Window().PhotoPath = folder.string();
    std::ofstream(folder / (kPerson + ".jpg"), std::ios::binary) << picture;
    double most = 0;
    for (auto _ : state) {
      visit.GoTo("A02");
      const double start = ProcessorSeconds();
      visit.GoTo("A01");
      QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
      const double seconds = ProcessorSeconds() - start;
      state.SetIterationTime(seconds);
      most = std::max(most, seconds);
    }
    state.counters["most_s"] = most;
    state.counters["MiB"] = static_cast<double>(picture.size()) / 1048576;
  });
  fs::remove_all(folder);
}

void FourColoursInSixScans(benchmark::State& state) { Showing(state, FourColours()); }
BENCHMARK(FourColoursInSixScans)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void NoiseIn32MiB(benchmark::State& state) { Showing(state, Noise()); }
BENCHMARK(NoiseIn32MiB)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void SixHundredScans(benchmark::State& state) { Showing(state, tests::ProgressiveJpeg(1000, 1000, 600)); }
BENCHMARK(SixHundredScans)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void TenScansOf48Megapixels(benchmark::State& state) {
  Showing(state, tests::ProgressiveJpeg(8000, 6000, 10));
}
BENCHMARK(TenScansOf48Megapixels)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void FourThousandNotes(benchmark::State& state) { Showing(state, Notes()); }
BENCHMARK(FourThousandNotes)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return dossierkit::bench::RunBenchmarks(argc, argv,
                                          {{"FourColoursInSixScans", "most_s", 2},
                                           {"NoiseIn32MiB", "most_s", 2},
                                           {"SixHundredScans", "most_s", 2},
                                           {"TenScansOf48Megapixels", "most_s", 2},
                                           {"FourThousandNotes", "most_s", 2}});
}
