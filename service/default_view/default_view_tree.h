#pragma once

#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QString>
#include <QTimer>

#include "default_view_rows.h"
#include "found_plans.h"
#include "standard_plan_model.h"

namespace MarUIControl {
class CTreeView;
}

namespace TarnPlanView {

class CStandardViewController;
class CViewModelDataManager;

/// The rows of the default-view chooser and their loading: two models of its own, known to the plan data's manager
/// as long as this lives, joined into one sorted tree that a view shows. Thread: GUI.
class CDefaultViewTree : public QObject {
  Q_OBJECT
 public:
  /// `view` is not owned and shows the rows from now on.
  CDefaultViewTree(MarUIControl::CTreeView* view, QObject* parent);
  ~CDefaultViewTree() override;

  void SetViewController(CStandardViewController* controller);
  CDefaultViewRows* Rows() const { return rows_; }
  /// Row of a plan or group by its code; the placeholder's code is a group's. Invalid when it is not loaded.
  QModelIndex Find(const QString& code, bool is_group) const;
  /// Whether the roots of both families are there.
  bool HasRoots() const;
  /// Plans that a search has found and whose rows are not loaded stand in rows of their own, as long as its text does.
  CFoundPlans* Found() const { return found_; }
  /// Whether a row here is one of those.
  bool IsFound(const QModelIndex& row) const;
  /// Opens the lowest of these groups that is there, so that what is below it gets loaded. False when that has been
  /// loaded already.
  bool ExpandLowest(const QStringList& groups);

 Q_SIGNALS:
  /// What is below this group was asked for and has come, or not. The controller tells why not, when it was asked.
  void SignalExpanded(const QString& group, bool loaded);

 private:
  CStandardPlanModel* MakeModel(int theme);
  void Load();
  void Expand(const QModelIndex& index);
  void FinishExpand(const QModelIndex& index, bool expand);
  void FinishOwnExpand(const QModelIndex& index, bool expand);
  void OnRowsInserted(const QModelIndex& parent, int first);
  void ExpandRoots();
  void FillOn();
  void Fill(const QString& code);

  MarUIControl::CTreeView* const view_;
  const QPointer<CViewModelDataManager> manager_;
  QPointer<CStandardViewController> controller_;
  CStandardPlanModel* public_ = nullptr;
  CStandardPlanModel* own_ = nullptr;
  CFoundPlans* found_ = nullptr;
  CBothFamiliesModel* joint_ = nullptr;
  CDefaultViewRows* rows_ = nullptr;
  QTimer roots_came_;
  QTimer rows_came_;
  QTimer fill_;
  QQueue<QString> unfilled_;
};

}  // namespace TarnPlanView
