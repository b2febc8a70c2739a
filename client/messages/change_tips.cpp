#include "messages/change_tips.h"

#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QTimer>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "messages/change_texts.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;

CChangeTips::CChangeTips(CViewExternWidget* panel, CStandardViewController* controller, QObject* parent)
    : QObject(parent), panel_(panel) {
  connect(panel, &CViewExternWidget::SignalMessageTipNeeded, this, &CChangeTips::OnMessage);
  if (!controller) {
    return;
  }
  // Each comes right before its message.
  connect(controller, &CStandardViewController::SignalAddPlanGroupSucc, this,
          [this](const auto&, const auto& group) { Note(PlanChange::GroupAdded, StringToQString(group.name)); });
  connect(controller, &CStandardViewController::SignalAddPlanSucc, this,
          [this](const auto& plan) { Note(PlanChange::PlanAdded, StringToQString(plan.plan_name)); });
  connect(controller, &CStandardViewController::SignalUpdatePlanGroupNameSucc, this,
          [this](const auto&, const QString& name) { Note(PlanChange::GroupRenamed, name); });
  connect(controller, &CStandardViewController::SignalUpdatePlanSucc, this,
          [this](const auto& plan) { Note(PlanChange::PlanSaved, StringToQString(plan.plan_name)); });
  const auto forget = [this] { Note(PlanChange::None, QString()); };
  connect(controller, &CStandardViewController::SignalDeletePlanGroupSucc, this, forget);
  connect(controller, &CStandardViewController::SignalDeletePlanSucc, this, forget);
}

void CChangeTips::Note(PlanChange change, const QString& name) {
  changed_ = TextOf(change, name);
}

void CChangeTips::OnMessage(const QString& text, int state) {
  if (state != MarUIControl::CNomalMessage::Success) {
    Q_EMIT SignalTip(text, state);
    return;
  }
  QString said = std::exchange(changed_, QString());
  if (said.isEmpty()) {
    said = text;
  }
  // The strip comes with the end of the call that the message belongs to.
  QTimer::singleShot(0, this, [this, said, state, before = StripText()] {
    const QString now = StripText();
    if (now.isEmpty() || now == before) {
      Q_EMIT SignalTip(said, state);
    } else {
      Q_EMIT SignalSaidByStrip(now);
    }
  });
}

QString CChangeTips::StripText() const {
  if (!panel_) {
    return QString();
  }
  for (const auto* strip : panel_->findChildren<MarUIControl::COfferStrip*>()) {
    if (strip->IsOffering()) {
      return strip->Text();
    }
  }
  return QString();
}

}  // namespace TarnClient
