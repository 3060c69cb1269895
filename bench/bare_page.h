// BarePage: what Qt alone takes for a page of fields; the yardstick of bench/limits.
#pragma once

#include <QLineEdit>
#include <QStringList>
#include <QWidget>
#include <vector>

namespace dossierkit::bench {

// A label and a line edit for each field, in two columns, on 840 by 600 pixels.
class BarePage : public QWidget {
 public:
  explicit BarePage(const QStringList& captions);

  // Puts one text after the other into the fields.
  void SetTexts(const QStringList& texts);

 private:
  std::vector<QLineEdit*> edits_;
};

}  // namespace dossierkit::bench
