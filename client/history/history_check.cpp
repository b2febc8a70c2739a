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

QString PlaceText(const QString& title, const view_plugin_protocol::SearchedPlan& plan) {
  QStringList names{title};
  for (const std::string& group : plan.groups_above) {
    names << StringToQString(group);
  }
  return names.join(QStringLiteral(" / "));
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

void CHistoryCheck::Drop() {
  question_.Drop();
  places_.Drop();
}

void CHistoryCheck::FindPlace(const PlayedPlan& plan, int family, const QString& title) {
  view_plugin_protocol::SearchPlanRequest request;
  request.text = QStringToString(plan.name);
  request.scope = family;
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::SearchPlan, request)
      .Within(places_)
      .Then(this, [this, code = plan.code, title](const auto& found) {
        for (const auto& hit : found.response.plans) {
          if (StringToQString(hit.index_code) == code && !hit.groups_above.empty()) {
            history_->SetPlace(code, PlaceText(title, hit));
          }
        }
      });
}

}  // namespace TarnClient
