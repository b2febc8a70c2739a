#pragma once

#include <TarnPlanView/standard_plan_model.h>
#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/theme_node_type.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QObject>
#include <QPointer>

namespace TarnClient {

/// One family of plans: its model, the controller that asks for changes, and the panel that shows it. Made once the
/// plan data's manager stands, destroyed before it is taken down. Thread: GUI.
class CPlanFamily : public QObject {
  Q_OBJECT
 public:
  /// The rows are those of the models with this monitor id; `monitor` shows the plans that are played in the panel,
  /// which belongs to `panel_parent`.
  CPlanFamily(TarnPlanView::ThemeNodeType theme, const QString& monitor_id, QWidget* monitor, QWidget* panel_parent);
  /// Ends the panel's work and the controller; the panel itself goes with its parent.
  ~CPlanFamily() override;

  TarnPlanView::ThemeNodeType Theme() const { return theme_; }
  QString Title() const { return panel_->GetTabName(); }
  TarnPlanView::CViewExternWidget* Panel() const { return panel_; }
  /// Null when the plug-in has no such model.
  TarnPlanView::CStandardPlanModel* Model() const { return model_; }
  TarnPlanView::CStandardViewController* Controller() const { return controller_; }
  /// Whether the user may change plans of this family now.
  bool MayEdit() const;
  /// Name of a group of this family; empty when it is not loaded.
  QString GroupName(const QString& code) const;
  /// Name of a plan of this family; empty when it is not loaded.
  QString PlanName(const QString& code) const;
  /// Names of the groups above a plan, outermost first; empty when the plan is not loaded or stands under the root.
  QStringList GroupsOf(const QString& plan_code) const;

  /// Marks this plan as playing and makes it current; an empty code takes the mark away.
  void MarkPlaying(const QString& code);
  /// Marks it and leaves the current row alone: for what starts by itself, and for rows that were made again.
  void RenewMark(const QString& code);
  /// The group whose plans play in turn; an empty code takes the mark away.
  void MarkCycling(const QString& code);

 Q_SIGNALS:
  /// The panel says this of a change by itself, without a tip.
  void SignalSaid(const QString& text);

 private:
  QModelIndex RowOf(const QString& code, bool is_group) const;
  void ReportChanges();
  void SayChanges();
  void ShowTip(const QString& text, int state);

  const TarnPlanView::ThemeNodeType theme_;
  QPointer<TarnPlanView::CStandardPlanModel> model_;
  QPointer<TarnPlanView::CStandardViewController> controller_;
  QPointer<TarnPlanView::CViewExternWidget> panel_;
};

}  // namespace TarnClient
