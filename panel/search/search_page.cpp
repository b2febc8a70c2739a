#include "search_page.h"

#include <QLineEdit>
#include <QStandardItemModel>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "empty_state.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_search.h"
#include "search_plan_list_view.h"
#include "view_config_manager.h"
#include "view_extern_widget.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::StringToQString;
using view_plugin_protocol::SearchedPlan;

namespace {

QString PathSeparator() {
  return QStringLiteral(" / ");
}

}  // namespace

CSearchPage::CSearchPage(QLineEdit* field, CSearchPlanListView* list, QObject* parent)
    : QObject(parent),
      field_(field),
      list_(list),
      rows_(new QStandardItemModel(this)),
      state_(new CEmptyState(list->viewport())),
      search_(new CPlanSearch(this)) {
  list->setModel(rows_);
  list->setAccessibleName(CViewExternWidget::tr("Plans found"));
  connect(search_, &CPlanSearch::SignalFound, this, &CSearchPage::OnFound);
  connect(search_, &CPlanSearch::SignalFailed, this, [this](const QString& error) {
    failed_ = true;
    Q_EMIT SignalFailed(error);
  });
  connect(state_, &CEmptyState::SignalAction, this, &CSearchPage::SignalRetry);
}

QString CSearchPage::Text() const {
  return field_->text().trimmed();
}

void CSearchPage::SetPlaying(const QString& plan_code) {
  playing_code_ = plan_code;
}

void CSearchPage::Start() {
  const QString text = Text();
  if (!text.isEmpty()) {
    searched_text_ = text;
    failed_ = false;
    search_->Start(text);
  }
}

void CSearchPage::Cancel() {
  search_->Cancel();
  searched_text_.clear();
}

void CSearchPage::OnFound(const std::list<SearchedPlan>& plans) {
  const QPointer<CSearchPage> alive(this);
  answered_text_ = std::exchange(searched_text_, {});
  Q_EMIT SignalFound(plans);
  if (alive) {
    answered_text_.clear();
  }
}

void CSearchPage::Show(const std::list<SearchedPlan>& plans) {
  QString text = answered_text_;
  if (text.isEmpty()) {
    text = Text();
  }
  QList<QStandardItem*> rows;
  for (const SearchedPlan& plan : plans) {
    rows.append(MakeRow(plan, text));
  }
  rows_->clear();
  rows_->invisibleRootItem()->appendRows(rows);
  if (rows.isEmpty()) {
    ShowNoHits();
    return;
  }
  state_->hide();
  list_->setCurrentIndex(rows_->index(0, 0));
  // Not from under the fingers of someone who types on, or who has turned to something else.
  if (field_->hasFocus() && Text() == text) {
    list_->setFocus();
  }
}

QStandardItem* CSearchPage::MakeRow(const SearchedPlan& plan, const QString& searched) const {
  auto* row = new QStandardItem;
  const QString code = StringToQString(plan.index_code);
  const QString path = PathOf(plan);
  row->setText(StringToQString(plan.name));
  row->setIcon(CViewPublicDef::GetPlanIcon(CViewConfigManager::Instance().IsDarkSkin(), code == playing_code_));
  row->setData(searched, SearchTextRole);
  row->setData(code, PlanIndexCodeRole);
  row->setData(plan.type, PlanTypeRole);
  row->setData(StringToQString(plan.group_index_code), kSearchGroupRole);
  row->setData(path, kSearchPathRole);
  row->setData(row->text() + PathSeparator() + path, Qt::AccessibleTextRole);
  return row;
}

void CSearchPage::ShowNoHits() {
  if (failed_) {
    state_->ShowState(CViewExternWidget::tr("The search got no answer."), CViewExternWidget::tr("Try again"));
  } else {
    state_->ShowState(CViewExternWidget::tr("NoDataWMSJEESY"));
  }
}

// The names of the groups above a hit as far as they are loaded, else of its own group.
QString CSearchPage::PathOf(const SearchedPlan& plan) const {
  QStringList names;
  const QString group_code = StringToQString(plan.group_index_code);
  const CStandardPlanModel* plans = plans_;
  QModelIndex group = plans ? plans->FindIndexByIndexCode(group_code, true) : QModelIndex();
  for (; group.isValid(); group = group.parent()) {
    names.prepend(group.data().toString());
  }
  if (names.isEmpty()) {
    const bool is_public = plan.type == PublicTheme;
    names.append(is_public ? CViewExternWidget::tr("Public plans") : CViewExternWidget::tr("My plans"));
    names.append(StringToQString(plan.group_name));
    names.removeAll(QString());
  }
  return names.join(PathSeparator());
}

void CSearchPage::RenewIcons() {
  const bool dark = CViewConfigManager::Instance().IsDarkSkin();
  for (int row = 0; row < rows_->rowCount(); ++row) {
    QStandardItem* item = rows_->item(row);
    const bool playing = item->data(PlanIndexCodeRole).toString() == playing_code_;
    item->setIcon(CViewPublicDef::GetPlanIcon(dark, playing));
  }
  state_->RenewPicture();
}

QModelIndex CSearchPage::Marked() const {
  return list_->currentIndex();
}

int CSearchPage::MarkedType() const {
  if (!Marked().isValid()) {
    return 0;
  }
  switch (Marked().data(PlanTypeRole).toInt()) {
    case PublicTheme:
      return PublicPlanItem;
    case OwnTheme:
      return OwnPlanItem;
    default:
      return ReceivedPlanItem;
  }
}

bool CSearchPage::Mark(const QString& plan_code) {
  const QModelIndex hit = list_->Hit(plan_code);
  if (hit.isValid()) {
    list_->setCurrentIndex(hit);
  }
  return hit.isValid();
}

}  // namespace TarnPlanView
