#include "host/doubled_box.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <set>

#include "platform/ado/recordset.h"
#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

constexpr int kLater = -1;

QString Text(const environment::Value& value) {
  return QString::fromStdString(environment::TextOr(value, ""));
}

// By column, whose names a server may give in small letters.
struct IgnoringCase {
  bool operator()(const std::string& left, const std::string& right) const {
    return environment::LowerCase(left) < environment::LowerCase(right);
  }
};
using CaptionsByColumn = std::map<std::string, QString, IgnoringCase>;

// Of the basic data.
CaptionsByColumn Captions(ado::Connection& database) {
  CaptionsByColumn captions = {{"A0136", "人员类别"}, {"A0199", "人员序号"}};
  const auto rows = database.Execute("select itemname,itemdesc from s_infoitem where tblname='A01'");
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    const QString caption = Text(rows->ValueAt(row, 1));
    if (!caption.isEmpty()) captions[environment::TextOr(rows->ValueAt(row, 0), "")] = caption;
  }
  return captions;
}

class DoubledBox : public QDialog {
 public:
  DoubledBox(const care::DoubledPerson& doubled, const CaptionsByColumn& captions, QWidget* over)
      : QDialog(over) {
    setWindowTitle("人员重复");
    resize(760, 520);
    auto* text =
        new QLabel(QString("此人在基本信息中有 %1 条记录，以后无法打开。请选择保留哪一条，其余的将删除；"
                           "此人的其它信息集不受影响。")
                       .arg(doubled.rows.size()),
                   this);
    text->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(MakeTable(doubled, captions), 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (int row = 0; row < static_cast<int>(doubled.rows.size()); ++row)
      AddButton(*buttons, QString("保留第 %1 条(&%1)").arg(row + 1), row);
    AddButton(*buttons, "以后再说(&L)", kLater)->setDefault(true);
    layout->addLayout(buttons);
  }

  int Kept() const { return kept_; }

 private:
  QTableWidget* MakeTable(const care::DoubledPerson& doubled, const CaptionsByColumn& captions) {
    auto* table = new QTableWidget(0, static_cast<int>(doubled.rows.size()) + 1, this);
    QStringList headings = {"项目"};
    for (std::size_t row = 0; row < doubled.rows.size(); ++row) headings << QString("第 %1 条").arg(row + 1);
    table->setHorizontalHeaderLabels(headings);
    table->setAccessibleName("重复的记录");
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (const bool differing : {true, false}) AddFields(*table, doubled, captions, differing);
    return table;
  }

  // The fields in which the rows differ, in bold, or those in which they are equal and not empty.
  static void AddFields(QTableWidget& table, const care::DoubledPerson& doubled,
                        const CaptionsByColumn& captions, bool differing) {
    for (std::size_t column = 0; column < doubled.columns.size(); ++column) {
      std::set<QString> texts;
      for (const auto& row : doubled.rows) texts.insert(Text(row[column]));
      if (environment::EqualIgnoringCase(doubled.columns[column], "A00") || (texts.size() > 1) != differing ||
          *texts.rbegin() == QString())
        continue;
      const auto caption = captions.find(doubled.columns[column]);
      QStringList cells = {caption == captions.end() ? QString::fromStdString(doubled.columns[column])
                                                     : caption->second};
      for (const auto& row : doubled.rows) cells << Text(row[column]);
      const int line = table.rowCount();
      table.insertRow(line);
      for (int i = 0; i < cells.size(); ++i) {
        auto* item = new QTableWidgetItem(cells[i]);
        QFont font = table.font();
        font.setBold(differing);
        item->setFont(font);
        item->setToolTip(cells[i]);
        table.setItem(line, i, item);
      }
    }
  }

  QPushButton* AddButton(QHBoxLayout& row, const QString& caption, int kept) {
    auto* button = new QPushButton(caption, this);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, this, [this, kept] {
      kept_ = kept;
      accept();
    });
    row.addWidget(button);
    return button;
  }

  int kept_ = kLater;
};

}  // namespace

void AskWhichRowStays(ado::Connection& database, care::DoubledPerson doubled, QWidget* over) {
  DoubledBox box(doubled, Captions(database), over);
  box.exec();
  if (box.Kept() == kLater) return;
  // From the last to the first, so that the places of the rows before stay.
  for (int row = static_cast<int>(doubled.rows.size()) - 1; row >= 0; --row) {
    if (row == box.Kept()) continue;
    care::DropDoubledRow(database, doubled, static_cast<std::size_t>(row));
    doubled.rows.erase(doubled.rows.begin() + row);
  }
}

}  // namespace dossierkit::host
