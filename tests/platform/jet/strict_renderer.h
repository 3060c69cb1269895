// The ways of a strict engine: it has no function iif, keeps Booleans, numbers and texts apart, regards case,
// orders NULL last, cuts long names and knows names in double quotes alone.
#pragma once

#include "platform/jet/renderer.h"

namespace dossierkit::jet {

inline const Renderer kStrictRenderer{
    .iif = Renderer::Iif{"case when ", " then ", " else ", " end"},
    .len = "char_length",
    .like = Renderer::Like{"ilike", " escape ''", "~*", "!~*", "^", "$"},
    .fold = "lower",
    .nulls_first = " nulls first",
    .nulls_last = " nulls last",
    .date = "timestamp ",
    .is_strict = true,
    .name_quote = "\"",
    .longest_name = 63,
};

}  // namespace dossierkit::jet
