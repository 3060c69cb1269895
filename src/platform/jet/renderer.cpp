#include "platform/jet/renderer.h"

#include <cstdint>

#include "platform/environment/text.h"
#include "platform/jet/coerce.h"
#include "platform/jet/tokens.h"

namespace dossierkit::jet {

std::string ConstantOf(const environment::Value& value, const Renderer& renderer) {
  if (const auto* held = value.As<bool>())
    return std::string(*held ? renderer.true_constant : renderer.false_constant);
  if (const auto* held = value.As<double>()) return TextOfNumber(*held);
  if (value.As<std::int64_t>()) return environment::TextOf(value);
  if (const auto* held = value.As<environment::DateTime>())
    return std::string(renderer.date) + LiteralOf(TextOfDate(*held));
  const std::string literal = LiteralOf(environment::TextOf(value));
  return renderer.doubles_backslashes ? environment::Replace(literal, "\\", "\\\\") : literal;
}

}  // namespace dossierkit::jet
