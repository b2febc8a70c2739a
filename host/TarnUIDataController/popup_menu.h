#pragma once

#include <QMenu>
#include <QVariant>
#include <memory>

#include "TarnUIDataController/msg_type.h"
#include "host_export.h"

namespace tarn_ui_data_controller {

/// Popup menu of commands about one thing. Entries keep the order in which they were added; hidden ones leave no gap.
/// Keys: arrows, Home, End, mnemonics, Return, Esc. Disabled entries show their tool tip. Thread: GUI.
class TARN_HOST_EXPORT CPopupMenu : public QMenu {
  Q_OBJECT
 public:
  explicit CPopupMenu(QWidget* parent = nullptr);
  ~CPopupMenu() override;

  /// Adds an entry, which the menu owns, behind the others and before the host's own. Where there is one of this type
  /// it gets the text and is handed back.
  QAction* AddMenuItem(MsgType type, const QString& text);
  /// The entry of this type; null when there is none.
  QAction* MenuItem(MsgType type) const;
  /// Whether the entry is there for the user. Nothing for a type without an entry.
  void SetMenuItemVisible(MsgType type, bool visible);
  /// Whether the entry can be chosen; `reason` becomes the tool tip of a disabled one. Nothing for a type without an
  /// entry.
  void SetMenuItemEnabled(MsgType type, bool enabled, const QString& reason = QString());
  /// The host's own actions, after a separator; not owned. A later call replaces them.
  void SetMoreActions(const QList<QAction*>& actions);
  /// What the menu is about; handed on with each command.
  void SetMenuData(const QVariant& data);
  /// Opens at a point of the screen and returns at once; kept within that point's screen. Nothing without an entry to
  /// show.
  void PopupAt(const QPoint& global_position);

 Q_SIGNALS:
  /// The user has chosen this entry. `data`: what SetMenuData() gave. The host's own actions do not come here.
  void signalPopupMenuClicked(tarn_ui_data_controller::MsgType type, QVariant data);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace tarn_ui_data_controller
