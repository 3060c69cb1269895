// ItemView: what the views of lists and trees share.
#pragma once

#include <QModelIndex>
#include <functional>

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/row_updates.h"

class QAbstractItemView;

namespace dossierkit::qt {

// Rows that come one by one are taken over together: see row_updates.h.
class ItemView : public WidgetView, protected toolkit::RowUpdates::Rows {
 public:
  // The user wants an item selected; shows what became of it. False if the view ended meanwhile.
  bool Want(const QModelIndex& index);
  void DoubleClicked();
  int RowsInSight() const override;
  void Settle() override { Update(&toolkit::RowUpdates::Settle); }

 protected:
  ItemView(ViewContext& context, toolkit::Control& control, QAbstractItemView* native);

  // The model of the native widget is set: listens to what is selected from outside (accessibility).
  void Listen();
  // Reports, and shows what became of it, also where the report was ignored. False if the view ended
  // meanwhile.
  bool ReportAndShow(const std::function<void()>& report);
  // Has a step of RowUpdates shown.
  void Update(void (toolkit::RowUpdates::*step)());

  void ShowStyle() override;
  void ShowText() override;
  void ShowContent() override { Update(&toolkit::RowUpdates::Content); }
  void ShowSelection() override { Update(&toolkit::RowUpdates::Selection); }
  // Shows which item is selected; what else is compared comes before.
  void Compare() override;
  void CallWhenIdle() override;

  virtual void ReportSelect(const QModelIndex& index) = 0;
  virtual void ReportDblClick() = 0;
  // The selected item; invalid where there is none.
  virtual QModelIndex Selected() = 0;

 private:
  QAbstractItemView* native_;
  toolkit::RowUpdates updates_{*this};
};

}  // namespace dossierkit::qt
