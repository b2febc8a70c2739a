#pragma once

#include <QStringList>
#include <QToolButton>
#include <memory>

#include "TarnHost/modal_answer.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "plan_view_tree.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_extern_widget.h"

namespace TarnTest {

/// A panel of the public (or own) family on screen, with its controller; notes every message and every question.
class CPanelStage {
 public:
  CPanelStage(CPlanFixture& fixture, bool own = false);
  ~CPanelStage();

  TarnPlanView::CViewExternWidget& Panel() { return *panel_; }
  TarnPlanView::CPlanViewTree& Tree() { return *panel_->GetPlanViewTree(); }
  TarnPlanView::CStandardViewController& Controller() { return *controller_; }
  QToolButton* Button(const char* name) const;
  /// "agde" of the bar's buttons that are enabled: add group, add plan ("p"), edit, delete.
  QString Enabled() const;
  QString PageName() const;

  /// The row with this name in the tree, expanding on the way what is not loaded; invalid when there is none.
  QModelIndex Row(const QString& name);
  void Choose(const QString& name);
  /// Expands a row as the user would and waits for its children.
  void Expand(const QModelIndex& row);

  QStringList TakeTips();
  /// Texts of the questions asked so far; each was answered by `answer`.
  QStringList TakeQuestions();
  int answer = 1;
  std::function<void()> while_asking;

 private:
  QModelIndex findBelow(const QModelIndex& parent, const QString& name);

  QStringList tips_, questions_;  // outlive the panel, which may say why a save has no end when its controller goes
  std::unique_ptr<TarnPlanView::CViewExternWidget> panel_;
  std::unique_ptr<TarnPlanView::CStandardViewController> controller_;
};

}  // namespace TarnTest
