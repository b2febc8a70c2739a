#include "plan_saving.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "call_answer.h"
#include "host_calls/ask.h"
#include "plan_document.h"
#include "standard_view_controller.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::GetPlanDetailRequest;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::UpdatePlanRequest;

namespace {

constexpr int kPatienceMs = 10000;

}  // namespace

CPlanSaving::CPlanSaving(CPlanDocument* document, QObject* parent) : QObject(parent), document_(document) {
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMs);
  connect(&patience_, &QTimer::timeout, this, &CPlanSaving::SignalSlow);
}

void CPlanSaving::SetController(CStandardViewController* controller) {
  if (controller_ == controller) {
    return;
  }
  if (controller_) {
    disconnect(controller_, nullptr, this, nullptr);
  }
  controller_ = controller;
  if (controller_) {
    connect(controller_, &QObject::destroyed, this, &CPlanSaving::OnControllerLost);
  }
  OnControllerLost();
}

void CPlanSaving::OnControllerLost() {
  if (step_ == Step::Asking) {
    return Fail(attempt_.refusal);
  }
  if (step_ != Step::Sending) {
    return;
  }
  patience_.stop();
  step_ = Step::Abandoned;
  Q_EMIT SignalFailed(tr("It is not known whether the plan was saved. Try again."));
}

bool CPlanSaving::Save(const std::string& thumbnail) {
  return Send(document_->MakeUpdateRequest(), document_->Draft(), thumbnail);
}

bool CPlanSaving::SaveAsNew(const QString& name, bool auto_run, const std::string& thumbnail) {
  PlanDraft sent = document_->Draft();
  sent.name = name;
  sent.auto_run = auto_run;
  UpdatePlanRequest request = document_->MakeUpdateRequest();
  request.plan_name = QStringToString(name);
  request.auto_play = auto_run;
  request.plan_index_code.clear();
  request.revision = 0;
  return Send(request, sent, thumbnail);
}

bool CPlanSaving::Send(UpdatePlanRequest request, const PlanDraft& sent, const std::string& thumbnail) {
  if (!controller_ || IsSaving()) {
    return false;
  }
  if (!thumbnail.empty()) {
    request.thumbnail = thumbnail;
  }
  calls_.Drop();
  attempt_ = {document_->Draft(), sent, request.plan_index_code, request.revision, QString()};
  step_ = Step::Sending;
  patience_.start();
  const auto on_answer = [this, asked = calls_.Current()](const CallAnswer& answer) {
    if (!asked.IsDropped()) {
      OnAnswer(answer);
    }
  };
  if (request.plan_index_code.empty()) {
    controller_->AddPlanParam(request, on_answer);
  } else {
    controller_->UpdatePlanParam(request, StringToQString(request.plan_name), on_answer, FailureText::ByCaller);
  }
  return true;
}

void CPlanSaving::Forget() {
  calls_.Drop();
  step_ = Step::Idle;
  patience_.stop();
}

void CPlanSaving::OnAnswer(const CallAnswer& answer) {
  if (answer.ok) {
    return OnStored(QStringToString(answer.text));
  }
  if (step_ == Step::Abandoned) {
    return Forget();  // its failure was shown when the controller went
  }
  if (attempt_.plan_code.empty()) {
    return Fail(QString());  // the controller shows why a plan was not added
  }
  attempt_.refusal = answer.text;
  if (MayBeConflict(answer.kind)) {
    AskForTheirs();
  } else {
    Fail(answer.text);
  }
}

// May come late, after an editing that has gone on.
void CPlanSaving::OnStored(const std::string& plan_code) {
  calls_.Drop();
  patience_.stop();
  const PlanDraft& sent = attempt_.sent;
  if (document_->Draft().name == attempt_.edited.name) {
    document_->SetName(sent.name);
  }
  if (document_->Draft().auto_run == attempt_.edited.auto_run) {
    document_->SetAutoRun(sent.auto_run);
  }
  document_->MarkSaved(sent, attempt_.revision + 1, plan_code);
  step_ = Step::Idle;  // not before: until here how the plan stands to the host's is not settled
  Q_EMIT SignalStored(StringToQString(document_->PlanCode()), StringToQString(document_->GroupCode()));
}

void CPlanSaving::AskForTheirs() {
  step_ = Step::Asking;
  GetPlanDetailRequest request;
  request.plan_index_code = attempt_.plan_code;
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Within(calls_)
      .Then(this, [this](const auto& now) { OnTheirs(now); });
}

void CPlanSaving::OnTheirs(const HostCalls::Result<GetPlanDetailResponse>& now) {
  const SaveConflict conflict = ConflictOf(now, attempt_.revision);
  if (conflict == SaveConflict::None) {
    return Fail(attempt_.refusal);
  }
  Forget();
  Q_EMIT SignalConflict(conflict, now.response);
}

void CPlanSaving::Fail(const QString& text) {
  Forget();
  Q_EMIT SignalFailed(text);
}

}  // namespace TarnPlanView
