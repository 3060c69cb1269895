#include "tests/random/shrink.h"

#include <algorithm>

namespace dossierkit::random {

Actions Shrink(Actions actions, const std::function<bool(const Actions&)>& fails) {
  for (std::size_t chunk = std::max<std::size_t>(actions.size() / 2, 1);;) {
    bool dropped = false;
    for (std::size_t start = 0; start < actions.size();) {
      Actions rest(actions.begin(), actions.begin() + static_cast<std::ptrdiff_t>(start));
      const std::size_t end = std::min(start + chunk, actions.size());
      rest.insert(rest.end(), actions.begin() + static_cast<std::ptrdiff_t>(end), actions.end());
      if (fails(rest)) {
        actions = std::move(rest);
        dropped = true;
      } else {
        start = end;
      }
    }
    if (chunk == 1 && !dropped) return actions;
    if (chunk > 1) chunk /= 2;
  }
}

}  // namespace dossierkit::random
