#pragma once

#include <QPointer>

#include "MarUIControl/multilevel_combo_box.h"

namespace TarnPlanView {

class CGroupTree;
class CStandardPlanModel;
class CStandardViewController;

/// Combo box over the groups that the user may put a plan into. A group whose row is not loaded, or has gone, is shown
/// by the name it is given with. Thread: GUI.
class CGroupChooser : public MarUIControl::CMultilevelComboBox {
  Q_OBJECT
 public:
  explicit CGroupChooser(QWidget* parent);

  /// Neither is owned; both may die first.
  void SetModel(CStandardPlanModel* model);
  void SetController(CStandardViewController* controller);
  /// New plans need another right than edited ones.
  void SetAddMode(bool add);

  void ShowGroup(const QString& code, const QString& name);
  /// Why a plan cannot go where the box stands; empty when it can.
  QString Problem() const;
  /// 0 for a row that has none.
  static int FamilyOf(const QModelIndex& row);

 Q_SIGNALS:
  void SignalGroupChosen(const QString& code, const QString& name, int family);

 private:
  QModelIndex RowOfGroup() const;
  void Resolve();
  void OnChosen(const QModelIndex& index);
  void OnCurrent(const QModelIndex& index);

  QPointer<CStandardPlanModel> model_;
  CGroupTree* const tree_;
  QString code_, name_;
  bool vanished_ = false, resolving_ = false;
};

}  // namespace TarnPlanView
