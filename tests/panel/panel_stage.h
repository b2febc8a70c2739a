#pragma once

#include <QLineEdit>
#include <QListView>
#include <QStringList>
#include <QToolButton>
#include <memory>

#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/popup_menu.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "plan_view_tree.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget.h"
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
  QToolButton* Button(const char* name) const { return panel_->findChild<QToolButton*>(name); }
  /// "gped" of the bar's buttons that are enabled: add group, add plan ("p"), edit, delete.
  QString Enabled() const;
  QString PageName() const;

  /// The row with this name in the tree, expanding on the way what is not loaded; invalid when there is none.
  QModelIndex Row(const QString& name) { return findBelow(QModelIndex(), name); }
  void Choose(const QString& name);
  /// The name of the current row.
  QString Current() { return Tree().currentIndex().data().toString(); }
  /// Expands a row as the user would and waits for its children.
  void Expand(const QModelIndex& row);
  void ExpandAll();
  /// Drags one row onto the middle of another.
  void Drop(const QString& row, const QString& onto);
  /// A command as the tree's menu sends it.
  void Command(int type, const QString& code) {
    Q_EMIT Tree().SignalMenuClicked(static_cast<tarn_ui_data_controller::MsgType>(type), code);
  }

  QLineEdit* Field() const { return qobject_cast<QLineEdit*>(panel_->GetLocateViewWidget()); }
  QListView* List() const { return panel_->findChild<QListView*>("search_list_view"); }
  void Search(const QString& text);
  QStringList Hits() const;

  TarnPlanView::CTarnAddPlanWidget* Editor() const {
    return panel_->window()->findChild<TarnPlanView::CTarnAddPlanWidget*>();
  }
  QLineEdit* EditorName() const { return Editor()->findChild<QLineEdit*>("plan_name_edit"); }
  /// The name in the open plan editor; empty while none is open.
  QString Edited() const;
  /// Opens the editor with the plan and waits until it is there.
  void Edit(const QString& plan);
  /// The same without the wait.
  void BeginEdit(const QString& plan) {
    Choose(plan);
    panel_->EditPlanByIndex(Tree().currentIndex());
  }

  QStringList TakeTips() { return std::exchange(tips_, {}); }
  /// What has been said by the time that something has.
  QStringList AwaitTips();
  /// Texts of the questions asked so far; each was answered by `answer`.
  QStringList TakeQuestions() { return std::exchange(questions_, {}); }
  int answer = 1;
  std::function<void()> while_asking;

 private:
  QModelIndex findBelow(const QModelIndex& parent, const QString& name);

  QStringList tips_, questions_;  // outlive the panel, which may say why a save has no end when its controller goes
  std::unique_ptr<TarnPlanView::CViewExternWidget> panel_;
  std::unique_ptr<TarnPlanView::CStandardViewController> controller_;
};

}  // namespace TarnTest
