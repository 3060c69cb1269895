#include "platform/ado/recordset.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class DataGridTest : public ToolkitTest {
 protected:
  // Runs `scene` with a grid over three rows "序号", "单位", the focus in txtName.
  void WithGrid(const std::function<void(DataGrid&)>& scene) {
    Visit([&] {
      ado::Snapshot rows;
      rows.AddColumn({"序号", ado::ColumnKind::kInteger, ""});
      rows.AddColumn({"单位", ado::ColumnKind::kText, ""});
      for (int i = 1; i <= 3; ++i) {
        rows.AppendInteger(i * 10);
        if (i == 3) {
          rows.AppendNull();
        } else {
          rows.AppendText("单位" + std::to_string(i));
        }
      }
      recordset = std::make_shared<ado::Recordset>(std::move(rows));
      On(recordset->WillMove,
         [this](std::int32_t, std::int32_t&, ado::Recordset&) { log.push_back("WillMove"); });
      On(recordset->MoveComplete, [this](std::int32_t, std::int32_t& status, ado::Recordset&) {
        log.push_back(status == ado::kStatusCancel ? "cancelled" : "MoveComplete");
      });
      const auto grid = form->Get<DataGrid>("grid");
      grid->SetDataSource(recordset);
      form->Get("txtName")->SetFocus();
      TakeLog();
      scene(*grid);
    });
  }
  std::shared_ptr<ado::Recordset> recordset;
};

TEST_F(DataGridTest, ShowsTheRecordsetsFieldsAndRowsInItsOrder) {
  WithGrid([&](DataGrid& grid) {
    EXPECT_EQ(grid.ColumnCount(), 2U);
    EXPECT_EQ(grid.RowCount(), 3);
    EXPECT_EQ(grid.Heading(0), "序号");
    EXPECT_EQ(grid.Heading(1), "单位");
    EXPECT_EQ(grid.Cell(2, 0), "20");
    EXPECT_EQ(grid.Cell(2, 1), "单位2");
    EXPECT_EQ(grid.Cell(3, 1), "");
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(DataGridTest, ColumnsHaveWidthsInTwipsAndZeroHides) {
  WithGrid([&](DataGrid& grid) {
    grid.SetColumnWidth(0, 0);
    grid.SetColumnWidth(1, 1440.5F);
    EXPECT_EQ(grid.ColumnWidth(0), 0.0F);
    EXPECT_EQ(grid.ColumnWidth(1), 1440.5F);
    EXPECT_EQ(NumberOfFailure([&] { grid.SetColumnWidth(2, 100); }), 9);
    // A hidden column is there all the same.
    EXPECT_EQ(grid.Cell(1, 0), "10");
    EXPECT_EQ(grid.ColumnCount(), 2U);
    grid.SetDataSource(recordset);
    EXPECT_GT(grid.ColumnWidth(0), 0.0F);
  });
}

TEST_F(DataGridTest, UsersWidthIsKeptBeforeColResizeIsRaised) {
  WithGrid([&](DataGrid& grid) {
    std::vector<float> widths;
    On(grid.ColResize, [&] { widths.push_back(grid.ColumnWidth(1)); });
    grid.UserColumnWidth(1, 750);
    grid.UserColumnWidth(0, 0);
    EXPECT_EQ(grid.ColumnWidth(0), 0.0F);
    grid.UserColumnWidth(2, 100);
    EXPECT_EQ(widths, (std::vector<float>{750, 750})) << "there is no third column";
    form->Page()->SetEnabled(false);
    grid.UserColumnWidth(1, 900);
    EXPECT_EQ(grid.ColumnWidth(1), 750.0F);
    EXPECT_EQ(widths.size(), 2U);
  });
}

TEST_F(DataGridTest, FailureInColResizeEndsTheVisitAndReachesTheCaller) {
  EXPECT_THROW(WithGrid([&](DataGrid& grid) {
                 On(grid.ColResize, [] { throw std::runtime_error("列"); });
                 grid.UserColumnWidth(1, 750);
               }),
               std::runtime_error);
}

TEST_F(DataGridTest, ClickMovesTheFocusThenTheCursor) {
  WithGrid([&](DataGrid& grid) {
    user.ClickRow(3);
    EXPECT_EQ(TakeLog(),
              (Log{"txtName.Validate", "txtName.LostFocus", "grid.GotFocus", "WillMove", "MoveComplete"}));
    EXPECT_EQ(recordset->AbsolutePosition(), 3);
    EXPECT_EQ(grid.Row(), 3);
  });
}

TEST_F(DataGridTest, ClickOnTheCurrentRowMovesTheCursorToo) {
  WithGrid([&](DataGrid& grid) {
    grid.SetFocus();
    TakeLog();
    user.ClickRow(1);
    EXPECT_EQ(TakeLog(), (Log{"WillMove", "MoveComplete"}));
    EXPECT_EQ(grid.Row(), 1);
  });
}

TEST_F(DataGridTest, RefusedFocusMovesNothing) {
  WithGrid([&](DataGrid& grid) {
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    user.ClickRow(2);
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate"}));
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(DataGridTest, CancelledMovePutsTheSelectionBack) {
  WithGrid([&](DataGrid& grid) {
    auto hook = recordset->WillMove.Subscribe(
        [](std::int32_t, std::int32_t& status, ado::Recordset&) { status = ado::kStatusCancel; });
    user.ClickRow(2);
    EXPECT_EQ(CountOf(TakeLog(), "cancelled"), 1U);
    EXPECT_EQ(grid.Row(), 1);
    hook.End();
    user.ClickRow(2);
    EXPECT_EQ(grid.Row(), 2);
  });
}

TEST_F(DataGridTest, MovedCursorSelectsTheRow) {
  WithGrid([&](DataGrid& grid) {
    recordset->MoveNext();
    EXPECT_EQ(grid.Row(), 2);
    recordset->MoveFirst();
    EXPECT_EQ(grid.Row(), 1);
    recordset->MovePrevious();
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(DataGridTest, ArrowsMoveTheCursorWithinTheRows) {
  WithGrid([&](DataGrid& grid) {
    grid.SetFocus();
    user.Press(kKeyDown);
    EXPECT_EQ(grid.Row(), 2);
    user.Press(kKeyDown);
    user.Press(kKeyDown);
    EXPECT_EQ(grid.Row(), 3);
    for (int i = 0; i < 4; ++i) user.Press(kKeyUp);
    EXPECT_EQ(grid.Row(), 1);
  });
}

TEST_F(DataGridTest, RowsThatAreNotThereMoveNothing) {
  WithGrid([&](DataGrid&) {
    user.ClickRow(0);
    user.ClickRow(4);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(DataGridTest, GridWithoutRowsOrRecordsetIsEmpty) {
  WithGrid([&](DataGrid& grid) {
    grid.SetDataSource(nullptr);
    EXPECT_EQ(grid.RowCount(), 0);
    EXPECT_EQ(grid.ColumnCount(), 0U);
    EXPECT_EQ(grid.Row(), 0);
    user.ClickRow(1);
    ado::Snapshot none;
    none.AddColumn({"序号", ado::ColumnKind::kInteger, ""});
    grid.SetDataSource(std::make_shared<ado::Recordset>(std::move(none)));
    EXPECT_EQ(grid.RowCount(), 0);
    EXPECT_EQ(grid.Heading(0), "序号");
    EXPECT_EQ(grid.Row(), 0);
    user.ClickRow(1);
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(DataGridTest, ClosedRecordsetIsAnEmptyList) {
  WithGrid([&](DataGrid& grid) {
    recordset->Close();
    EXPECT_EQ(grid.RowCount(), 0);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Heading(0), "");
    user.ClickRow(1);
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(DataGridTest, RowsThatGoWhenTheFocusComesAreNotMovedTo) {
  WithGrid([&](DataGrid& grid) {
    On(grid.GotFocus, [&] { grid.SetDataSource(nullptr); });
    user.ClickRow(2);
    EXPECT_EQ(CountOf(TakeLog(), "WillMove"), 0U);
    EXPECT_FALSE(form->LoopEnded());
  });
}

TEST_F(DataGridTest, PageMayBeDroppedInItsOwnMove) {
  WithGrid([&](DataGrid&) {
    const std::weak_ptr<Control> page = form->Page();
    On(recordset->WillMove, [&](std::int32_t, std::int32_t&, ado::Recordset& moved) {
      moved.Close();
      recordset.reset();
      form->LoadPage("second");
      EXPECT_FALSE(page.expired());
    });
    user.ClickRow(2);
    EXPECT_TRUE(page.expired());
    EXPECT_FALSE(form->LoopEnded());
    EXPECT_EQ(form->Page()->Name(), "second");
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
