#pragma once

#include <TarnPlanView/view_save_actions.h>

#include <QImage>
#include <QObject>
#include <QVector>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"
#include "host_calls/result.h"

namespace TarnPlanView {
class CViewSaveMenu;
}

namespace TarnClient {

class CLiveWall;
class CPlanFamily;

/// Saves what is on the wall: over the plan that plays, or as a new one. Thread: GUI; the service is asked on the
/// thread pool.
class CPlanSaver : public QObject {
  Q_OBJECT
 public:
  /// `current` gives the family whose panel asks for the name of a new plan.
  CPlanSaver(CLiveWall* wall, std::function<CPlanFamily&()> current, QObject* parent = nullptr);

  /// Not owned; a destroyed family drops out by itself.
  void Attach(CPlanFamily* family);
  /// A panel of another wall, whose editor may have the plan that plays here. Not owned; may die first.
  void Watch(const CPlanFamily* family);

  /// Writes the wall's pages into the playing plan as it stands in the service now; all else that the plan holds stays
  /// as it is. Refused with a message when the pages were changed elsewhere since they came on the wall.
  /// What is changed while a save is under way is saved after it, if the user asks for that too.
  void Save();
  /// Opens the save-as dialog. What is on the wall at this moment is what will be saved.
  void SaveAs();
  /// The tips of the two entries say their keys.
  void ShowMenu(const QString& save_tip, const QString& save_as_tip);
  /// Looks again at what can be saved.
  void Renew();
  /// To be called when the user was switched: drops what the last one wanted saved and is not sent yet, and looks again
  /// at what can be saved.
  void ForgetUser();
  /// Whether a plan editor is open over the wall; meanwhile the plan is saved there only, lest the user's own save be a
  /// conflict with himself.
  bool IsEditing() const;

 Q_SIGNALS:
  /// Why the plan on the wall cannot be saved, and why not as a new one; empty where it can.
  void SignalReasons(const QString& why_not_save, const QString& why_not_save_as);
  void SignalMessage(const QString& text, int state);
  /// The service has taken these pages of what was changed of the plan in this state. It may have left the wall.
  void SignalSaved(const view_plugin_protocol::GetPlanDetailResponse& plan,
                   const std::list<view_plugin_protocol::PlanPage>& pages);
  /// What is arranged on the wall otherwise than its plan is this new plan now.
  void SignalSavedAsNew(const QString& plan_code);

 private:
  /// As it is stored, with a thumbnail of what was on the wall when the user wanted it saved.
  using FreshPlan = HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>;

  CPlanFamily* FamilyOfPlan() const;
  void RefuseCommand(const QString& why_not);
  QString WhyNotSave() const;
  QString WhyNotSave(const FreshPlan& fresh, const std::string& code) const;
  QString WhyNotSaveAs() const;
  QImage Picture() const;
  void Send(const view_plugin_protocol::GetPlanDetailResponse& fresh);
  void OnSent(bool ok);
  void DropOnceMore();
  void OnSaveAsConfirmed(CPlanFamily* family);
  void OnAdded(const view_plugin_protocol::AddPlanRequest& plan, const QString& code);
  void OnMenu(TarnPlanView::ViewSaveActions action);

  CLiveWall* const wall_;
  const std::function<CPlanFamily&()> current_;
  QVector<CPlanFamily*> families_;
  TarnPlanView::CViewSaveMenu* menu_ = nullptr;
  view_plugin_protocol::AddPlanRequest pending_;  // while the dialog is open
  QImage pending_picture_;
  HostCalls::CCallScope new_plans_;                 // their thumbnails are being made
  enum class Saving { No, UnderWay, AndOnceMore };  // from the look at the plan until the service has answered
  Saving saving_ = Saving::No;
  HostCalls::CCallScope look_;
  struct Sent {
    view_plugin_protocol::GetPlanDetailResponse plan;  // as it was before
    std::list<view_plugin_protocol::PlanPage> pages;
  };
  std::optional<Sent> sent_;  // the service has not answered yet
};

}  // namespace TarnClient
