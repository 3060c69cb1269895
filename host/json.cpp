#include "host/json.h"

#include <charconv>
#include <cstdio>

#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

std::string Escaped(char byte) {
  switch (byte) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '\b': return "\\b";
    case '\f': return "\\f";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: break;
  }
  if (static_cast<unsigned char>(byte) >= 0x20) return {byte};
  char text[8];
  std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
  return text;
}

}  // namespace

std::string JsonText(const std::string& text) {
  std::string json = "\"";
  for (const char byte : environment::ValidUtf8(text)) json += Escaped(byte);
  return json + "\"";
}

std::string JsonNumber(double number) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, number).ptr;
  return {text, end};
}

std::string JsonObject(const std::map<std::string, std::string>& members) {
  std::string json;
  for (const auto& [name, value] : members) {
    json += (json.empty() ? "" : ",") + JsonText(name) + ":" + value;
  }
  return "{" + json + "}";
}

}  // namespace dossierkit::host
