#include "adapters/odbc/connection_string.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

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

// A password of an attribute whose value is options of its own, name=value name='it\'s a value' .., that
// begins behind the sign of equality: as it is written there, and as it is meant.
std::vector<std::string> PasswordAt(const std::string& options, std::size_t equals) {
  std::size_t position = std::min(options.find_first_not_of(' ', equals + 1), options.size());
  const bool is_quoted = position < options.size() && options[position] == '\'';
  if (is_quoted) ++position;
  std::string written;
  std::string meant;
  for (; position < options.size() && options[position] != (is_quoted ? '\'' : ' '); ++position) {
    if (options[position] == '\\' && position + 1 < options.size()) written += options[position++];
    written += options[position];
    meant += options[position];
  }
  return {written, meant};
}

// The passwords in the value of an attribute that is none itself.
std::vector<std::string> PasswordsIn(const std::string& options) {
  std::vector<std::string> passwords;
  for (std::size_t equals = options.find('='); equals != std::string::npos;
       equals = options.find('=', equals + 1)) {
    const std::string before(environment::WithoutOuterBlanks(std::string_view(options).substr(0, equals)));
    if (!IsPassword(before.substr(before.find_last_of(" '") + 1))) continue;
    for (std::string& password : PasswordAt(options, equals)) passwords.push_back(std::move(password));
  }
  return passwords;
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

bool HoldsPassword(const std::string& name, const std::string& value) {
  return IsPassword(name) || (IsPassword(value) && value.find_first_of("=%") != std::string::npos);
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
    for (const std::string& password : IsPassword(name) ? std::vector{value} : PasswordsIn(value)) {
      if (password.empty()) continue;
      // As it is written there, too, where a brace in it is doubled.
      for (const std::string& secret : {environment::Replace(password, "}", "}}"), password})
        shown = environment::Replace(shown, secret, "***");
    }
  }
  return shown;
}

}  // namespace dossierkit::odbc
