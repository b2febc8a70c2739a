#pragma once

#include <QList>
#include <QObject>
#include <array>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "commands/row_commands.h"
#include "host_calls/call_scope.h"

class QAction;

namespace TarnClient {

class CPlanCopier;
class CPlanFamily;
class CPlanPlayer;
class CPlayOnMenu;
class IWallChoice;

/// The client's own entries of a panel's row menu, behind those of the panel, for the rows of the tree and the hits of
/// a search; some are keys as well. From the menu they are about the row that it was opened for, whatever becomes
/// current meanwhile, by a key about the row that the panel's own commands would be about. One that does nothing says
/// why: as the entry's tool tip, or, by its key, in a tip. Thread: GUI.
class CRowMenu : public QObject {
  Q_OBJECT
 public:
  /// What shows the rows, plays them on this wall, and knows the others. None is owned; all outlive the menu, the panel
  /// perhaps not.
  struct Desk {
    CPlanFamily* family = nullptr;
    CPlanPlayer* player = nullptr;
    IWallChoice* walls = nullptr;
    int number = 0;  // of this wall
  };
  CRowMenu(const Desk& desk, QObject* parent);

  QAction* Of(RowCommand command) const { return actions_[static_cast<size_t>(command)]; }
  QList<QAction*> Actions() const { return {actions_.begin(), actions_.end()}; }
  /// Another user has logged in: what is under way is not made in his name.
  void ForgetUser();

 Q_SIGNALS:
  /// For the user; `state` is that of a tip.
  void SignalMessage(const QString& text, int state);

 private:
  using Row = view_plugin_protocol::TarnPlanViewInfo;

  void MakeActions();
  void ConnectPanel();
  void ConnectWalls();
  void OnMenuAboutToShow();
  void Release();
  std::optional<Row> RowFor(RowCommand command);
  void Run(RowCommand command);
  void Do(RowCommand command, const Row& row);
  void OpenWalls();
  void OpenAtStart(const Row& row);
  RowSituation SituationOf(const Row& row) const;
  bool IsPlaying(const Row& row) const;
  bool HasVanished() const;
  void Refuse(const QString& reason);

  CPlanFamily* const family_;
  CPlanPlayer* const player_;
  IWallChoice* const walls_;
  CPlanCopier* const copier_;
  CPlayOnMenu* const play_on_;
  std::array<QAction*, kRowCommands> actions_{};
  std::optional<Row> bound_;  // the row that the menu was opened for
  bool bound_was_loaded_ = false;
  HostCalls::CCallScope calls_;
};

}  // namespace TarnClient
