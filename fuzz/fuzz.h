// What the fuzz targets share: the input cut into lines, and invariants that end the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#define REQUIRE(condition) ((condition) ? void() : dossierkit::fuzz::Violated(#condition, __FILE__, __LINE__))

namespace dossierkit::fuzz {

[[noreturn]] inline void Violated(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: violated: %s\n", file, line, condition);
  std::abort();
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Takes the first line off `text`; the empty text where none is left.
inline std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

}  // namespace dossierkit::fuzz
