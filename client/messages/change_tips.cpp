#include "messages/change_tips.h"

#include <TarnPlanView/plan_item_role.h>
#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QAbstractItemModel>
#include <QTimer>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "messages/change_texts.h"
#include "plan_rules/window_content.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;

namespace {

using MarUIControl::CNomalMessage;

// The tree reports a drop that it has refused as a success.
int StateOf(const QString& text, int reported) {
  if (text == TarnPlanView::CPlanViewTree::tr("TheUserHasNoPermission")) {
    return CNomalMessage::Failure;
  }
  return reported;
}

using Pages = std::list<view_plugin_protocol::PlanPage>;

PlanChange AddedOf(const Pages& pages) {
  if (view_plugin_protocol::FilledWindowsOf(pages) == 0) {
    return PlanChange::EmptyPlanAdded;
  }
  return PlanChange::PlanAdded;
}

PlanChange SavedOf(const Pages& pages) {
  if (view_plugin_protocol::FilledWindowsOf(pages) == 0) {
    return PlanChange::EmptyPlanSaved;
  }
  return PlanChange::PlanSaved;
}

}  // namespace

CChangeTips::CChangeTips(CViewExternWidget* panel, QAbstractItemModel* rows, CStandardViewController* controller,
                         QObject* parent)
    : QObject(parent), panel_(panel) {
  connect(panel, &CViewExternWidget::SignalMessageTipNeeded, this, &CChangeTips::OnMessage);
  connect(panel, &CViewExternWidget::SignalSaidInMoreWords, this, &CChangeTips::OnMoreWords);
  if (!rows || !controller) {
    return;
  }
  connect(rows, &QAbstractItemModel::rowsAboutToBeRemoved, this,
          [this, rows](const QModelIndex& group, int first) { KeepName(rows->index(first, 0, group)); });
  // Each comes right before its message.
  connect(controller, &CStandardViewController::SignalAddPlanGroupSucc, this, [this](const auto&, const auto& group) {
    Note(PlanChange::GroupAdded, StringToQString(group.name), group.parent_index_code);
  });
  connect(controller, &CStandardViewController::SignalAddPlanSucc, this, [this](const auto& plan) {
    Note(AddedOf(plan.pages), StringToQString(plan.plan_name), plan.parent_index_code);
  });
  connect(controller, &CStandardViewController::SignalUpdatePlanGroupNameSucc, this,
          [this](const auto&, const QString& name) { Note(PlanChange::GroupRenamed, name); });
  connect(controller, &CStandardViewController::SignalUpdatePlanSucc, this, [this](const auto& plan) {
    NoteSaved(StringToQString(plan.plan_index_code), StringToQString(plan.plan_name), SavedOf(plan.pages));
  });
  const auto forget = [this] { Note(PlanChange::None, QString()); };
  connect(controller, &CStandardViewController::SignalDeletePlanGroupSucc, this, forget);
  connect(controller, &CStandardViewController::SignalDeletePlanSucc, this, forget);
}

void CChangeTips::Note(PlanChange change, const QString& name, const std::string& group_code) {
  changed_ = TextOf(change, name, PlaceOf(StringToQString(group_code)));
}

// As the tab and the tree around it say; empty for a group that they do not show.
QString CChangeTips::PlaceOf(const QString& group_code) const {
  if (!panel_ || group_code.isEmpty()) {
    return QString();
  }
  QStringList names;
  QModelIndex group = panel_->GetPlanViewTree()->RowOf(group_code, true);
  if (!group.isValid()) {
    return QString();
  }
  for (; group.parent().isValid(); group = group.parent()) {
    names.prepend(group.data().toString());
  }
  names.prepend(panel_->GetTabName());
  return names.join(QStringLiteral(" / "));
}

// A saved plan's row is taken out and put in again, before the change is heard of here.
void CChangeTips::KeepName(const QModelIndex& row) {
  taken_out_ = {row.data(TarnPlanView::PlanIndexCodeRole).toString(), row.data().toString()};
}

void CChangeTips::NoteSaved(const QString& code, const QString& name, PlanChange saved) {
  if (taken_out_.code == code && taken_out_.name != name) {
    Note(PlanChange::PlanRenamed, name);
  } else {
    Note(saved, name);
  }
}

void CChangeTips::OnMessage(const QString& text, int reported) {
  const int state = StateOf(text, reported);
  if (state != CNomalMessage::Success) {
    Q_EMIT SignalTip(text, state);
    return;
  }
  const auto said = std::make_shared<QString>(std::exchange(changed_, QString()));
  if (said->isEmpty()) {
    *said = text;
  }
  latest_ = said;
  // The strip comes with the end of the call that the message belongs to.
  QTimer::singleShot(0, this, [this, said, state, before = CurrentOffer()] {
    const Offer now = CurrentOffer();
    if (now.text.isEmpty() || now.number == before.number) {
      Q_EMIT SignalTip(*said, state);
    } else {
      Q_EMIT SignalSaidByStrip(now.text);
    }
  });
}

void CChangeTips::OnMoreWords(const QString& text) {
  if (const auto latest = latest_.lock()) {
    *latest = text;
  }
}

CChangeTips::Offer CChangeTips::CurrentOffer() const {
  if (!panel_) {
    return {};
  }
  for (const auto* strip : panel_->findChildren<MarUIControl::COfferStrip*>()) {
    if (strip->IsOffering()) {
      return {strip->OfferCount(), strip->Text()};
    }
  }
  return {};
}

}  // namespace TarnClient
