// ItemView: what the views of lists and trees share.
#pragma once

#include <QModelIndex>
#include <functional>

#include "adapters/qt/widget_view.h"

class QAbstractItemView;

namespace dossierkit::qt {

// Rows that come one by one are taken over together, once the event that brought them has ended.
class ItemView : public WidgetView {
 public:
  // The user wants an item selected; shows what became of it. False if the view ended meanwhile.
  bool Want(const QModelIndex& index);
  void DoubleClicked();
  int RowsInSight() const override;
  void Settle() override {
    if (waiting_) Flush();
  }

 protected:
  ItemView(ViewContext& context, toolkit::Control& control, QAbstractItemView* native);
  ~ItemView() override { ++showing_; }

  // The model of the native widget is set: listens to what is selected from outside (accessibility).
  void Listen();
  // Shows at once what still waits.
  void Flush();
  // Has Flush run soon.
  void FlushLater();

  void ShowStyle() override;
  void ShowText() override;
  void ShowContent() override;
  void ShowSelection() override;

  virtual void ReportSelect(const QModelIndex& index) = 0;
  virtual void ReportDblClick() = 0;
  // No items; all items afresh; what else may have changed.
  virtual void Drop() = 0;
  virtual void Fill() = 0;
  virtual void Refresh() {}
  // The selected item; invalid where there is none.
  virtual QModelIndex Selected() = 0;

  // While it lives, what the native widget reports is what the view itself does.
  class Showing {
   public:
    explicit Showing(ItemView& view) : view_(view) { ++view_.showing_; }
    ~Showing() { --view_.showing_; }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;

   private:
    ItemView& view_;
  };
  bool IsShowing() const { return showing_ > 0; }

 private:
  bool Report(const std::function<void()>& report);

  QAbstractItemView* native_;
  int showing_ = 0;
  bool filled_ = false;  // once at least
  bool dropped_ = false;
  bool waiting_ = false;
};

}  // namespace dossierkit::qt
