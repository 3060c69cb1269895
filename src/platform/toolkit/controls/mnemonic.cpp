#include "platform/toolkit/controls/mnemonic.h"

#include "platform/environment/text.h"

namespace dossierkit::toolkit {

char MnemonicOf(std::string_view caption) {
  const auto mark = caption.find('&');
  if (mark == std::string_view::npos || mark + 1 >= caption.size()) return 0;
  const char letter = caption[mark + 1];
  if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
  return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ? letter : '\0';
}

std::string WithoutMnemonic(std::string_view caption) {
  return environment::Replace(caption.substr(0, caption.find("(&")), "&", "");
}

}  // namespace dossierkit::toolkit
