// PlacedFailure: a failure that also says where it happened. Its number and its words stay what they are.
#pragma once

#include <string>
#include <utility>

#include "platform/environment/failure.h"

namespace dossierkit::environment {

// Where: each part may be empty.
struct Place {
  std::string set = {};        // as in A03
  std::string field = {};      // as in A0302
  std::string doing = {};      // what was being done, in Chinese
  std::string statement = {};  // the SQL text that failed, or gave what could not be read
};

// A failure on its way to the host. The layers that it passes add what they know of its place.
class PlacedFailure : public Failure {
 public:
  explicit PlacedFailure(const Failure& failure) : Failure(failure) {
    place_.statement = failure.statement();
  }

  const Place& place() const { return place_; }
  // Fills what is still empty: who stands nearest knows best.
  void Add(const Place& place);

 private:
  Place place_;
};

// The place of a failure in the words of a detail box, a line for each part that is known: number, set,
// field, what was being done, statement.
std::string DetailsOf(const Failure& failure);

// Runs `body`; a Failure that leaves it takes `place` along. Any other exception passes as it is.
template <typename Body>
decltype(auto) At(const Place& place, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (PlacedFailure& failure) {
    failure.Add(place);
    throw;
  } catch (const Failure& failure) {
    PlacedFailure placed(failure);
    placed.Add(place);
    throw placed;
  }
}

}  // namespace dossierkit::environment
