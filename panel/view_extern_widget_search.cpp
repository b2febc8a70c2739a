#include <QStandardItem>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "item_type.h"
#include "plan_commands.h"
#include "plan_item_role.h"
#include "plan_menu.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::StringToQString;

namespace {

QString PathSeparator() {
  return QStringLiteral(" / ");
}

}  // namespace

QString CViewExternWidget::Private::SearchText() const {
  return ui.view_location_line_edit->text().trimmed();
}

void CViewExternWidget::OnSearchBtnClicked() {
  const bool show = !d_->ui.view_location_line_edit->isVisibleTo(this);
  d_->ui.view_location_line_edit->setVisible(show);
  d_->ui.search_line_widget->setVisible(show);
  if (show) {
    d_->ui.view_location_line_edit->setFocus();
  } else {
    d_->leaveSearch();
  }
}

void CViewExternWidget::OnFuzzySearchPlan() {
  const QString text = d_->SearchText();
  if (!text.isEmpty() && !d_->stopped) {
    d_->searched_text = text;
    d_->search_failed = false;
    d_->search->Start(text);
  }
}

void CViewExternWidget::onGetSearchedResult(const std::list<view_plugin_protocol::SearchedPlan>& plans) {
  d_->ShowPage(PanelPage::Search);
  d_->search_model->clear();
  d_->restoreEnableState();
  // A result that this panel did not ask for is taken as one for what stands in the field.
  const QString text = d_->answered_text.isEmpty() ? d_->SearchText() : d_->answered_text;
  const bool dark = CViewConfigManager::Instance().IsDarkSkin();
  QList<QStandardItem*> rows;
  for (const view_plugin_protocol::SearchedPlan& plan : plans) {
    auto* row = new QStandardItem;
    row->setData(text, SearchTextRole);
    row->setText(StringToQString(plan.name));
    const QString code = StringToQString(plan.index_code);
    row->setData(code, PlanIndexCodeRole);
    row->setIcon(CViewPublicDef::GetPlanIcon(dark, code == d_->playing_code));
    row->setData(plan.type, PlanTypeRole);
    row->setData(StringToQString(plan.group_index_code), kSearchGroupRole);
    row->setData(d_->PathOf(plan), kSearchPathRole);
    row->setData(row->text() + PathSeparator() + row->data(kSearchPathRole).toString(), Qt::AccessibleTextRole);
    rows.append(row);
  }
  d_->search_model->invisibleRootItem()->appendRows(rows);
  if (rows.isEmpty()) {
    const bool failed = d_->search_failed;
    d_->search_state->ShowState(failed ? tr("The search got no answer.") : tr("NoDataWMSJEESY"),
                                failed ? tr("Try again") : QString());
    return;
  }
  d_->search_state->hide();
  d_->ui.search_list_view->setCurrentIndex(d_->search_model->index(0, 0));
  // Not from under the fingers of someone who types on, or who has turned to something else.
  if (d_->ui.view_location_line_edit->hasFocus() && d_->SearchText() == text) {
    d_->ui.search_list_view->setFocus();
  }
}

// The names of the groups above a hit as far as they are loaded, else of its own group.
QString CViewExternWidget::Private::PathOf(const view_plugin_protocol::SearchedPlan& plan) const {
  QStringList names;
  const QString group_code = StringToQString(plan.group_index_code);
  const CStandardPlanModel* rows = model;
  QModelIndex group = rows ? rows->FindIndexByIndexCode(group_code, true) : QModelIndex();
  for (; group.isValid(); group = group.parent()) {
    names.prepend(group.data().toString());
  }
  if (!names.isEmpty()) {
    return names.join(PathSeparator());
  }
  names.append(plan.type == PublicTheme ? CViewExternWidget::tr("Public plans") : CViewExternWidget::tr("My plans"));
  if (!plan.group_name.empty()) {
    names.append(StringToQString(plan.group_name));
  }
  return names.join(PathSeparator());
}

void CViewExternWidget::Private::renewSearchIcons() {
  const bool dark = CViewConfigManager::Instance().IsDarkSkin();
  for (int row = 0; row < search_model->rowCount(); ++row) {
    QStandardItem* item = search_model->item(row);
    const bool playing = item->data(PlanIndexCodeRole).toString() == playing_code;
    item->setIcon(CViewPublicDef::GetPlanIcon(dark, playing));
  }
}

QModelIndex CViewExternWidget::Private::MarkedHit() const {
  return CurrentPage() == PanelPage::Search ? ui.search_list_view->currentIndex() : QModelIndex();
}

// The item type that the marked hit's row has in a tree; 0 when nothing is marked.
int CViewExternWidget::Private::MarkedHitType() const {
  const QModelIndex hit = MarkedHit();
  if (!hit.isValid()) {
    return 0;
  }
  switch (hit.data(PlanTypeRole).toInt()) {
    case PublicTheme:
      return PublicPlanItem;
    case OwnTheme:
      return OwnPlanItem;
    default:
      return ReceivedPlanItem;
  }
}

void CViewExternWidget::Private::editHit() {
  const CommandState edit = States()[PlanCommand::Edit];
  if (edit.enabled) {
    editPlan(MarkedHit().data(PlanIndexCodeRole).toString());
  } else if (edit.reason != Refusal::None) {
    Q_EMIT q->SignalMessageTipNeeded(TextOf(edit.reason), 1);
  }
}

void CViewExternWidget::Private::offerForHit(tarn_ui_data_controller::CPopupMenu* menu) {
  renewRights();
  const CommandStates states = States();
  ShowEntries(*menu, states, ui.plan_view_tree->HiddenMenuItems());
  EnableEntries(*menu, states);
}

void CViewExternWidget::Private::onHitCommand(tarn_ui_data_controller::MsgType type, const QString& code) {
  const std::optional<PlanCommand> command = CommandOf(type);
  if (!command || !IsReady() || ui.plan_view_tree->HiddenMenuItems().contains(type)) {
    return;
  }
  const QModelIndex hit = ui.search_list_view->Hit(code);
  if (!hit.isValid()) {  // another search has ended meanwhile
    Q_EMIT q->SignalMessageTipNeeded(CViewExternWidget::tr("This row is no longer there."), 1);
    return;
  }
  ui.search_list_view->setCurrentIndex(hit);
  renewRights();
  actions->Run(*command, code);
}

void CViewExternWidget::onDoubleClicked(const QString& index_code) {
  d_->play(index_code);
}

void CViewExternWidget::OnDownloadResouceFinished() {
  if (d_->stopped) {
    return;
  }
  d_->known.between_users = false;
  d_->ui.wait_widget->SetWaiting(false);
  d_->leaveSearch();
  d_->ShowPage(PanelPage::Tree);
  // The rows come after this signal; only then it is known whether there are any.
  QMetaObject::invokeMethod(
      this, [this] { d_->onLoadChecked(); }, Qt::QueuedConnection);
}

}  // namespace TarnPlanView
