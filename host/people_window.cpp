#include "host/people_window.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/ado/recordset.h"
#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

constexpr int kMostRows = 1000;  // a longer list is narrowed by the search

QString Text(const ado::Recordset& rows, const char* column) {
  return QString::fromStdString(environment::TextOr(rows.Fields(column), ""));
}

}  // namespace

PeopleWindow::PeopleWindow(std::shared_ptr<ado::Connection> connection,
                           std::function<void(const VisitRequest&)> visit)
    : connection_(std::move(connection)), visit_(std::move(visit)) {
  Build();
  Refresh();
}

void PeopleWindow::Build() {
  setWindowTitle("人员档案");
  resize(860, 560);
  search_ = new QLineEdit(this);
  search_->setPlaceholderText("按姓名查找");
  search_->setClearButtonEnabled(true);
  search_->setAccessibleName("按姓名查找");
  person_type_ = new QComboBox(this);
  person_type_->addItems({"单位推荐", "个人自荐", "获奖者推荐"});
  person_type_->setAccessibleName("人员类型");
  auto* type_label = new QLabel("人员类型(&T)：", this);
  type_label->setBuddy(person_type_);
  open_ = new QPushButton("打开(&O)", this);
  auto* add = new QPushButton("新增人员(&N)", this);
  auto* bar = new QHBoxLayout;
  bar->addWidget(search_, 1);
  bar->addSpacing(12);
  bar->addWidget(type_label);
  bar->addWidget(person_type_);
  bar->addSpacing(12);
  bar->addWidget(open_);
  bar->addWidget(add);

  model_ = new QStandardItemModel(this);
  table_ = new QTableView(this);
  table_->setModel(model_);
  table_->setAccessibleName("人员列表");
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setTabKeyNavigation(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(28);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  count_ = new QLabel(this);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(bar);
  layout->addWidget(table_, 1);
  layout->addWidget(count_);

  QObject::connect(search_, &QLineEdit::textChanged, this, [this] { Refresh(); });
  QObject::connect(search_, &QLineEdit::returnPressed, this, [this] { OpenSelected(); });
  QObject::connect(open_, &QPushButton::clicked, this, [this] { OpenSelected(); });
  QObject::connect(add, &QPushButton::clicked, this, [this] { Visit({}); });
  QObject::connect(table_, &QTableView::doubleClicked, this, [this] { OpenSelected(); });
  auto* enter = new QAction(table_);
  enter->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
  enter->setShortcutContext(Qt::WidgetShortcut);
  QObject::connect(enter, &QAction::triggered, this, [this] { OpenSelected(); });
  table_->addAction(enter);
}

void PeopleWindow::Refresh() {
  const std::string selected = SelectedPerson();
  try {
    // The host's own statement; what was typed is quoted.
    const std::string typed = environment::Replace(search_->text().trimmed().toStdString(), "'", "''");
    const auto people =
        connection_->Execute("select A00,A0101,A0104,A0115,A0109,A0136 from a01 where A0101 like '%" + typed +
                             "%' order by A0199");
    model_->clear();
    model_->setHorizontalHeaderLabels({"姓名", "出生日期", "工作单位", "所学专业"});
    const int shown = std::min(people->RecordCount(), kMostRows);
    for (int i = 0; i < shown; ++i) {
      QList<QStandardItem*> row;
      for (const char* column : {"A0101", "A0104", "A0115", "A0109"})
        row.append(new QStandardItem(Text(*people, column)));
      row.front()->setData(Text(*people, "A00"));
      model_->appendRow(row);
      if (Text(*people, "A00").toStdString() == selected) table_->selectRow(i);
      people->MoveNext();
    }
    if (selected.empty() && shown > 0) table_->selectRow(0);
    count_->setText(
        shown < people->RecordCount()
            ? QString("共 %1 人，显示前 %2 人，请输入姓名查找").arg(people->RecordCount()).arg(shown)
            : QString("共 %1 人").arg(shown));
    int column = 0;
    for (const int width : {110, 110, 300, 220}) table_->setColumnWidth(column++, width);
    table_->horizontalHeader()->setStretchLastSection(true);
    open_->setEnabled(shown > 0);
  } catch (const std::exception& failure) {
    QMessageBox::warning(this, windowTitle(), QString("读取人员列表失败：") + failure.what());
  }
}

std::string PeopleWindow::SelectedPerson() const {
  const auto rows = table_->selectionModel()->selectedRows();
  return rows.isEmpty() ? std::string() : model_->item(rows.front().row())->data().toString().toStdString();
}

void PeopleWindow::OpenSelected() {
  if (model_->rowCount() == 0) return;
  if (SelectedPerson().empty()) table_->selectRow(0);
  Visit(SelectedPerson());
}

void PeopleWindow::Visit(const std::string& person) {
  try {
    visit_({person, static_cast<std::int16_t>(person_type_->currentIndex() + 1)});
  } catch (const std::exception& failure) {
    QMessageBox::warning(this, windowTitle(), QString("无法维护此人：") + failure.what());
  }
  // Whatever the visit returned: a deletion, or a save by a question, is not told.
  Refresh();
}

}  // namespace dossierkit::host
