// Generator: draws the actions of one visit, with an eye to which window is on top.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/random/action.h"

namespace dossierkit::random {

enum class Place { kNoWindow, kDossier, kPicker, kPreview };

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : engine_(seed) {}

  Action Draw(Place place);

 private:
  // A number below `limit`; the same on every machine.
  int Below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }
  template <std::size_t N>
  const char* OneOf(const char* const (&texts)[N]) {
    return texts[Below(static_cast<int>(N))];
  }
  Action Make(Do what, std::string text = {});
  Action Open();
  std::string Text();
  Action DrawInDossier();
  Action DrawInPicker();
  Action DrawInPreview();

  std::mt19937_64 engine_;
  bool started_ = false;
};

}  // namespace dossierkit::random
