#pragma once

#include <QList>
#include <QMenu>
#include <functional>

class QToolButton;

namespace TarnClient {

class CWindowActions;

/// All commands of the window in one menu, with their keys; it takes the room of one button where a menu bar would take
/// a line of the wall. Thread: GUI.
class CMainMenu : public QMenu {
  Q_OBJECT
 public:
  /// Gives the entries of the panel in front, which belong to the object.
  using PlanEntries = std::function<QList<QAction*>(QObject*)>;
  /// Gives what can be done with what plays, nothing while nothing does.
  using WallEntries = std::function<QList<QAction*>()>;

  CMainMenu(CWindowActions* actions, PlanEntries plans, WallEntries wall, QWidget* parent);

  /// With the entries as they are now, on the first of them, so that arrows and Return work at once.
  void OpenAbove(const QToolButton* button);

 private:
  void Fill();

  CWindowActions* const actions_;
  const PlanEntries plans_;
  const WallEntries wall_;
  QObject* plan_entries_ = nullptr;  // those shown last
};

}  // namespace TarnClient
