// UTF-16: the texts of ODBC's W functions.
#pragma once

#include <sqltypes.h>

#include <string>
#include <string_view>

namespace dossierkit::odbc {

using Wide = std::basic_string<SQLWCHAR>;

// What is no valid UTF-8 or UTF-16 becomes U+FFFD.
Wide ToWide(std::string_view text);
void AppendUtf8(const SQLWCHAR* text, std::size_t units, std::string& to);
std::string ToUtf8(const Wide& text);

}  // namespace dossierkit::odbc
