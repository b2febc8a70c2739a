#include "history/history_check.h"

#include <QHash>
#include <QStringList>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "history/play_history.h"
#include "host_calls/ask.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::GetPlanDetailRequest;

namespace {

using Reasons = QHash<QString, QString>;

bool IsLasting(int32_t error_kind) {
  return error_kind == view_plugin_protocol::Gone || error_kind == view_plugin_protocol::NotPermitted;
}

Reasons ReasonsOf(const QStringList& codes) {
  Reasons reasons;
  for (const QString& code : codes) {
    GetPlanDetailRequest request;
    request.plan_index_code = QStringToString(code);
    const auto answer = HostCalls::CallNow(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request);
    if (answer.ok) {
      reasons[code] = QString();
    } else if (IsLasting(answer.response.error_kind)) {
      reasons[code] = StringToQString(answer.response.error_info);
    } else if (answer.response.error_kind == view_plugin_protocol::Unavailable) {
      break;  // each further one would wait as long
    }
  }
  return reasons;
}

}  // namespace

CHistoryCheck::CHistoryCheck(CPlayHistory* history, QObject* parent) : QObject(parent), history_(history) {}

void CHistoryCheck::Look() {
  QStringList codes;
  for (const PlayedPlan& plan : history_->Plans()) {
    codes << plan.code;
  }
  HostCalls::Ask([codes] { return ReasonsOf(codes); }).Replacing(question_).Then(this, [this](const Reasons& reasons) {
    for (auto reason = reasons.begin(); reason != reasons.end(); ++reason) {
      history_->SetReason(reason.key(), reason.value());
    }
  });
}

}  // namespace TarnClient
