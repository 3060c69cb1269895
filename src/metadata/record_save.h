// SaveRecord: checks the record on a page and writes it.
#pragma once

#include "visit/dossier_page.h"
#include "visit/dossier_window.h"

namespace dossierkit {

// True when what there was to write is written. False after the messages of the checks were shown.
// Throws whatever the database or a conversion fails with; what was executed stays so. In a set
// other than A01 the old row is deleted before anything is checked.
bool SaveRecord(DossierWindow& window, DossierPage& ctrl);

}  // namespace dossierkit
