// Player: plays a prepared list of user actions on whatever windows are open, with widget events alone.
#pragma once

#include <QString>
#include <QTimer>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace dossierkit::host {

// Actions are posted one by one while the program's own loops run, so that a message box which one of
// them opens is answered by the next. Widgets are found by their accessible names in the topmost
// window. An action that finds nothing for five seconds fails the play and closes the windows.
class Player {
 public:
  Player();

  // --- actions ---------------------------------------------------------------------------------
  // Types into the widget with the focus: ASCII as keys, anything else as the commit of an input method.
  void Type(const QString& text);
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, int times = 1);
  void Click(const QString& accessible_name);
  void DoubleClick(const QString& accessible_name);
  // Clicks an item of the list of that name by its text, or a row of the table by its number (from 0).
  void ClickItem(const QString& list, const QString& text);
  void ClickRow(const QString& table, int row);
  // Types a path into the field of that name of a file dialog, and Enter until the dialog has gone. Qt's
  // dialog may have looked for the file before it had read the folder: its button is off then, and one letter
  // is typed anew.
  void ChooseFile(const QString& field, const QString& button, const QString& path);
  // Gives the topmost window a size, in pixels at 96 dpi.
  void Resize(int width, int height);
  // Writes a picture of the open windows.
  void Picture(const std::filesystem::path& file);
  // Runs a check of the caller's.
  void Check(std::function<void()> check);

  void Start();
  bool Failed() const { return !failure_.isEmpty(); }
  QString Failure() const { return failure_; }
  bool Finished() const { return actions_.empty(); }

 private:
  // True once it was done; false to be asked again.
  using Action = std::function<bool()>;

  void Next();
  void Fail(const QString& why);

  std::deque<std::pair<QString, Action>> actions_;
  QTimer timer_;
  int waited_ = 0;
  const QWidget* seen_ = nullptr;  // the window that was active at the last look
  QString failure_;
};

}  // namespace dossierkit::host
