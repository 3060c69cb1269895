// JSON: objects of one line, as the program writes them.
#pragma once

#include <map>
#include <string>

namespace dossierkit::host {

// A text as a JSON string, with its quotes.
std::string JsonText(const std::string& text);
// A number as a JSON number: the shortest text that gives it back.
std::string JsonNumber(double number);
// {"name":value,...} in the order of the names; a value is JSON already.
std::string JsonObject(const std::map<std::string, std::string>& members);

}  // namespace dossierkit::host
