#pragma once

#include <QCoreApplication>
#include <QDateTime>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_draft.h"

namespace TarnPlanView {

/// What is said of a plan that somebody else has changed while it stands in the editor. Thread: any.
class CConflictWords {
  Q_DECLARE_TR_FUNCTIONS(TarnPlanView::CConflictWords)
 public:
  /// Who saved it, and when as seen from `now`; less where the host does not say.
  static QString SavedBy(const view_plugin_protocol::GetPlanDetailResponse& theirs, const QDateTime& now);
  /// What they have changed of the plan that was opened; empty when it plays the same under the same name.
  static QString Changes(const PlanDraft& opened, const PlanDraft& theirs);

 private:
  static QString When(const QString& stamp, const QDateTime& now);
  static QString ChangedPages(const PlanDraft& opened, const PlanDraft& theirs);
};

}  // namespace TarnPlanView
