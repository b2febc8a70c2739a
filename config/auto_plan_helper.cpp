#include "auto_plan_helper.h"

#include <QDate>
#include <QReadWriteLock>
#include <QTime>
#include <QTimerEvent>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "plan_clock.h"
#include "view_config_manager.h"

namespace TarnPlanView {

namespace {
constexpr int kQueryIntervalMs = 300000;
constexpr int kCheckIntervalMs = 1000;
constexpr int kAutomaticPlan = 1;
// The host goes by the query kind; it still wants a code.
constexpr char kAnyPlanCode[] = "123";
constexpr char kNoAutoRunPlan[] = "NoAutoRunPlan";
}  // namespace

struct CAutoPlanHelper::Data {
  int query_timer = -1;
  int check_timer = -1;
  bool display_state = false;
  bool plan_changed = false;
  QDate last_start;
  std::string running_code;
  view_plugin_protocol::GetPlanDetailResponse plan;
  QReadWriteLock lock;
};

CAutoPlanHelper::CAutoPlanHelper() : data_(std::make_shared<Data>()) {
  connect(&tarn_ui_data_controller::CSignalTransferManager::Instance(),
          &tarn_ui_data_controller::CSignalTransferManager::SignalPlanStateChanged, this,
          &CAutoPlanHelper::OnQueryAutoRunPlanOnce);
}

CAutoPlanHelper::~CAutoPlanHelper() = default;

void CAutoPlanHelper::StartDetectAutoRunPlan() {
  StopDetect();
  data_->query_timer = startTimer(kQueryIntervalMs, Qt::CoarseTimer);
  data_->check_timer = startTimer(kCheckIntervalMs, Qt::CoarseTimer);
  queryAutoRunPlan();
}

void CAutoPlanHelper::StopDetect() {
  stopTimer(data_->query_timer);
  stopTimer(data_->check_timer);
}

void CAutoPlanHelper::stopTimer(int& id) {
  if (id >= 0) {
    killTimer(id);
    id = -1;
  }
}

void CAutoPlanHelper::CheckAutoRunPlan() {
  queryAutoRunPlan();
}

void CAutoPlanHelper::OnQueryAutoRunPlanOnce() {
  queryAutoRunPlan();
}

std::string CAutoPlanHelper::GetAutoRunPlanIndex() {
  return data_->running_code;
}

void CAutoPlanHelper::SetPlanDisplayState(bool state) {
  data_->display_state = state;
}

bool CAutoPlanHelper::GetPlanDisplayState() {
  return data_->display_state;
}

bool CAutoPlanHelper::event(QEvent* event) {
  return QObject::event(event);
}

void CAutoPlanHelper::timerEvent(QTimerEvent* event) {
  if (event->timerId() == data_->check_timer) {
    checkAutoRunPlan();
  } else if (event->timerId() == data_->query_timer) {
    queryAutoRunPlan();
  }
  QObject::timerEvent(event);
}

void CAutoPlanHelper::queryAutoRunPlan() {
  if (!CViewConfigManager::Instance().IsSupportTimedPlay()) {
    return;
  }
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = kAnyPlanCode;
  request.query_kind = kAutomaticPlan;
  view_plugin_protocol::GetPlanDetailResponse response;
  if (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    const auto& stored = data_->plan;
    if (response.index_code != stored.index_code || response.start_time != stored.start_time ||
        response.end_time != stored.end_time) {
      data_->plan_changed = true;
    }
    data_->plan = response;
  } else if (response.error_info == kNoAutoRunPlan) {
    // A plan that vanishes in mid-run leaves nothing to check, so no stop is announced: the player goes by the
    // end time that the start carried.
    data_->plan = {};
  }
}

void CAutoPlanHelper::checkAutoRunPlan() {
  // A slot of the last check may still be open in a modal loop; the next tick looks again.
  if (!data_->lock.tryLockForWrite()) {
    return;
  }
  const auto data = data_;
  if (!data->plan.index_code.empty()) {
    const QDateTime now = CPlanClock::Now();
    if (data->plan_changed) {
      data->last_start = QDate();
      data->plan_changed = false;
    }
    if (isDue(now.time())) {
      startPlan(now.date());
    } else if (data->display_state) {
      stopPlan();
    }
  }
  data->lock.unlock();
}

bool CAutoPlanHelper::isDue(const QTime& now) const {
  const QTime start = QTime::fromString(QString::fromStdString(data_->plan.start_time));
  const QTime end = QTime::fromString(QString::fromStdString(data_->plan.end_time));
  // An invalid time compares lower than every other, so both must be looked at.
  return start.isValid() && end.isValid() && now >= start && now < end;
}

void CAutoPlanHelper::startPlan(const QDate& today) {
  if (data_->last_start.isValid() && data_->last_start == today) {
    return;
  }
  const auto plan = data_->plan;
  const auto data = data_;  // a slot may end this object
  Q_EMIT signalStartPlanAutoRun(plan);
  data->display_state = true;
  data->last_start = today;
  data->running_code = plan.index_code;
}

void CAutoPlanHelper::stopPlan() {
  // Checks rest until the next query stores the plan again.
  const auto data = data_;  // a slot may end this object
  data->plan.index_code.clear();
  Q_EMIT signalStopPlanAutoRun();
  data->display_state = false;
  data->running_code.clear();
}

}  // namespace TarnPlanView
