// Connection strings: "Name=value;Name={value with ; in it};...".
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace dossierkit::odbc {

// Names and values in their order; the braces around a value are gone.
std::vector<std::pair<std::string, std::string>> AttributesOf(const std::string& connection_string);

// The value of an attribute, its name in any case; empty where there is none.
std::string AttributeOf(const std::string& connection_string, const std::string& name);

// `connection_string` with each of the attributes of `others` that it does not have itself.
std::string WithAttributes(std::string connection_string, const std::string& others);

// One connection string for each server of a list, "Server=a,b:3307,c": with its own port where one is named
// there. Without a list or a port in it it is the whole.
std::vector<std::string> ServersOf(const std::string& connection_string);

// True for the name of an attribute that holds a secret.
bool IsPassword(const std::string& name);
// True for such an attribute, and for one whose value is options of its own with a secret among them, as
// pqopt={sslmode=require password=...} has one.
bool HoldsPassword(const std::string& name, const std::string& value);

// `text` less every password that `connection_string` holds: "***" in its place.
std::string WithoutPasswords(const std::string& text, const std::string& connection_string);

}  // namespace dossierkit::odbc
