#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "creation_info_dlg.h"
#include "host_calls/call_scope.h"
#include "save_plan_as_dlg.h"
#include "share_view_wgt.h"

class QPoint;
class QWidget;

namespace TarnPlanView {

class CMoveToDlg;
class CStandardPlanModel;
class CStandardViewController;

/// The panel's pop-ups about a plan: sharing it, who made it, and saving the wall as a new one. Each is made when it is
/// first asked for and kept until the user changes, for what they hold is his. Thread: GUI.
class CPlanPopups : public QObject {
  Q_OBJECT
 public:
  explicit CPlanPopups(QWidget* panel);

  /// For none the users that it could be shared with are not asked for.
  void ShowShare(const std::optional<QString>& plan_code);
  /// Asks the host; SignalCreationInfo() brings the answer.
  void RequestCreationInfo(const QString& plan_code);
  /// Nothing without a window around the panel.
  void ShowCreationInfo(const QString& creator, const QString& creation_time);
  /// At a point of the screen. `monitor_id` names the trees whose groups are offered.
  void ShowSaveAs(const QPoint& position, const QString& monitor_id, CStandardViewController* controller);
  /// What the save-as dialog holds; nothing when there is none.
  bool FillSaveAs(view_plugin_protocol::AddPlanRequest& request) const;
  /// Asks which of these groups the plan goes to; SignalGroupChosen() brings the answer.
  void ShowMoveTo(const view_plugin_protocol::TarnPlanViewInfo& plan, CStandardPlanModel* groups,
                  CStandardViewController* controller);
  /// Answers under way are dropped.
  void Drop();
  void Close();

 Q_SIGNALS:
  void SignalCreationInfo(const QString& creator, const QString& creation_time);
  void SignalSavePlanAs();
  void SignalGroupChosen(const QString& plan_code, const QString& group_code);
  void SignalMessageTipNeeded(const QString& text, int state);

 private:
  QWidget* const panel_;
  QPointer<CCreationInfoDlg> creation_info_;
  QPointer<CShareViewWgt> share_;
  QPointer<CSavePlanAsDlg> save_as_;
  QPointer<CMoveToDlg> move_to_;
  HostCalls::CCallScope calls_;
};

}  // namespace TarnPlanView
