#pragma once

#include <QListView>

#include "TarnUIDataController/msg_type.h"

class QLabel;

namespace tarn_ui_data_controller {
class CPopupMenu;
}

namespace TarnPlanView {

/// The plans that a search has found. Double click and Return ask for the plan to be played, F2 and Delete for the
/// commands of these names, Ctrl+Return for the plan's row in the tree, Esc for the end of the search, Up on the first
/// hit for the field; the right button, Menu and Shift+F10 open a menu. Rows: display role name, role 661 code, role
/// 665 the text to mark, role 669 what signs the plan has, role 671 family, and kSearchGroupRole, kSearchPathRole,
/// kSearchShownRole and kSearchCameraAtRole. Thread: GUI.
class CSearchPlanListView : public QListView {
  Q_OBJECT
 public:
  explicit CSearchPlanListView(QWidget* parent = nullptr);

  /// The row with this code; invalid when there is none (any more).
  QModelIndex Hit(const QString& plan_code) const;
  /// What stands above the rows, of all of them; empty for nothing.
  void SetSummary(const QString& text);
  /// The entry of the menu beside those of rows, off for this reason.
  void OfferShowInTree(const QString& why_not);
  /// The host's own actions below the entries of the menu; not owned.
  void SetViewMoreActions(QList<QAction*>& actions);

 Q_SIGNALS:
  void SignalDoubleClicked(const QString& index_code);
  void SignalLeave();
  /// Up, on the first hit.
  void SignalBack();
  void SignalShowInTree(const QString& plan_code);
  /// Time to say which of its entries this row offers.
  void SignalMenuAboutToShow(tarn_ui_data_controller::CPopupMenu* menu, const QModelIndex& index);
  /// A command of the menu or of a key, about the plan with this code.
  void SignalMenuClicked(tarn_ui_data_controller::MsgType type, const QString& plan_code);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void RequestPlay(const QModelIndex& index);
  void RequestCommand(tarn_ui_data_controller::MsgType type);
  void ShowMenu(const QModelIndex& index, const QPoint& global_position);
  void ShowMenuAtCurrent();

  void RequestRow();
  bool TakeCommand(const QKeyEvent& event);
  bool TakeKey(const QKeyEvent& event);

  tarn_ui_data_controller::CPopupMenu* menu_ = nullptr;
  QAction* show_in_tree_ = nullptr;
  QLabel* const summary_;
};

/// QStringList: the names of the groups above a hit, from the root.
constexpr int kSearchPathRole = 0x0100 + 900;
/// QString: code of the group that a hit stands in.
constexpr int kSearchGroupRole = 0x0100 + 901;
/// QString: what a hit shows that was found by it, in words; empty for one found by its name.
constexpr int kSearchShownRole = 0x0100 + 902;
/// int: where in these words the camera's name begins.
constexpr int kSearchCameraAtRole = 0x0100 + 903;

}  // namespace TarnPlanView
