// The message boxes that are required, as patterns.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "adapters/headless/headless_platform.h"

namespace dossierkit::random {

// What a statement says that needs a row and has none.
extern const char* const kNoRow;

// What a box may have to do with, beyond its own words.
struct Circumstances {
  std::function<bool(const std::string&)> is_label;    // of a field of the set on show
  std::function<bool(const std::string&)> is_failure;  // the words of a statement that has just failed
  bool edited = false;                                 // the page on show holds edits
  std::string picker_caption;                          // empty while no picker is open
};

// Why the box is none of the required ones; empty where it is.
std::string ComplaintAbout(const headless::Message& message, const Circumstances& now);

}  // namespace dossierkit::random
