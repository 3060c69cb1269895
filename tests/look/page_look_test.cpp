// How the pages look on the screen: at 100, 150 and 200 % nothing overlaps, nothing is cut off, every
// value control has a name of its own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTableView>
#include <QWidget>
#include <set>
#include <vector>

#include "shell/component.h"
#include "shell/frm_dossier.h"
#include "shell/i_user_ctrl.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/visit.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {
namespace {

const std::vector<std::string> kSets = {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09",
                                        "A10", "A11", "A12", "A13", "A14", "A15", "A21", "B01"};

class PageLook : public testing::TestWithParam<double> {
 protected:
  // Opens the sample person at the scale and calls `look` on the native widget of each page.
  void LookAtEveryPage(const std::function<void(const std::string& set, QWidget& page)>& look) {
    ScriptedQt stage({GetParam()});
    const Component component(stage, "/opt/dossier");
    IUserCtrl dossier;
    dossier.SetConnection(SampleDatabase());
    dossier.OperationType = 3;
    dossier.PersonType = 1;
    dossier.personID = kPerson;
    stage.WillRun([&](toolkit::Form& form) {
      auto& window = dynamic_cast<frmDossier&>(form);
      for (std::size_t i = 0; i < kSets.size(); ++i) {
        window.VMenu1().UserClick(static_cast<std::int32_t>(i + 1));
        QApplication::processEvents();
        look(kSets[i], NativePage("ctrlUser" + kSets[i]));
      }
    });
    dossier.ShowDossier();
  }

  static QWidget& NativePage(const std::string& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      for (QWidget* page : window->findChildren<QWidget*>(QString::fromStdString(name))) {
        if (page->isVisible()) return *page;
      }
    }
    throw std::logic_error("no page " + name);
  }
};

// The widgets of the page's controls, by their names; frames only hold others.
std::vector<QWidget*> Controls(QWidget& page) {
  std::vector<QWidget*> found;
  for (QWidget* widget : page.findChildren<QWidget*>()) {
    const QString name = widget->objectName();
    if (!widget->isVisible() || name.startsWith("qt_") || name.startsWith("Frm") || name.startsWith("frm"))
      continue;
    if (name.contains('_') || name == "DGItems" || name == "Title" || name == "labOpt" ||
        name == "imgPerson" || name == "cmdAddPhoto" || name == "labExplain" || name == "LabInterFace" ||
        name == "Label5") {
      found.push_back(widget);
    }
  }
  return found;
}

QRect PlaceOf(const QWidget& widget, const QWidget& page) {
  return {widget.mapTo(&page, QPoint(0, 0)), widget.size()};
}

bool IsValue(const QWidget& widget) { return widget.objectName().endsWith("_v"); }

TEST_P(PageLook, NoTwoControlsOverlap) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    const auto controls = Controls(page);
    EXPECT_GT(controls.size(), 4U) << set;
    for (std::size_t i = 0; i < controls.size(); ++i) {
      for (std::size_t j = i + 1; j < controls.size(); ++j) {
        if (controls[i]->isAncestorOf(controls[j]) || controls[j]->isAncestorOf(controls[i])) continue;
        EXPECT_FALSE(PlaceOf(*controls[i], page).intersects(PlaceOf(*controls[j], page)))
            << set << ": " << controls[i]->objectName().toStdString() << " and "
            << controls[j]->objectName().toStdString();
      }
    }
  });
}

TEST_P(PageLook, NoCaptionIsCutOff) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    for (QWidget* widget : Controls(page)) {
      const auto* label = qobject_cast<QLabel*>(widget);
      if (!label) continue;
      const QRect inside = label->contentsRect().adjusted(label->margin(), label->margin(), -label->margin(),
                                                          -label->margin());
      const int flags = label->wordWrap() ? static_cast<int>(Qt::TextWordWrap) : 0;
      const QRect needed =
          label->fontMetrics().boundingRect(QRect(0, 0, inside.width(), 10000), flags, label->text());
      EXPECT_LE(needed.width(), inside.width()) << set << ": " << label->text().toStdString();
      EXPECT_LE(needed.height(), inside.height() + 1) << set << ": " << label->text().toStdString();
    }
  });
}

// The lines of a picture on which something dark stands; the lines between the heads are pale.
int InkedLines(const QImage& picture) {
  int inked = 0;
  for (int y = 0; y < picture.height(); ++y) {
    bool ink = false;
    for (int x = 0; x < picture.width(); ++x) ink = ink || picture.pixelColor(x, y).lightness() < 120;
    inked += ink ? 1 : 0;
  }
  return inked;
}

// The text as it looks with room on all sides.
QImage Free(const QString& text, const QHeaderView& head, const QColor& ground) {
  QImage picture(head.fontMetrics().horizontalAdvance(text) + 20, 2 * head.height(), QImage::Format_RGB32);
  picture.fill(ground);
  QPainter painter(&picture);
  painter.setFont(head.font());
  painter.setPen(head.palette().color(QPalette::ButtonText));
  painter.drawText(picture.rect(), Qt::AlignCenter, text);
  return picture;
}

TEST_P(PageLook, NoHeadingOfAListIsCutOff) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    const auto* list = page.findChild<QTableView*>("DGItems");
    if (!list->isVisible()) return;
    QHeaderView* head = list->horizontalHeader();
    const QImage picture = head->grab().toImage();
    const QColor ground = picture.pixelColor(0, 0);
    EXPECT_GT(ground.lightness(), 200) << set;
    int seen = 0;
    for (int column = 0; column < list->model()->columnCount(); ++column) {
      const QRect place(head->sectionViewportPosition(column), 0, head->sectionSize(column), head->height());
      const QString text = list->model()->headerData(column, Qt::Horizontal).toString();
      if (list->isColumnHidden(column) || text.size() > 4 || !picture.rect().contains(place)) continue;
      const int lines = InkedLines(Free(text, *head, ground));
      EXPECT_GT(lines, head->fontMetrics().height() / 2) << set;
      EXPECT_EQ(InkedLines(picture.copy(place)), lines) << set << ": " << text.toStdString();
      ++seen;
    }
    EXPECT_GT(seen, 1) << set;
    for (int column = 0; column < list->model()->columnCount(); ++column) {
      const QString text = list->model()->headerData(column, Qt::Horizontal).toString();
      if (list->isColumnHidden(column) || text.size() > 4) continue;
      EXPECT_LE(head->fontMetrics().horizontalAdvance(text) +
                    2 * head->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, head),
                list->columnWidth(column))
          << set << ": " << text.toStdString();
    }
  });
}

// Dates, years and post codes have one width; what is longer by nature may scroll in its box.
TEST_P(PageLook, NoMaskIsWiderThanItsBox) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    for (QWidget* widget : Controls(page)) {
      const auto* box = qobject_cast<QLineEdit*>(widget);
      if (!box || !IsValue(*box) || !(box->text().contains(QString("年")) || box->text().contains('_')))
        continue;
      EXPECT_LE(box->fontMetrics().horizontalAdvance(box->text()) + 6, box->width())
          << set << ": " << box->objectName().toStdString() << " " << box->text().toStdString();
    }
  });
}

TEST_P(PageLook, EveryValueControlHasANameOfItsOwn) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    std::set<QString> names;
    int values = 0;
    for (const QWidget* widget : Controls(page)) {
      if (!IsValue(*widget)) continue;
      ++values;
      EXPECT_FALSE(widget->accessibleName().isEmpty()) << set << ": " << widget->objectName().toStdString();
      EXPECT_TRUE(names.insert(widget->accessibleName()).second)
          << set << ": " << widget->accessibleName().toStdString();
    }
    EXPECT_GT(values, 0) << set;
  });
}

// Two captions in one column begin at one edge.
TEST_P(PageLook, CaptionsShareTheirEdges) {
  LookAtEveryPage([](const std::string& set, QWidget& page) {
    std::set<int> edges;
    for (const QWidget* widget : Controls(page)) {
      if (widget->objectName().endsWith("_c")) edges.insert(PlaceOf(*widget, page).left());
    }
    EXPECT_LE(edges.size(), 4U) << set;
  });
}

INSTANTIATE_TEST_SUITE_P(Scales, PageLook, testing::Values(1.0, 1.5, 2.0), [](const auto& scale) {
  return std::to_string(static_cast<int>(scale.param * 100)) + "Percent";
});

}  // namespace
}  // namespace dossierkit::tests
