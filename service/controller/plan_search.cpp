#include "plan_search.h"

#include <QPointer>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"

namespace TarnPlanView {

using namespace view_plugin_protocol;

namespace {

constexpr int kScopes[] = {0, 1};  // public plans, own plans

struct Findings {
  std::list<SearchedPlan> plans;
  bool failed = false;
  std::string error_info;
};

Findings SearchAllScopes(const std::string& text) {
  Findings findings;
  for (const int scope : kScopes) {
    SearchPlanRequest request;
    request.text = text;
    request.scope = scope;
    SearchPlanResponse response;
    if (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().SearchPlan(request, response)) {
      findings.plans.splice(findings.plans.end(), response.plans);
    } else if (!findings.failed) {
      findings.failed = true;
      findings.error_info = response.error_info;
    }
  }
  return findings;
}

}  // namespace

CPlanSearch::CPlanSearch(QObject* parent) : QObject(parent) {}

void CPlanSearch::Start(const QString& text) {
  const auto search = [text = MarUIControl::QStringToString(text)] { return SearchAllScopes(text); };
  HostCalls::Ask(search).Replacing(newest_).Then(this, [this](const Findings& findings) {
    const QPointer<CPlanSearch> alive(this);
    const auto answered = newest_.Current();
    if (findings.failed) {
      Q_EMIT SignalFailed(MarUIControl::StringToQString(findings.error_info));
    }
    if (alive && !answered.IsDropped()) {
      Q_EMIT SignalFound(findings.plans);
    }
  });
}

void CPlanSearch::Cancel() {
  newest_.Drop();
}

}  // namespace TarnPlanView
