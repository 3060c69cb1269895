#include "tests/support/foreign_application.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QLocale>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleHints>
#include <QToolTip>
#include <QTranslator>
#include <cstdlib>

namespace dossierkit::tests {
namespace {

const char* Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

class ForeignStyle : public QProxyStyle {
 public:
  ForeignStyle() : QProxyStyle(QStringLiteral("Windows")) { setObjectName(QStringLiteral("foreign")); }
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    // Whatever is drawn by it stands out of its box.
    return metric == PM_DefaultFrameWidth ? 11 : QProxyStyle::pixelMetric(metric, option, widget);
  }
};

class ForeignTexts : public QTranslator {
 public:
  QString translate(const char*, const char* source, const char*, int) const override {
    return QStringLiteral("fremd ") + QString::fromUtf8(source);
  }
  bool isEmpty() const override { return false; }
};

class LookAtTheProgram : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    if (const auto* application = ForeignApplication::Instance()) application->ExpectUntouched();
  }
};

}  // namespace

struct ForeignApplication::Belongings {
  const QStyle* style;
  QPalette palette;
  QFont font;
  QPalette tips;
  QFont tips_font;
  Qt::LayoutDirection direction;
  QLocale locale;
  QString text;
  QString sheet;
  std::string fonts;
  QString name;
  bool quits;
  int flash;
};

ForeignApplication::Belongings ForeignApplication::Present() {
  return {style(),
          palette(),
          font(),
          QToolTip::palette(),
          QToolTip::font(),
          layoutDirection(),
          QLocale(),
          translate("QFileDialog", "Open"),
          qApp->styleSheet(),
          Variable("FONTCONFIG_FILE"),
          applicationName(),
          quitOnLastWindowClosed(),
          cursorFlashTime()};
}

ForeignApplication::ForeignApplication(int& argc, char** argv)
    : QApplication(argc, argv), translator_(std::make_unique<ForeignTexts>()) {
  setStyle(new ForeignStyle);
  QPalette dark(QColor(0x40, 0x10, 0x10), QColor(0x20, 0x08, 0x08));
  dark.setColor(QPalette::Highlight, Qt::green);
  setPalette(dark);
  setPalette(QPalette(Qt::darkCyan), "QLineEdit");
  QFont large(QStringLiteral("DejaVu Serif"), 17, QFont::Black, true);
  large.setUnderline(true);
  large.setLetterSpacing(QFont::AbsoluteSpacing, 3);
  setFont(large);
  setFont(QFont(QStringLiteral("DejaVu Sans Mono"), 21), "QTableView");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  installTranslator(translator_.get());
  setLayoutDirection(Qt::RightToLeft);
  setApplicationName(QStringLiteral("host"));
  own_ = std::make_unique<const Belongings>(Present());
}

ForeignApplication::~ForeignApplication() = default;

ForeignApplication* ForeignApplication::Instance() {
  return dynamic_cast<ForeignApplication*>(QCoreApplication::instance());
}

bool ForeignApplication::notify(QObject* receiver, QEvent* event) {
  if (!catches) return QApplication::notify(receiver, event);
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& failure) {
    caught.emplace_back(failure.what());
    return true;
  }
}

void ForeignApplication::ExpectUntouched() const {
  const Belongings now = Present();
  EXPECT_EQ(now.style, own_->style);
  EXPECT_EQ(now.style->objectName(), own_->style->objectName());
  EXPECT_EQ(now.palette, own_->palette);
  EXPECT_EQ(now.font, own_->font);
  EXPECT_EQ(now.tips, own_->tips);
  EXPECT_EQ(now.tips_font, own_->tips_font);
  EXPECT_EQ(now.direction, own_->direction);
  EXPECT_EQ(now.locale, own_->locale);
  EXPECT_EQ(now.text, own_->text);
  EXPECT_EQ(now.sheet, own_->sheet);
  EXPECT_EQ(now.fonts, own_->fonts);
  EXPECT_EQ(now.name, own_->name);
  EXPECT_EQ(now.quits, own_->quits);
  EXPECT_EQ(now.flash, own_->flash);
  EXPECT_FALSE(overrideCursor());
}

std::unique_ptr<ForeignApplication> MakeForeignApplication(int& argc, char** argv) {
  if (!*Variable("DOSSIERKIT_TESTS_AS_GUEST")) return nullptr;
  testing::UnitTest::GetInstance()->listeners().Append(new LookAtTheProgram);
  return std::make_unique<ForeignApplication>(argc, argv);
}

}  // namespace dossierkit::tests
