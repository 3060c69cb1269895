// RowUpdates: when the view of a list or tree takes over rows that changed.
#pragma once

namespace dossierkit::toolkit {

// Rows that come one by one, and nodes that a program opens or closes one by one, are taken over together:
// once the user's event that brought them has ended, or the system has nothing else to do. For views whose
// native widgets would work for each of them.
class RowUpdates {
 public:
  // What a view does for it.
  class Rows {
   public:
    virtual ~Rows() = default;
    // Shows no rows: what it knew of them holds no longer.
    virtual void Drop() = 0;
    // Shows all rows afresh.
    virtual void Fill() = 0;
    // Shows which row is chosen, and which nodes are open.
    virtual void Compare() = 0;
    // Has Idle called once the system has nothing else to do.
    virtual void CallWhenIdle() = 0;
  };

  explicit RowUpdates(Rows& rows) : rows_(rows) {}

  // Other rows (Aspect::kContent): the first ones show at once, as all of a new view.
  void Content();
  // Another row is chosen (Aspect::kSelection): shows at once, unless its row does not show yet.
  void Selection();
  // Something of many that change one by one.
  void Later();
  // Shows what waits: a report has ended (View::Settle), or the system has nothing else to do.
  void Settle();
  void Idle() { Settle(); }
  // Shows all that there is, also where nothing waits.
  void Now();

 private:
  Rows& rows_;
  bool filled_ = false;  // once at least
  bool dropped_ = false;
  bool waiting_ = false;
};

}  // namespace dossierkit::toolkit
