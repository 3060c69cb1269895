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

// Qt's own texts are in Chinese as long as this lives. The program is not told of it, which would write the
// texts of all its windows anew.
class TextsInChinese : public QObject {
 public:
  TextsInChinese();
  ~TextsInChinese() override;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  Translator translator_;
};

}  // namespace dossierkit::qt
