#include "adapters/odbc/connection_string.h"

#include <cstddef>

#include "platform/environment/text.h"

namespace dossierkit::odbc {
namespace {

// Where the attribute that begins at `begin` ends: before a ";" that stands in no braces.
std::size_t EndOf(const std::string& text, std::size_t begin) {
  std::size_t position = text.find_first_of("=;", begin);
  if (position == std::string::npos || text[position] == ';') return position;
  position = text.find_first_not_of(' ', position + 1);
  if (position == std::string::npos || text[position] != '{') return text.find(';', position);
  // "}}" is a brace of the value's own.
  for (++position; (position = text.find('}', position)) != std::string::npos; position += 2) {
    if (position + 1 >= text.size() || text[position + 1] != '}') return text.find(';', position);
  }
  return position;
}

std::string ValueOf(std::string_view written) {
  const std::string_view value = environment::WithoutOuterBlanks(written);
  if (value.size() < 2 || value.front() != '{' || value.back() != '}') return std::string(value);
  return environment::Replace(value.substr(1, value.size() - 2), "}}", "}");
}

std::string NameOf(std::string_view attribute) {
  return std::string(environment::WithoutOuterBlanks(attribute.substr(0, attribute.find('='))));
}

// What stands between the semicolons.
std::vector<std::string_view> PiecesOf(const std::string& connection_string) {
  std::vector<std::string_view> pieces;
  for (std::size_t begin = 0; begin < connection_string.size();) {
    const std::size_t end = EndOf(connection_string, begin);
    pieces.push_back(std::string_view(connection_string).substr(begin, end - begin));
    if (end == std::string::npos) break;
    begin = end + 1;
  }
  return pieces;
}

bool IsServer(const std::string& name) {
  return environment::EqualIgnoringCase(name, "Server") || environment::EqualIgnoringCase(name, "Servername");
}

}  // namespace

bool IsPassword(const std::string& name) {
  for (const char* word : {"pwd", "password", "passwd", "passphrase", "secret"}) {
    if (environment::LowerCase(name).find(word) != std::string::npos) return true;
  }
  return false;
}

std::vector<std::pair<std::string, std::string>> AttributesOf(const std::string& connection_string) {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (const std::string_view attribute : PiecesOf(connection_string)) {
    const std::size_t equals = attribute.find('=');
    if (equals == std::string_view::npos) continue;
    attributes.emplace_back(NameOf(attribute), ValueOf(attribute.substr(equals + 1)));
  }
  return attributes;
}

std::string AttributeOf(const std::string& connection_string, const std::string& name) {
  for (const auto& [known, value] : AttributesOf(connection_string)) {
    if (environment::EqualIgnoringCase(known, name)) return value;
  }
  return {};
}

std::string WithAttributes(std::string connection_string, const std::string& others) {
  for (const auto& [name, value] : AttributesOf(others)) {
    bool known = false;
    for (const auto& [own, _] : AttributesOf(connection_string)) {
      known = known || environment::EqualIgnoringCase(own, name);
    }
    if (known) continue;
    if (!connection_string.empty() && connection_string.back() != ';') connection_string += ';';
    connection_string.append(name).append("=").append(value);
  }
  return connection_string;
}

std::vector<std::string> ServersOf(const std::string& connection_string) {
  std::string servers;
  for (const auto& [name, value] : AttributesOf(connection_string)) {
    if (servers.empty() && IsServer(name)) servers = value;
  }
  if (servers.find_first_of(",:") == std::string::npos) return {connection_string};
  std::vector<std::string> strings;
  for (const std::string& listed : environment::Split(servers, ",")) {
    const std::string server(environment::WithoutOuterBlanks(listed));
    if (server.empty()) continue;
    // An address with several colons is one without a port.
    const std::size_t colon = server.find(':');
    const bool has_port = colon != std::string::npos && server.find(':', colon + 1) == std::string::npos;
    std::string one;
    for (const std::string_view attribute : PiecesOf(connection_string)) {
      const std::string name = NameOf(attribute);
      if (IsServer(name) || (has_port && environment::EqualIgnoringCase(name, "Port"))) continue;
      one.append(attribute).append(";");
    }
    one += "Server=" + server.substr(0, has_port ? colon : std::string::npos);
    if (has_port) one += ";Port=" + server.substr(colon + 1);
    strings.push_back(one);
  }
  return strings.empty() ? std::vector{connection_string} : strings;
}

std::string WithoutPasswords(const std::string& text, const std::string& connection_string) {
  std::string shown = text;
  for (const auto& [name, value] : AttributesOf(connection_string)) {
    if (!IsPassword(name) || value.empty()) continue;
    // As it is written there, too, where a brace in it is doubled.
    for (const std::string& secret : {environment::Replace(value, "}", "}}"), value})
      shown = environment::Replace(shown, secret, "***");
  }
  return shown;
}

}  // namespace dossierkit::odbc
