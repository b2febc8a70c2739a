#include "plan_saving.h"

#include "MarUIControl/string_conversion.h"
#include "plan_document.h"
#include "standard_view_controller.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::UpdatePlanRequest;

namespace {

constexpr int kPatienceMs = 10000;

}  // namespace

CPlanSaving::CPlanSaving(CPlanDocument* document, QObject* parent) : QObject(parent), document_(document) {
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMs);
  connect(&patience_, &QTimer::timeout, this, &CPlanSaving::SignalSlow);
  connect(&conflict_, &CPlanConflict::SignalFound, this, &CPlanSaving::OnFound);
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
  if (saving_) {
    StopWaiting();
    Q_EMIT SignalFailed(tr("Nobody can say whether the plan was saved. Try again."));
  }
}

bool CPlanSaving::Save(const std::string& thumbnail) {
  if (!controller_ || saving_) {
    return false;
  }
  edited_ = sent_ = document_->Draft();
  Send(document_->MakeUpdateRequest(), thumbnail);
  return true;
}

bool CPlanSaving::SaveAsNew(const QString& name, bool auto_run, const std::string& thumbnail) {
  if (!controller_ || saving_) {
    return false;
  }
  edited_ = sent_ = document_->Draft();
  sent_.name = name;
  sent_.auto_run = auto_run;
  UpdatePlanRequest request = document_->MakeUpdateRequest();
  request.plan_name = QStringToString(name);
  request.auto_play = auto_run;
  request.plan_index_code.clear();
  request.revision = 0;
  Send(request, thumbnail);
  return true;
}

void CPlanSaving::Send(UpdatePlanRequest request, const std::string& thumbnail) {
  if (!thumbnail.empty()) {
    request.thumbnail = thumbnail;
  }
  code_ = request.plan_index_code;
  revision_ = request.revision;
  saving_ = true;
  patience_.start();
  const QPointer<CPlanSaving> self(this);
  const auto answer = [self, save_no = ++save_no_](bool ok, const QString& text) {
    if (self && self->save_no_ == save_no) {
      self->OnAnswer(ok, text);
    }
  };
  if (code_.empty()) {
    controller_->AddPlanParam(request, answer);
  } else {
    controller_->UpdatePlanParam(request, StringToQString(request.plan_name), answer);
  }
}

void CPlanSaving::Forget() {
  ++save_no_;
  StopWaiting();
}

void CPlanSaving::StopWaiting() {
  saving_ = false;
  patience_.stop();
  conflict_.Forget();
}

void CPlanSaving::OnAnswer(bool ok, const QString& text) {
  if (ok) {
    OnSaved(QStringToString(text));
  } else if (!saving_) {
    return;  // that it failed has been told
  } else if (code_.empty()) {
    Forget();
    Q_EMIT SignalFailed(QString());
  } else {
    conflict_.FindOut({code_, document_->GroupCode(), revision_, text});
  }
}

// May come late, after an editing that has gone on.
void CPlanSaving::OnSaved(const std::string& plan_code) {
  Forget();
  const bool edited_since = document_->Draft() != edited_;
  if (edited_ != sent_) {
    document_->SetName(sent_.name);
    document_->SetAutoRun(sent_.auto_run);
  }
  document_->MarkSaved(sent_, revision_ + 1, plan_code);
  const QPointer<CPlanSaving> alive(this);
  Q_EMIT SignalStored(StringToQString(document_->PlanCode()), StringToQString(document_->GroupCode()));
  if (!alive) {
    return;
  }
  if (edited_since) {
    Q_EMIT SignalFailed(tr("The plan was saved without the last changes."));
  } else {
    Q_EMIT SignalSaved();
  }
}

void CPlanSaving::OnFound(CPlanConflict::Kind kind, const QString& text, const GetPlanDetailResponse& theirs) {
  if (!saving_) {
    return;
  }
  StopWaiting();
  switch (kind) {
    case CPlanConflict::ChangedElsewhere:
      Q_EMIT SignalChangedElsewhere(text, theirs);
      break;
    case CPlanConflict::Deleted:
      Q_EMIT SignalDeleted(text);
      break;
    default:
      Q_EMIT SignalFailed(QString());
      break;
  }
}

}  // namespace TarnPlanView
