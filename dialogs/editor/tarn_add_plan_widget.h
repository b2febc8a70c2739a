#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceTreeKit/logic_node_param.h"

namespace TarnPlanView {

class CStandardPlanModel;
class CStandardViewController;

/// The plan editor: makes a new plan or edits one, and hands it to the controller.
///
/// Keys: Ctrl+S saves, Ctrl+Z and Ctrl+Shift+Z undo and redo, Ctrl+1 to Ctrl+4 split the page, Esc closes; those of the
/// page strip, the windows and the camera tree as there. Input stays on every failure. Model and controller are not
/// owned and may die first. Thread: GUI.
class CTarnAddPlanWidget : public QWidget {
  Q_OBJECT
 public:
  explicit CTarnAddPlanWidget(QWidget* parent);
  ~CTarnAddPlanWidget() override;

  void SetController(CStandardViewController* controller);
  /// Its groups are offered as targets.
  void SetModel(CStandardPlanModel* model);
  /// Which cameras are offered.
  void SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param);

  /// These two throw away what is there: ask MayClose() before. A new plan, with one empty page; name and family are
  /// those of a group whose row is not loaded:
  void OpenNew(const QString& group_code, const QString& group_name = {}, int family = 0);
  /// A plan of the host's; it is shown when the controller's answer comes through OnPlanInfo().
  void OpenPlan(const QString& plan_code);
  /// Of the plan that is shown or awaited; empty for a new one.
  QString PlanCode() const;
  bool IsDirty() const;
  bool IsSaving() const;
  /// Whether the editor may go. Asks when there are changes that are not saved. To save them takes a while: then false
  /// comes at once, and SignalClosed() when they are safe. What is to be thrown away is gone when true comes.
  bool MayClose();

 Q_SIGNALS:
  // A save ends with SignalStored() and then SignalClosed(), or with SignalNotStored(). A plan that was edited since it
  // was sent is stored as sent: SignalStored() and then SignalNotStored().
  /// The host has the plan under this code, in this group.
  void SignalStored(const QString& plan_code, const QString& group_code);
  /// A save has failed or was abandoned, and what the editor shows is not with the host.
  void SignalNotStored();
  /// The editor has nothing more to do: the plan is stored, or the user has left it.
  void SignalClosed();
  void SignalMessageTipNeeded(const QString& text, int state);

 public Q_SLOTS:
  /// The controller's answer; one to a request that was not made here is ignored.
  void OnPlanInfo(const view_plugin_protocol::GetPlanDetailResponse& plan);
  /// A plan of the host's without changes is only closed.
  void Save();
  void Cancel();

 protected:
  void showEvent(QShowEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
