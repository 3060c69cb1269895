#include <QAccessible>
#include <QLineEdit>
#include <QTableView>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtAccessibility : public Stage {
 protected:
  QAccessibleInterface* Interface(const toolkit::Control& control) {
    return QAccessible::queryAccessibleInterface(Native(control));
  }
  std::string NameOf(const toolkit::Control& control) {
    return Text(Interface(control)->text(QAccessible::Name));
  }
};

TEST_F(QtAccessibility, NamesEveryFieldByItsLabel) {
  Play([&] {
    EXPECT_EQ(NameOf(*form->page->name), "就读院校");
    EXPECT_EQ(NameOf(*form->page->date), "起始年月");
    form->page->name_label->SetCaption("毕业院校");
    EXPECT_EQ(NameOf(*form->page->name), "毕业院校");
    EXPECT_EQ(NameOf(*form->page->grid), "记录列表");
    EXPECT_EQ(NameOf(*form->page->button), "更新照片");
    EXPECT_EQ(NameOf(*form->page->check), "主要学历(M)");
  });
}

TEST_F(QtAccessibility, WritesATextThroughTheModel) {
  Play([&] {
    int changes = 0;
    On(form->page->name->Change, [&] { ++changes; });
    Interface(*form->page->name)->setText(QAccessible::Value, "清华");
    EXPECT_EQ(form->page->name->Text(), "清华");
    EXPECT_GE(changes, 1);
    Interface(*form->page->date)->setText(QAccessible::Value, "1990年03月");
    EXPECT_EQ(form->page->date->Text(), "1990年03月");
    EXPECT_EQ(Text(Interface(*form->page->date)->text(QAccessible::Value)), "1990年03月");
    form->page->name->SetMaxLength(2);
    Interface(*form->page->name)->setText(QAccessible::Value, "北京大学");
    EXPECT_EQ(form->page->name->Text(), "北京");
    EXPECT_EQ(Text(Native<QLineEdit>(*form->page->name)->text()), "北京");
  });
}

TEST_F(QtAccessibility, PressesAButtonAndChecksABox) {
  int clicks = 0;
  Play([&] {
    On(form->page->button->Click, [&] { ++clicks; });
    Interface(*form->page->button)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
    Interface(*form->page->check)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return form->page->check->Value() == 1; }));
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(QtAccessibility, SelectsARowOfTheList) {
  Play([&] {
    auto* table = Interface(*form->page->grid)->tableInterface();
    ASSERT_TRUE(table);
    EXPECT_EQ(Text(table->cellAt(2, 1)->text(QAccessible::Name)), "清华大学3");
    table->selectRow(2);
    EXPECT_EQ(form->page->grid->Row(), 3);
  });
}

TEST_F(QtAccessibility, ListsTheItemsOfTheMenu) {
  Play([&] {
    auto* list = QAccessible::queryAccessibleInterface(Native("VMenu1_Items"));
    ASSERT_TRUE(list);
    ASSERT_EQ(list->childCount(), 16);
    EXPECT_EQ(Text(list->child(1)->text(QAccessible::Name)), "主要学习经历");
    EXPECT_EQ(Text(list->text(QAccessible::Name)), "信息集");
  });
}

TEST_F(QtAccessibility, FocusesAField) {
  Play([&] {
    Interface(*form->page->coded)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QCoreApplication::processEvents();
    EXPECT_TRUE(form->page->coded->HasFocus());
  });
}

}  // namespace
}  // namespace dossierkit::qt
