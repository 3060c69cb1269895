// A host includes Qt first, with its keywords on.
#include <gtest/gtest.h>

#include <QObject>

#if !defined(slots) || !defined(signals) || !defined(emit) || !defined(foreach)
#error "the words of Qt are off: this file tests nothing"
#endif

#include "dossierkit/dossierkit.h"

namespace {

TEST(PublicHeaders, StandBehindThoseOfQt) {
  dossierkit::IUserCtrl dossier;
  EXPECT_FALSE(dossier.Connection()->IsOpen());
  EXPECT_STREQ(dossierkit::kVersion, "7.0.0");
}

}  // namespace
