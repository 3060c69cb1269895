// The views on which the journeys are played: without a screen, or in Qt. Both offer the same members,
// so that a journey is written once.
#pragma once

#ifdef DOSSIERKIT_QT_STAGE
#include "tests/support/qt_stage.h"
#include "tests/support/qt_user.h"

namespace dossierkit::tests {
using StagePlatform = QtStage;
using StageUser = QtUser;
}  // namespace dossierkit::tests

#else
#include "adapters/headless/headless_platform.h"
#include "adapters/headless/headless_user.h"

namespace dossierkit::tests {
using StagePlatform = headless::HeadlessPlatform;
using StageUser = headless::HeadlessUser;
}  // namespace dossierkit::tests
#endif
