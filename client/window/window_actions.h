#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <array>
#include <functional>

class QAction;
class QToolButton;

namespace TarnClient {

/// What the client's window does by itself. Commands about plans are the panel's, those about pages the wall's.
enum class WindowCommand {
  Save,
  SaveAs,
  WaysToSave,
  History,
  Messages,
  Users,
  Lock,
  Settings,
  ShowInTree,
  PlayAgain,
  NewWall,
  CloseWall,
  FullScreen,
  Menu,
  Keys,
  About,
  Quit  // the last
};
constexpr int kWindowCommands = static_cast<int>(WindowCommand::Quit) + 1;

/// The window's commands as actions: text, icon, keys and tip of each stand here and nowhere else. Buttons and menus
/// show them. Belongs to the window. Thread: GUI.
class CWindowActions : public QObject {
  Q_OBJECT
 public:
  explicit CWindowActions(QWidget* window);

  QAction* Of(WindowCommand command) const { return actions_[static_cast<size_t>(command)].action; }
  /// In the order of the enumeration.
  QList<QAction*> All() const;
  /// What the command does. Its keys run it even while it is off, so that it can say why it does nothing.
  void Connect(WindowCommand command, const std::function<void()>& run);
  /// While the desk is locked: off for this reason, whatever else is; an empty one takes that back.
  void SetLocked(const QString& why_not, const std::function<bool(WindowCommand)>& works_all_the_same);
  /// Off for this reason, on for an empty one.
  void SetReason(WindowCommand command, const QString& why_not);
  /// The tip says this and the keys, in place of the command's text.
  void SetTipText(WindowCommand command, const QString& text);

 private:
  struct Action {
    QAction* action = nullptr;
    QString tip, why_not, locked;
  };
  void Renew(const Action& one);
  void RenewTip(const Action& one);

  std::array<Action, kWindowCommands> actions_;
};

/// The button shows the action and triggers it; assistive technology gets its text and why it is off.
void BindButton(QToolButton* button, QAction* action);

}  // namespace TarnClient
