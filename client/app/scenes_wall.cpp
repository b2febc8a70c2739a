#include <TarnPlanView/auto_plan_helper.h>
#include <TarnPlanView/plan_clock.h>
#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include "MarUIControl/string_conversion.h"
#include "TarnHost/host_services.h"
#include "app/scenes.h"
#include "history/play_history.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"
#include "window/main_window.h"

// What the wall, its bar and the history say.
namespace TarnClient {

using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CPlanClock;

namespace {

void SetClock(int hour, int minute) {
  const QDateTime now(QDate(2026, 3, 2), QTime(hour, minute));
  CPlanClock::SetSource([now] { return now; });
}

}  // namespace

void CScene::Stopped() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->Player().Stop();
    return true;
  });
}

// As the helper announces it: whether the demo site has such a plan does not matter.
void CScene::Automatic() {
  Stopped();
  Add([this] {
    SetClock(20, 58);
    window_->Player().Play(MarUIControl::QStringToString(window_->History().At(0).code));
    return true;
  });
  Add([this] { return window_->Wall().IsPlaying(); });
  Add([this] {
    view_plugin_protocol::GetPlanDetailResponse plan = window_->Wall().Plan();
    plan.name = "Night watch";
    plan.end_time = "21:05:00";
    window_->Player().Stop();
    Q_EMIT CAutoPlanHelper::Instance().signalStartPlanAutoRun(plan);
    return true;
  });
}

void CScene::AutomaticEnded() {
  Automatic();
  Add([] {
    SetClock(21, 5);
    Q_EMIT CAutoPlanHelper::Instance().signalStopPlanAutoRun();
    return true;
  });
}

void CScene::Failed() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  Add([this] {
    TarnHost::InstallHostServices(nullptr);
    Press(window_->CurrentFamily().Panel()->GetPlanViewTree(), Qt::Key_Return);
    return true;
  });
}

void CScene::LongTitle() {
  Browse();
  AddExpansion(QStringLiteral("Tours"));
  AddPlay(QStringLiteral("Night patrol"));
  Add([this] {
    view_plugin_protocol::GetPlanDetailResponse plan = window_->Wall().Plan();
    plan.name += " of all buildings, gates, car parks and the long fence along the river, in the order of the keys";
    plan.pages.front().name = "North gate and the first part of the fence";
    window_->Wall().Renew(plan);
    return true;
  });
}

// As on a small screen, or beside another program.
void CScene::Narrow() {
  Browse();
  AddExpansion(QStringLiteral("Tours"));
  AddPlay(QStringLiteral("Night patrol"));
  Add([this] {
    window_->resize(800, 660);
    return true;
  });
}

void CScene::ClosingQuestion() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->close();
    return true;
  });
}

void CScene::HistoryGone() {
  Browse();
  AddPlay(QStringLiteral("Gates overview"));
  AddPlay(QStringLiteral("Gate overview"));
  AddYes();
  AddCurrent(QStringLiteral("Gates overview"));
  AddClick(QStringLiteral("delete_btn"));
  Add([this] { return !Row(QStringLiteral("Gates overview")).isValid(); });
  HistoryEmpty();
}

// None of these plans is there, and the service is not to say so.
void CScene::LongHistory() {
  Browse();
  Add([this] {
    TarnHost::InstallHostServices(nullptr);
    for (int plan = CPlayHistory::kMostPlans; plan > 0; --plan) {
      const QString number = QString::number(plan);
      const QDateTime played(QDate(2026, 3, 2), QTime(9, 60 - 2 * plan));
      window_->History().Add({number, QStringLiteral("Round %1").arg(number), QStringLiteral("Public plans"), played});
    }
    return true;
  });
  HistoryEmpty();
}

}  // namespace TarnClient
