#pragma once

#include <QPoint>
#include <QWidget>
#include <memory>

#include "tarn_plan_view_export.h"
#include "view_save_actions.h"

namespace TarnPlanView {

/// Pop-up with the two ways to save, which the host shows beside its save control. It saves nothing itself. Arrows,
/// Return and Esc as in a menu. Thread: GUI.
class TARNPLANVIEW_EXPORT CViewSaveMenu : public QWidget {
  Q_OBJECT
 public:
  explicit CViewSaveMenu(QWidget* parent);
  ~CViewSaveMenu() override;

  /// Shows the pop-up, with the focus on its first entry. `pos` as for QWidget::move(); kept on the screen.
  void ShowPopupMenu(const QPoint& pos);
  /// Shows or hides one way; the pop-up takes the size of what is left.
  void SetActionVisible(ViewSaveActions action, bool visible);
  /// Tool tips of the two ways, for instance with the host's keys.
  void SetTips(const QString& save, const QString& save_as);
  /// 2 hides "save as"; any other value changes nothing. The record of what is visible stays.
  void SetSaveAsVisable(const int& value);
  /// Hides the pop-up, then tells which way was chosen.
  void OnActionTriggered(ViewSaveActions action);

 Q_SIGNALS:
  /// The user has chosen a way. `pt_pos`: where the pop-up stood.
  void SignalViewMenuTriggered(ViewSaveActions enum_view_action, QPoint pt_pos);

 public Q_SLOTS:
  /// OnActionTriggered(SaveView).
  void OnSaveBtnClicked();
  /// OnActionTriggered(SaveAsView).
  void OnSaveAsBtnClicked();

 protected:
  bool event(QEvent* event) override;

 private:
  struct Body;
  std::shared_ptr<Body> body_;
};

}  // namespace TarnPlanView
