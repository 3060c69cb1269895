// Picture files. The input is a file: what is counted of it is at least what a decoder meets, so that no file
// is slower than its counts say.
#include <csetjmp>
#include <cstdio>
//
#include <jpeglib.h>

#include "fuzz/fuzz.h"
#include "platform/files/picture_file.h"

namespace dossierkit::files {
namespace {

using Bytes = std::span<const unsigned char>;

// Larger pictures say nothing more and take longer.
constexpr std::uint64_t kMostDecoded = 65536;

struct Errors {
  jpeg_error_mgr manager;  // first, so that the decoder's pointer to it is one to this
  std::jmp_buf leave;
};

void Leave(j_common_ptr decoder) { std::longjmp(reinterpret_cast<Errors*>(decoder->err)->leave, 1); }
void SayNothing(j_common_ptr) {}

// What a decoder meets up to the end of the file, or up to what it cannot read.
struct Met {
  std::uint64_t pixels = 0;
  std::uint64_t scans = 0;
  bool arithmetic = false;
};

Met Decode(Bytes bytes) {
  volatile std::uint64_t pixels = 0;
  volatile std::uint64_t scans = 0;
  volatile bool arithmetic = false;
  Errors errors;
  jpeg_decompress_struct decoder{};
  decoder.err = jpeg_std_error(&errors.manager);
  errors.manager.error_exit = Leave;
  errors.manager.output_message = SayNothing;
  if (setjmp(errors.leave) == 0) {
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, bytes.data(), bytes.size());
    if (jpeg_read_header(&decoder, TRUE) == JPEG_HEADER_OK) {
      pixels = std::uint64_t{decoder.image_width} * decoder.image_height;
      scans = 1;
      arithmetic = decoder.arith_code;
      if (jpeg_has_multiple_scans(&decoder) && pixels <= kMostDecoded) {
        decoder.buffered_image = TRUE;
        jpeg_start_decompress(&decoder);
        int state = JPEG_SUSPENDED;
        do {
          state = jpeg_consume_input(&decoder);
          scans = static_cast<std::uint64_t>(decoder.input_scan_number);
        } while (state != JPEG_REACHED_EOI && state != JPEG_SUSPENDED);
      }
    }
  }
  jpeg_destroy_decompress(&decoder);
  return {pixels, scans, arithmetic};
}

void Check(Bytes bytes) {
  const PictureCounts counts = CountPicture(bytes);
  REQUIRE(4 * (counts.scans + counts.notes) <= bytes.size());
  REQUIRE(counts.pixels <= std::uint64_t{65535} * 65535);
  const PictureCounts half = CountPicture(bytes.first(bytes.size() / 2));
  REQUIRE(half.scans <= counts.scans && half.notes <= counts.notes && half.pixels <= counts.pixels);
  if (IsBeyondLimits(half)) REQUIRE(IsBeyondLimits(counts));

  const Met met = Decode(bytes);
  REQUIRE(met.pixels <= counts.pixels);
  REQUIRE(met.scans <= counts.scans);
  REQUIRE(!met.arithmetic || counts.arithmetic);
}

}  // namespace
}  // namespace dossierkit::files

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  dossierkit::files::Check({data, size});
  return 0;
}
