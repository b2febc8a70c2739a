#include "plan_saving.h"

#include "MarUIControl/string_conversion.h"
#include "plan_document.h"
#include "standard_view_controller.h"

namespace TarnPlanView {

using view_plugin_protocol::AddPlanRequest;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::UpdatePlanRequest;

CPlanSaving::CPlanSaving(CPlanDocument* document, QObject* parent) : QObject(parent), document_(document) {
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
  if (!controller_) {
    return;
  }
  connect(controller_, &CStandardViewController::SignalAddPlanSucc, this, &CPlanSaving::OnAdded);
  connect(controller_, &CStandardViewController::SignalUpdatePlanSucc, this, &CPlanSaving::OnUpdated);
  connect(controller_, &CStandardViewController::signalShowMessage, this, &CPlanSaving::OnMessage);
  connect(controller_, &QObject::destroyed, this, [this] {
    if (saving_) {
      Forget();
      Q_EMIT SignalFailed(tr("Nobody can say whether the plan was saved. Try again."));
    }
  });
}

bool CPlanSaving::Save(const std::string& thumbnail) {
  if (!controller_ || saving_) {
    return false;
  }
  sent_ = document_->MakeUpdateRequest();
  if (!thumbnail.empty()) {
    sent_.thumbnail = thumbnail;
  }
  sent_at_ = document_->UndoStack().index();
  saving_ = answer_due_ = true;
  if (sent_.plan_index_code.empty()) {
    controller_->AddPlanParam(sent_);
  } else {
    controller_->UpdatePlanParam(sent_, MarUIControl::StringToQString(sent_.plan_name));
  }
  return true;
}

void CPlanSaving::Forget() {
  answer_due_ = false;
  StopWaiting();
}

void CPlanSaving::StopWaiting() {
  saving_ = false;
  conflict_.Forget();
}

bool CPlanSaving::IsMine(const AddPlanRequest& request) const {
  return answer_due_ && request.plan_name == sent_.plan_name && request.parent_index_code == sent_.parent_index_code &&
         request.pages.size() == sent_.pages.size();
}

void CPlanSaving::OnAdded(const AddPlanRequest& request, const QString& plan_code) {
  if (sent_.plan_index_code.empty() && IsMine(request)) {
    Finish(1, MarUIControl::QStringToString(plan_code));
  }
}

void CPlanSaving::OnUpdated(const UpdatePlanRequest& request) {
  if (!sent_.plan_index_code.empty() && request.plan_index_code == sent_.plan_index_code &&
      request.revision == sent_.revision && IsMine(request)) {
    Finish(sent_.revision + 1, sent_.plan_index_code);
  }
}

void CPlanSaving::Finish(int64_t revision, const std::string& plan_code) {
  Forget();
  if (document_->UndoStack().index() != sent_at_) {  // a late answer, to a plan that has been edited since
    document_->AdoptRevision(revision);
    return;
  }
  document_->MarkSaved(revision, plan_code);
  Q_EMIT SignalSaved();
}

void CPlanSaving::OnMessage(const QString& text, int state) {
  if (!saving_ || state != MarUIControl::CNomalMessage::Failure) {
    return;
  }
  if (sent_.plan_index_code.empty()) {
    Forget();
    Q_EMIT SignalFailed(QString());
  } else {
    conflict_.FindOut({sent_.plan_index_code, sent_.parent_index_code, sent_.revision, text});
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
