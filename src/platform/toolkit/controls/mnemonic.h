// Mnemonic: the letter behind "&" in a caption, as in 增加(&N), which Alt and that key click.
#pragma once

#include <string>
#include <string_view>

namespace dossierkit::toolkit {

// The letter as a capital, or the digit, behind the first "&"; 0 where there is none.
char MnemonicOf(std::string_view caption);

// The caption as a screen reader should say it: 增加.
std::string WithoutMnemonic(std::string_view caption);

}  // namespace dossierkit::toolkit
