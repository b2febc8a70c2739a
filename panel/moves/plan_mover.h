#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>
#include <functional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

class QModelIndex;
class QPoint;
class QRect;

namespace TarnPlanView {

class CPlanViewTree;
class CStandardViewController;

/// Moves a plan to the group that it was dropped on in the tree: the plan is fetched whole and saved under its new
/// group, so nothing of it is lost. What can't be done is said in one message. Thread: GUI.
class CPlanMover : public QObject {
  Q_OBJECT
 public:
  CPlanMover(CPlanViewTree* tree, QObject* parent);

  /// Not owned; may die before the mover.
  void SetController(CStandardViewController* controller);
  /// Answers that are still under way are dropped.
  void Stop();
  /// Whether a plan is being edited: it stays where it is, or its editor could not save it any more.
  void SetIsEdited(const std::function<bool(const QString& plan_code)>& is_edited) { is_edited_ = is_edited; }

 Q_SIGNALS:
  void SignalMessageTipNeeded(const QString& text, int state);
  /// The plan stands in its new group.
  void SignalMoved(const QString& plan_code);

 public Q_SLOTS:
  void OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect);

 private:
  struct Destination {
    std::string code, name;
    int32_t type = 0;
  };

  QModelIndex GroupAt(const QModelIndex& source, const QModelIndex& target) const;
  /// With a message when it is.
  bool IsBeingEdited(const QString& plan_code);
  void Move(const QString& plan_code, const Destination& destination);
  void Save(const view_plugin_protocol::GetPlanDetailResponse& plan, const Destination& destination);
  void OnAnswer(const QString& plan_code, bool moved);

  CPlanViewTree* const tree_;
  QPointer<CStandardViewController> controller_;
  std::function<bool(const QString&)> is_edited_;
  QSet<QString> moving_;
  HostCalls::CCallScope calls_;
};

}  // namespace TarnPlanView
