// The tour: the road of one record, played on the real window.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "shell/i_user_ctrl.h"

namespace dossierkit::host {

// The rows that a query gives, their columns joined by "|".
using Query = std::function<std::vector<std::string>(const std::string& sql)>;

// Opens `component` on a new person and plays every step: a numbered picture into `folder`, and the
// rows that the database then holds, on standard output. False where a row is not as it must be or a
// step could not be played; why is on standard error.
bool PlayTour(IUserCtrl& component, const Query& query, const std::filesystem::path& folder);

}  // namespace dossierkit::host
