#include "host/people_window.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "host/failure_box.h"
#include "host/people_model.h"
#include "platform/environment/failure.h"

namespace dossierkit::host {

static constexpr QSize kFrame(8, 40);  // what a desktop puts around a window, at most

PeopleWindow::PeopleWindow(std::shared_ptr<ado::Connection> connection, Visit visit)
    : connection_(std::move(connection)), visit_(std::move(visit)) {
  Build();
  Reload();
}

void PeopleWindow::Build() {
  setWindowTitle("人员档案");
  // With its frame it fits on a small screen.
  resize(QSize(860, 560).boundedTo(screen()->availableGeometry().size() - kFrame));
  search_ = new QLineEdit(this);
  search_->setPlaceholderText("按姓名查找");
  search_->setClearButtonEnabled(true);
  search_->setAccessibleName("按姓名查找");
  person_type_ = new QComboBox(this);
  // Required of the component: these two sets have no page, and a click on them ends the visit.
  person_type_->addItems({"单位推荐", "个人自荐（B02 没有页面）", "获奖者推荐（B03 没有页面）"});
  person_type_->setAccessibleName("新增人员类型");
  auto* type_label = new QLabel("新增人员类型(&T)：", this);
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

  model_ = new PeopleModel;
  model_->setParent(this);
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
  table_->horizontalHeader()->setStretchLastSection(true);
  int column = 0;
  for (const int width : {110, 110, 300, 220}) table_->setColumnWidth(column++, width);
  count_ = new QLabel(this);
  notice_ = new QLabel(this);
  auto* keys = new QLabel("按 F1 查看按键说明", this);
  auto* foot = new QHBoxLayout;
  foot->addWidget(count_);
  foot->addSpacing(24);
  foot->addWidget(notice_, 1);
  foot->addWidget(keys);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(bar);
  layout->addWidget(table_, 1);
  layout->addLayout(foot);

  QObject::connect(search_, &QLineEdit::textChanged, this, [this] { Search(); });
  QObject::connect(search_, &QLineEdit::returnPressed, this, [this] { OpenSelected(); });
  QObject::connect(open_, &QPushButton::clicked, this, [this] { OpenSelected(); });
  QObject::connect(add, &QPushButton::clicked, this, [this] { Open({}); });
  QObject::connect(table_, &QTableView::doubleClicked, this, [this] { OpenSelected(); });
  QObject::connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                   [this] { ShowNotice(); });
  auto* enter = new QAction(table_);
  enter->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
  enter->setShortcutContext(Qt::WidgetShortcut);
  QObject::connect(enter, &QAction::triggered, this, [this] { OpenSelected(); });
  table_->addAction(enter);
}

void PeopleWindow::Reload() {
  const std::string selected = SelectedPerson();
  try {
    model_->Load(*connection_);
  } catch (const std::exception& failure) {
    QMessageBox::warning(this, windowTitle(), QString("读取人员列表失败：") + failure.what());
  }
  ShowPeople(selected.empty() ? -1 : model_->RowOf(selected));
}

void PeopleWindow::Search() {
  const auto rows = table_->selectionModel()->selectedRows();
  ShowPeople(model_->SetFilter(search_->text(), rows.isEmpty() ? -1 : rows.front().row()));
}

// Whoever was selected stays so while he is in the list; else the first one is.
void PeopleWindow::ShowPeople(int selected) {
  const int people = model_->rowCount();
  if (people > 0) table_->selectRow(std::max(0, selected));
  count_->setText(QString("共 %1 人").arg(people));
  open_->setEnabled(people > 0);
  ShowNotice();
}

void PeopleWindow::ShowNotice() {
  const auto rows = table_->selectionModel()->selectedRows();
  const int type = rows.isEmpty() ? 0 : model_->PersonTypeAt(rows.front().row());
  notice_->setText(type < 2 ? QString()
                            : QString("此人是%1：信息集“%2”（B0%3）没有页面，点击它会关闭窗口。")
                                  .arg(type == 2 ? "个人自荐" : "获奖者推荐",
                                       type == 2 ? "个人自荐情况" : "获奖者推荐情况")
                                  .arg(type));
}

void PeopleWindow::ChoosePersonType(int type) {
  person_type_->setCurrentIndex(type >= 1 && type <= person_type_->count() ? type - 1 : 0);
}

std::string PeopleWindow::SelectedPerson() const {
  const auto rows = table_->selectionModel()->selectedRows();
  return rows.isEmpty() ? std::string() : model_->PersonAt(rows.front().row());
}

void PeopleWindow::OpenSelected() {
  if (model_->rowCount() == 0) return;
  if (SelectedPerson().empty()) table_->selectRow(0);
  Open(SelectedPerson());
}

void PeopleWindow::Open(const std::string& person) {
  VisitRequest request;
  request.person = person;
  // A stored person has his own type.
  if (person.empty()) request.person_type = static_cast<std::int16_t>(person_type_->currentIndex() + 1);
  try {
    visit_(request, *this);
  } catch (const environment::Failure& failure) {
    // A person who was refused: the component has said so.
    if (failure.number() != environment::kObjectUnloaded) ShowFailure(failure);
  } catch (const std::exception& failure) {
    ShowFailure(failure);
  }
  // Whatever the visit returned: a deletion, or a save by a question, is not told.
  Reload();
}

void PeopleWindow::ShowFailure(const std::exception& failure) {
  ShowFailureBox(this, QString("无法维护此人：") + failure.what(), failure);
}

}  // namespace dossierkit::host
