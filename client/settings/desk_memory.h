#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

#include "settings/remembered_desk.h"

class QSplitter;
class QTabWidget;

namespace TarnPlanView {
class CPlanViewTree;
}

namespace TarnClient {

class CPlanFamily;
class CUserSettings;

/// Keeps the window, its parts and what was played as the user left them, and puts them there again. Thread: GUI.
class CDeskMemory : public QObject {
  Q_OBJECT
 public:
  /// What is remembered; none of it owned, all of it there as long as the memory.
  struct Desk {
    QWidget* window = nullptr;
    QSplitter* splitter = nullptr;  // the panels stand at its left
    QTabWidget* tabs = nullptr;     // a family each
    QVector<CPlanFamily*> families;
    CPlayHistory* history = nullptr;
  };

  CDeskMemory(CUserSettings* settings, const Desk& desk, QObject* parent);

  /// The window's place; before it is shown.
  void PlaceWindow();
  /// All but the window's place, for the user whose settings are loaded. Groups open as their rows come in.
  void Restore();
  /// The same for another user, while the rows are still the last one's.
  void RestoreForNewUser();
  /// What the user plays now.
  void SetPlayed(const QString& code, bool is_group);
  /// How the desk is now, at once instead of some time later.
  void Keep();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch();
  void KeepLater() { later_.start(); }
  RememberedDesk Now() const;
  RememberedDesk::Family FamilyNow(int number) const;
  TarnPlanView::CPlanViewTree* TreeOf(int number) const;

  CUserSettings* const settings_;
  const Desk desk_;
  RememberedDesk::Played last_played_;
  QVector<bool> awaits_rows_;  // of each family: the present rows are not this user's yet
  QTimer later_;
};

}  // namespace TarnClient
