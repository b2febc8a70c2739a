#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>

#include "host_calls/call_scope.h"
#include "plan_way.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"

namespace TarnPlanView {

class CPlanViewTree;

/// Brings the row of a plan or group into sight, wherever it stands: asks for the groups above it and expands them one
/// after the other, by the same requests as a user's. It stops where the user goes on to another row. Thread: GUI.
class CPlanRevealer : public QObject {
  Q_OBJECT
 public:
  CPlanRevealer(CPlanViewTree* tree, QObject* parent);

  /// Not owned; may die first.
  void SetModel(CStandardPlanModel* model);
  void SetController(CStandardViewController* controller);
  /// `shown` is called once the row is current and in sight, unless this was dropped before.
  using Shown = std::function<void(const QModelIndex& row)>;
  void Reveal(const QString& code, bool is_group = false, const Shown& shown = {});
  /// What is under way counts for nothing any more.
  void Drop();

 Q_SIGNALS:
  /// The plan is of another family, a ThemeNodeType.
  void SignalInOtherTree(const QString& plan_code, int family);
  void SignalMessageTipNeeded(const QString& text, int state);

 private:
  void OnWay(const PlanWay& way);
  void OnExpanded(const QModelIndex& index);
  void GoOn();
  bool ShowRow();
  QModelIndex LowestLoaded() const;
  void AwaitLateRow();
  void Refuse(const QString& why);

  CPlanViewTree* const tree_;
  QPointer<CStandardPlanModel> model_;
  QPointer<CStandardViewController> controller_;
  HostCalls::CCallScope call_;
  QString wanted_;  // code of the plan or group; empty while none is looked for
  bool is_group_ = false;
  Shown shown_;
  QStringList way_;             // codes of the groups above it, from the root down
  QString awaited_;             // the one of them that is being expanded
  QPersistentModelIndex from_;  // the row that was current when it began
  QElapsedTimer late_;          // since all on the way is loaded and the row is not there
  QTimer soon_;
};

}  // namespace TarnPlanView
