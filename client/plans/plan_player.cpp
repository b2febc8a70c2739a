#include "plans/plan_player.h"

#include <TarnPlanView/auto_plan_helper.h>
#include <TarnPlanView/standard_plan_model.h>

#include <QTime>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "plans/plan_pane.h"
#include "plans/plan_tree.h"
#include "plans/playing_mark.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using tarn_ui_data_controller::CSignalTransferManager;
using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CStandardViewController;
using view_plugin_protocol::GetPlanDetailResponse;

CPlanPlayer::CPlanPlayer(CLiveWall* wall, QObject* parent)
    : QObject(parent), wall_(wall), mark_(new CPlayingMark(this)) {
  automatic_end_.setSingleShot(true);
  connect(&automatic_end_, &QTimer::timeout, this, &CPlanPlayer::OnAutomaticStop);
  connect(wall_, &CLiveWall::SignalPlanChanged, this, &CPlanPlayer::OnWallChanged);
  auto& helper = CAutoPlanHelper::Instance();
  connect(&helper, &CAutoPlanHelper::signalStartPlanAutoRun, this, &CPlanPlayer::OnAutomaticStart);
  connect(&helper, &CAutoPlanHelper::signalStopPlanAutoRun, this, &CPlanPlayer::OnAutomaticStop);
  connect(&CSignalTransferManager::Instance(), &CSignalTransferManager::SignalPlanStateChanged, this,
          &CPlanPlayer::OnWallChanged);
}

void CPlanPlayer::Attach(CPlanPane* pane) {
  CStandardViewController* controller = pane->Controller();
  if (!controller) {
    return;
  }
  if (!controller_) {
    controller_ = controller;
  }
  mark_->Watch(pane->Model());
  connect(controller, &CStandardViewController::SignalPlayPlanView, this, &CPlanPlayer::OnDetail);
  connect(pane->Tree(), &CPlanTree::SignalPlayRequested, this,
          [this, controller = QPointer<CStandardViewController>(controller)](const QString& code) {
            PlayThrough(controller, QStringToString(code));
          });
}

void CPlanPlayer::Play(const std::string& code) {
  PlayThrough(controller_, code);
}

void CPlanPlayer::PlayThrough(CStandardViewController* controller, const std::string& code) {
  if (controller) {
    wanted_ = code;
    controller->PlayPlanViewByIndexCode(code);
  }
}

// Answers may come in any order; what the user asked for last wins.
void CPlanPlayer::OnDetail(const GetPlanDetailResponse& plan) {
  if (plan.index_code == wanted_) {
    Show(plan, false);
  }
}

void CPlanPlayer::OnAutomaticStart(const GetPlanDetailResponse& plan) {
  if (wall_->IsPlaying() && !automatic_) {
    return;
  }
  Show(plan, true);
  // No stop is announced when the plan vanishes in mid-run, so its end is kept here.
  const QTime end = QTime::fromString(StringToQString(plan.end_time));
  const int left = QTime::currentTime().msecsTo(end);
  if (end.isValid() && left > 0) {
    automatic_end_.start(left);
  }
}

void CPlanPlayer::OnAutomaticStop() {
  if (wall_->IsPlaying() && automatic_) {
    Stop();
  }
}

void CPlanPlayer::Stop() {
  wall_->Stop();
}

void CPlanPlayer::Show(const GetPlanDetailResponse& plan, bool automatic) {
  wanted_.clear();
  automatic_end_.stop();
  automatic_ = automatic;
  wall_->Play(plan);
  if (controller_) {
    controller_->AddOperationPlayPlan(StringToQString(plan.name), automatic, false);
  }
}

void CPlanPlayer::OnWallChanged() {
  mark_->Set(wall_->PlanCode());
  if (!wall_->IsPlaying() && automatic_) {
    automatic_ = false;
    automatic_end_.stop();
    CAutoPlanHelper::Instance().SetPlanDisplayState(false);
  }
}

}  // namespace TarnClient
