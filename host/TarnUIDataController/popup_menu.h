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

  /// Where there is an entry of this type it gets the text.
  QAction* AddMenuItem(MsgType type, const QString& text);
  /// Null when there is none.
  QAction* MenuItem(MsgType type) const;
  void SetMenuItemVisible(MsgType type, bool visible);
  /// `reason` becomes the tool tip of a disabled entry.
  void SetMenuItemEnabled(MsgType type, bool enabled, const QString& reason = QString());
  /// The host's own actions, after a separator; not owned. A later call replaces them.
  void SetMoreActions(const QList<QAction*>& actions);
  /// What the menu is about; handed on with each command.
  void SetMenuData(const QVariant& data);
  /// Opens at a point of the screen and returns at once; kept within that point's screen.
  void PopupAt(const QPoint& global_position);

 Q_SIGNALS:
  /// `data`: what SetMenuData() gave.
  void signalPopupMenuClicked(tarn_ui_data_controller::MsgType type, QVariant data);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace tarn_ui_data_controller
