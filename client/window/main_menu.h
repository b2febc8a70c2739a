#pragma once

#include <QList>
#include <QMenu>
#include <QVector>
#include <functional>

class QToolButton;

namespace TarnClient {

class CWindowActions;
enum class WindowCommand;

/// All commands of the window in one menu, with their keys; it takes the room of one button where a menu bar would take
/// a line of the wall. Thread: GUI.
class CMainMenu : public QMenu {
  Q_OBJECT
 public:
  /// Gives the entries of the panel in front, which belong to the object.
  using PlanEntries = std::function<QList<QAction*>(QObject*)>;
  /// Gives what can be done with what plays, nothing while nothing does.
  using WallEntries = std::function<QList<QAction*>()>;

  /// Behind what is about plans and the wall come these commands, with a line between the parts.
  using Parts = QVector<QVector<WindowCommand>>;

  CMainMenu(CWindowActions* actions, PlanEntries plans, WallEntries wall, Parts last, QWidget* parent);

  /// With the entries as they are now, on the first of them, so that arrows and Return work at once.
  void OpenAbove(const QToolButton* button);

 private:
  void Fill();
  void AddPart(const QVector<WindowCommand>& commands);

  CWindowActions* const actions_;
  const PlanEntries plans_;
  const WallEntries wall_;
  const Parts last_;
  QObject* plan_entries_ = nullptr;  // those shown last
};

}  // namespace TarnClient
