#include "plans/plan_player.h"

#include <TarnPlanView/auto_plan_helper.h>

#include <QTime>

#include "MarUIControl/string_conversion.h"
#include "plans/plan_family.h"
#include "plans/playing_mark.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using view_plugin_protocol::GetPlanDetailResponse;

CPlanPlayer::CPlanPlayer(CLiveWall* wall, QObject* parent)
    : QObject(parent), wall_(wall), mark_(new CPlayingMark(this)) {
  qRegisterMetaType<PlayOrigin>("TarnClient::PlayOrigin");
  automatic_end_.setSingleShot(true);
  connect(&automatic_end_, &QTimer::timeout, this, &CPlanPlayer::OnAutomaticStop);
  connect(wall_, &CLiveWall::SignalPlanChanged, this, &CPlanPlayer::OnWallChanged);
  auto& helper = CAutoPlanHelper::Instance();
  connect(&helper, &CAutoPlanHelper::signalStartPlanAutoRun, this, &CPlanPlayer::OnAutomaticStart);
  connect(&helper, &CAutoPlanHelper::signalStopPlanAutoRun, this, &CPlanPlayer::OnAutomaticStop);
}

CPlanPlayer::~CPlanPlayer() = default;

void CPlanPlayer::Attach(CPlanFamily* family) {
  CViewExternWidget* panel = family->Panel();
  connect(panel, &CViewExternWidget::SignalPlayPlanToMonitor, this, &CPlanPlayer::OnWanted);
  connect(panel, &CViewExternWidget::SignalStopPlan, this, &CPlanPlayer::Stop);
  if (CStandardViewController* controller = family->Controller()) {
    if (!controller_) {
      controller_ = controller;
    }
    connect(controller, &CStandardViewController::SignalPlayPlanView, this, &CPlanPlayer::OnDetail);
  }
  mark_->Watch(family);
}

// The panel asks its controller itself; what it asked for is heard here beforehand.
void CPlanPlayer::OnWanted(const QVariant& plan) {
  const std::string code = QStringToString(plan.toMap().value(QStringLiteral("plan_code")).toString());
  if (code != wanted_) {
    Want(code, PlayOrigin::User);
  }
}

void CPlanPlayer::Want(const std::string& code, PlayOrigin origin) {
  wanted_ = code;
  wanted_by_ = origin;
  Q_EMIT SignalWanted();
}

void CPlanPlayer::Play(const std::string& code) {
  if (controller_) {
    Want(code, PlayOrigin::User);
    controller_->PlayPlanViewByIndexCode(code);
  }
}

void CPlanPlayer::PlayFromHistory(CPlanFamily* family, const std::string& code) {
  Want(code, PlayOrigin::History);
  family->Panel()->PlayPlanFromHistory(code);
}

void CPlanPlayer::PlayOfCycle(const GetPlanDetailResponse& plan) {
  Show(plan, PlayOrigin::GroupCycle);
}

// Answers may come in any order; what the user asked for last wins.
void CPlanPlayer::OnDetail(const GetPlanDetailResponse& plan) {
  if (plan.index_code == wanted_) {
    Show(plan, wanted_by_);
  }
}

void CPlanPlayer::OnAutomaticStart(const GetPlanDetailResponse& plan) {
  if (wall_->IsPlaying() && !automatic_) {
    return;
  }
  Show(plan, PlayOrigin::Automatic);
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
  wanted_.clear();
  if (wall_->IsPlaying()) {
    wall_->Stop();
  } else {
    Q_EMIT SignalStopped();
  }
}

void CPlanPlayer::Show(const GetPlanDetailResponse& plan, PlayOrigin origin) {
  automatic_end_.stop();
  automatic_ = origin == PlayOrigin::Automatic;
  if (!automatic_) {
    wanted_.clear();  // a wish that is still on its way takes the place of an automatic plan
  }
  wall_->Play(plan);
  Record(plan.name, origin);
  Q_EMIT SignalPlayed(plan, origin);
}

// The turns of a cycle are not the user's own plays.
void CPlanPlayer::Record(const std::string& name, PlayOrigin origin) {
  if (controller_) {
    const bool automatic = origin == PlayOrigin::Automatic || origin == PlayOrigin::GroupCycle;
    controller_->AddOperationPlayPlan(StringToQString(name), automatic, origin == PlayOrigin::History);
  }
}

void CPlanPlayer::OnWallChanged() {
  mark_->Set(wall_->PlanCode());
  if (wall_->IsPlaying()) {
    return;
  }
  if (automatic_) {
    automatic_ = false;
    automatic_end_.stop();
    CAutoPlanHelper::Instance().SetPlanDisplayState(false);
  }
  Q_EMIT SignalStopped();
}

}  // namespace TarnClient
