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
struct CallAnswer;

/// A plan that was moved: what it is called and from where it came to where.
struct PlanMove {
  struct Group {
    std::string code, name;
    int32_t family = 0;
  };
  QString plan_code, name;
  Group from, to;
};

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
  /// As if the plan had been dropped on this row of a group of its own family.
  void MoveTo(const QString& plan_code, const QModelIndex& group);
  /// Gives it another name by the same way.
  void Rename(const QString& plan_code, const QString& name);
  /// Moves the plan back, unless it was moved on or deleted since; then that is said.
  void Undo(const PlanMove& move);
  /// Whether a plan is being edited: it stays where it is, or its editor could not save it any more.
  void SetIsEdited(const std::function<bool(const QString& plan_code)>& is_edited) { is_edited_ = is_edited; }

 Q_SIGNALS:
  void SignalMessageTipNeeded(const QString& text, int state);
  /// A move or its undoing is under way.
  void SignalMoving(const QString& plan_code);
  /// The plan stands in its new group.
  void SignalMoved(const PlanMove& move);
  /// It stands where it was again.
  void SignalMovedBack(const PlanMove& move);
  /// The plan has this name now, and had another one.
  void SignalRenamed(const QString& name);
  /// It keeps the name that it had, for a reason that was said.
  void SignalNotRenamed(const QString& plan_code, const QString& name);
  /// The move could not be undone now, but may be later.
  void SignalStillMoved(const PlanMove& move);

 public Q_SLOTS:
  void OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect);

 private:
  enum Course { kMove, kMoveBack };

  QModelIndex GroupAt(const QModelIndex& source, const QModelIndex& target) const;
  /// Whether it is being moved or renamed; with a message when it is, as the next one.
  bool IsUnderWay(const QString& plan_code);
  bool IsBeingEdited(const QString& plan_code);
  /// To the group `to` of the move.
  void Move(const PlanMove& move, Course course);
  void OnFetched(const view_plugin_protocol::GetPlanDetailResponse& plan, PlanMove move, Course course);
  void Save(const view_plugin_protocol::GetPlanDetailResponse& plan, const PlanMove& move, Course course);
  void SaveAs(const view_plugin_protocol::GetPlanDetailResponse& plan, const QString& plan_code, const QString& name);
  void OnAnswer(const PlanMove& move, Course course, const CallAnswer& answer);
  /// The way back is offered once more.
  void Retry(const PlanMove& move, Course course);

  CPlanViewTree* const tree_;
  QPointer<CStandardViewController> controller_;
  std::function<bool(const QString&)> is_edited_;
  QSet<QString> moving_;  // codes of the plans that are being moved or renamed
  HostCalls::CCallScope calls_;
};

}  // namespace TarnPlanView
