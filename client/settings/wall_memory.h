#pragma once

#include <QObject>
#include <QVector>

#include "settings/remembered_desk.h"

class QSplitter;
class QTabWidget;

namespace TarnPlanView {
class CPlanViewTree;
}

namespace TarnClient {

class CPlanFamily;

/// Says how a wall's window and its parts stand, and puts them as they once stood. Thread: GUI.
class CWallMemory : public QObject {
  Q_OBJECT
 public:
  /// What is remembered; none of it owned, all of it there as long as the memory.
  struct Parts {
    int number = 0;  // of the wall
    QWidget* window = nullptr;
    QSplitter* splitter = nullptr;  // the panels stand at its left
    QTabWidget* tabs = nullptr;     // a family each
    QVector<CPlanFamily*> families;
  };

  CWallMemory(const Parts& parts, QObject* parent);

  int Number() const { return parts_.number; }
  /// The window's place; before it is shown.
  void PlaceWindow(const RememberedWall& wall);
  /// All but the window's place. Groups open as their rows come in.
  void Restore(const RememberedWall& wall);
  /// The rows are the last user's until others come.
  void AwaitRows() { awaits_rows_.fill(true); }
  /// What the user plays now.
  void SetPlayed(const QString& code, bool is_group);
  /// `last`: what is said of groups while a load does not show what the user left open.
  RememberedWall Now(const RememberedWall& last) const;

 Q_SIGNALS:
  void SignalChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(int family);
  RememberedWall::Family FamilyNow(int number, const RememberedWall& last) const;
  TarnPlanView::CPlanViewTree* TreeOf(int number) const;

  const Parts parts_;
  RememberedWall::Played last_played_;
  QVector<bool> awaits_rows_;  // of each family: the present rows are not this user's yet
};

}  // namespace TarnClient
