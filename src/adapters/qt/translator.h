// Translator: the toolkit's own texts, as far as users of this program meet them, in Chinese.
#pragma once

#include <QTranslator>

namespace dossierkit::qt {

class Translator : public QTranslator {
 public:
  QString translate(const char* context, const char* source, const char* disambiguation,
                    int n) const override;
  bool isEmpty() const override { return false; }
};

}  // namespace dossierkit::qt
