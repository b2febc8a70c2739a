#pragma once

#include <QObject>
#include <array>

#include "MarUIControl/key_guide.h"
#include "plan_commands.h"

class QAction;
class QToolButton;

namespace TarnPlanView {

/// The panel's commands as actions. The bar's buttons show them; menus and keys trigger them by Run(). What is shown
/// and enabled comes from StatesOf() alone. Thread: GUI.
class CPanelActions : public QObject {
  Q_OBJECT
 public:
  explicit CPanelActions(QObject* parent);

  /// Of the commands that have any, and of the offer to undo, for lists of keys.
  static QList<MarUIControl::KeyEntry> Keys();
  /// Empty for a command without.
  static QKeySequence KeysOf(PlanCommand command);

  QAction* Of(PlanCommand command) const { return actions_[static_cast<size_t>(command)]; }
  /// The button shows the action and triggers it.
  void Bind(PlanCommand command, QToolButton* button);
  void Show(const CommandStates& states);
  /// Triggers the action with the code, of the row that it is about, as data, or says why `state` does not allow it.
  /// What it does may end the panel.
  void Run(PlanCommand command, const CommandState& state, const QString& code = QString());
  /// The icons of the skin as it is now.
  void RenewIcons();

 Q_SIGNALS:
  void SignalRefused(const QString& reason);

 private:
  std::array<QAction*, kPlanCommands> actions_;
};

}  // namespace TarnPlanView
