#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <array>

class QAction;
class QWidget;

namespace TarnClient {

/// What can be done with a window of the wall, and with its page.
enum class WallCommand {
  Enlarge,
  ZoomIn,
  ZoomOut,
  WholePicture,
  SmallStream,
  Preset,
  Snapshot,
  Replace,
  Empty,
  Split1,
  Split4,
  Split9,
  Split16  // the last
};
constexpr int kWallCommands = static_cast<int>(WallCommand::Split16) + 1;

/// What these commands depend on. A plain value.
struct WallSituation {
  bool is_editing = false;                       // the plan editor is open over the wall
  bool is_locked = false;                        // the desk is
  bool has_window = false;                       // one is current
  bool has_content = false, has_camera = false;  // in that window
  bool is_zoomed = false, is_enlarged = false, has_small_stream = false;
  int split_type = 0;  // of the page; 0: nothing is on the wall
};

/// Why it cannot be done now; empty where it can.
QString WhyNot(WallCommand command, const WallSituation& situation);
/// Whether it shows as chosen.
bool IsChosen(WallCommand command, const WallSituation& situation);
/// The split that the command makes; 0 for one that makes none.
int SplitOf(WallCommand command);

/// The commands as actions: text, keys and tip of each stand here and nowhere else. Thread: GUI.
class CWallCommands : public QObject {
  Q_OBJECT
 public:
  /// The keys of a window's commands count in `windows`, those of the page's in all of `wall`.
  CWallCommands(QWidget* windows, QWidget* wall, QObject* parent);

  QAction* Of(WallCommand command) const { return actions_[static_cast<size_t>(command)]; }
  QList<QAction*> All() const;
  QList<QAction*> Splits() const;
  /// Shows what is chosen, and with `shows_why_not` only what can be done as on.
  void Renew(const WallSituation& situation, bool shows_why_not = false);

 Q_SIGNALS:
  void SignalTriggered(TarnClient::WallCommand command);

 private:
  std::array<QAction*, kWallCommands> actions_{};
};

}  // namespace TarnClient
