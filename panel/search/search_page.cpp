#include "search_page.h"

#include <QPointer>
#include <QStandardItemModel>
#include <algorithm>

#include "MarUIControl/string_conversion.h"
#include "WidgetKit/new_location_view_widget.h"
#include "current_skin.h"
#include "deletion_texts.h"
#include "empty_state.h"
#include "hit_line.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_rules/families.h"
#include "plan_rules/plan_sign.h"
#include "plan_search.h"
#include "qt/first_rows.h"
#include "search_plan_list_view.h"
#include "theme_node_type.h"
#include "view_config_manager.h"
#include "view_extern_widget.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::StringToQString;
using view_plugin_protocol::IsRootCode;
using view_plugin_protocol::SearchedPlan;

namespace {

constexpr int kSlowMs = 400;
constexpr char kPlaceForText[] = "%1";

QString RootName(int family) {
  if (family == PublicTheme) {
    return CViewExternWidget::tr("Public plans");
  }
  return family == OwnTheme ? CViewExternWidget::tr("My plans") : CViewExternWidget::tr("Plans received");
}

// From the root of the family down, as far as the host says.
QStringList GroupsAbove(const SearchedPlan& plan) {
  QStringList names{RootName(plan.type)};
  for (const std::string& group : plan.groups_above) {
    names.append(StringToQString(group));
  }
  const bool under_root = IsRootCode(StringToQString(plan.group_index_code).toInt());
  if (plan.groups_above.empty() && !under_root) {
    names.append(StringToQString(plan.group_name));
  }
  names.removeAll(QString());
  return names;
}

QString ShowsText() {
  return CViewExternWidget::tr("shows %1");
}

QString ShownCamera(const SearchedPlan& plan) {
  if (plan.shown_camera.empty()) {
    return QString();
  }
  return ShowsText().arg(StringToQString(plan.shown_camera));
}

// "12 plans, 3 by camera"; empty for none.
QString SummaryOf(const std::list<SearchedPlan>& plans) {
  if (plans.empty()) {
    return QString();
  }
  const auto is_by_camera = [](const SearchedPlan& plan) { return !plan.shown_camera.empty(); };
  const auto by_camera = std::count_if(plans.begin(), plans.end(), is_by_camera);
  const QString all = PlansText(static_cast<int>(plans.size()));
  if (by_camera == 0) {
    return all;
  }
  return FillPlaces(CViewExternWidget::tr("%1, %2 by camera"), {all, QString::number(by_camera)});
}

// What RowMarks goes by.
view_plugin_protocol::PlanBasicInfo RecordOf(const SearchedPlan& plan) {
  view_plugin_protocol::PlanBasicInfo record;
  record.index_code = plan.index_code;
  record.page_count = plan.page_count;
  record.auto_run = plan.auto_run;
  return record;
}

}  // namespace

CSearchPage::CSearchPage(WidgetKit::CNewLocationViewWidget* field, CSearchPlanListView* list, QObject* parent)
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
    course_.OnFailed();
    failure_ = error;
  });
  connect(state_, &CEmptyState::SignalAction, this, &CSearchPage::SignalRetry);
  slow_.setSingleShot(true);
  slow_.setInterval(kSlowMs);
  connect(&slow_, &QTimer::timeout, this, [this] { field_->SetSearching(true); });
}

QString CSearchPage::Text() const {
  return field_->text().trimmed();
}

void CSearchPage::SetPlaying(const QString& plan_code) {
  playing_code_ = plan_code;
}

void CSearchPage::Start() {
  Ask(field_->IsTypedSearch());
}

void CSearchPage::Repeat() {
  const QString text = Text();
  if (!text.isEmpty()) {
    course_.AskAgain(text);
    Send(text);
  }
}

void CSearchPage::Ask(bool typed) {
  const QString text = Text();
  if (!text.isEmpty() && course_.Ask(text, typed)) {
    Send(text);
  }
}

void CSearchPage::Send(const QString& text) {
  search_->Start(text);
  ShowWaiting(true);
}

void CSearchPage::Cancel() {
  Say(QString());
  field_->DropWait();
  field_->ForgetSearched();
  search_->Cancel();
  course_.Leave();
  ShowWaiting(false);
}

// The field says so once the answer takes long; a newer search goes on with the same patience.
void CSearchPage::ShowWaiting(bool waiting) {
  if (!waiting) {
    slow_.stop();
    field_->SetSearching(false);
  } else if (!slow_.isActive()) {
    slow_.start();
  }
}

void CSearchPage::OnFound(const std::list<SearchedPlan>& plans) {
  answered_ = course_.OnAnswer();
  if (!answered_) {
    return;
  }
  ShowWaiting(false);
  if (!IsAwaited(*answered_)) {
    field_->ForgetSearched();
    answered_.reset();
    return;
  }
  const QPointer<CSearchPage> alive(this);
  SayFailure(plans.empty());
  if (alive) {
    Q_EMIT SignalFound(plans);
  }
  if (alive) {
    answered_.reset();
  }
}

// What was asked for as the user typed is of no use once he types something else, or works on the page that the hits
// would take away.
bool CSearchPage::IsAwaited(const SearchCourse::Question& question) const {
  const QWidget* at_work = field_->window()->focusWidget();
  const bool is_in_list = at_work == list_ || list_->isAncestorOf(at_work);
  const bool is_on_other_page = !is_in_list && list_->parentWidget()->isAncestorOf(at_work);
  return !question.typed || (!is_on_other_page && Text() == question.text);
}

void CSearchPage::SayFailure(bool nothing_found) {
  const bool page_says_it = answered_->typed && nothing_found;
  if (course_.HasFailed() && !page_says_it) {
    Q_EMIT SignalFailed(failure_);
  }
}

void CSearchPage::Show(const std::list<SearchedPlan>& plans) {
  const SearchCourse::Question question = answered_.value_or(SearchCourse::Question{Text()});
  QList<QStandardItem*> rows;
  for (const SearchedPlan& plan : plans) {
    rows.append(MakeRow(plan, question.text));
  }
  const bool in_list = list_->hasFocus();
  const QString marked = Marked().data(PlanIndexCodeRole).toString();
  rows_->clear();
  TarnQt::AppendRows(rows_->invisibleRootItem(), rows);
  Say(SummaryOf(plans));
  if (rows.isEmpty()) {
    ShowNoHits(question.text);
    return;
  }
  state_->hide();
  if (in_list) {
    Mark(marked);  // no key is meant for another hit
  } else {
    list_->setCurrentIndex(rows_->index(0, 0));
  }
}

// The focus is in the field or in the list: either has it read out.
void CSearchPage::Say(const QString& summary) {
  list_->SetSummary(summary);
  field_->setAccessibleDescription(summary);
}

// Not from under the fingers of someone who types on, or who has turned to something else.
void CSearchPage::TakeKeyboard() {
  const SearchCourse::Question question = answered_.value_or(SearchCourse::Question{Text()});
  const bool has_hits = rows_->rowCount() > 0;
  if (has_hits && field_->hasFocus() && !question.typed && Text() == question.text) {
    list_->setFocus();
  }
}

QStandardItem* CSearchPage::MakeRow(const SearchedPlan& plan, const QString& searched) const {
  auto* row = new QStandardItem;
  const QString code = StringToQString(plan.index_code);
  const QStringList groups = GroupsAbove(plan);
  const HitLine line{PlaceText(groups), ShownCamera(plan)};
  row->setText(StringToQString(plan.name));
  row->setIcon(CViewPublicDef::GetPlanIcon(IsCurrentSkinDark(), code == playing_code_));
  row->setData(searched, SearchTextRole);
  row->setData(code, PlanIndexCodeRole);
  row->setData(plan.type, PlanTypeRole);
  row->setData(StringToQString(plan.group_index_code), kSearchGroupRole);
  row->setData(groups, kSearchPathRole);
  row->setData(line.shown, kSearchShownRole);
  row->setData(ShowsText().indexOf(QLatin1String(kPlaceForText)), kSearchCameraAtRole);
  row->setData(QVariant::fromValue(RecordOf(plan)), CurrentRecordRole);
  row->setData(row->text() + HitLineGap() + WholeLine(line), Qt::AccessibleTextRole);
  const bool timed_play = CViewConfigManager::Instance().IsSupportTimedPlay();
  QStringList description{WholeLine(line), TextOf(SignOf(RecordOf(plan), timed_play))};
  description.removeAll(QString());
  row->setData(description.join(HitLineGap()), Qt::AccessibleDescriptionRole);
  return row;
}

// The text of the key may have a place for what was searched, or none.
void CSearchPage::ShowNoHits(const QString& searched) {
  if (course_.HasFailed()) {
    state_->ShowState(CViewExternWidget::tr("The search got no answer."), CViewExternWidget::tr("Try again"));
  } else {
    state_->ShowState(CViewExternWidget::tr("NoDataWMSJEESY").replace(QLatin1String(kPlaceForText), searched));
  }
}

void CSearchPage::RenewIcons() {
  const bool dark = IsCurrentSkinDark();
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

int CSearchPage::MarkedFamily() const {
  if (!Marked().isValid()) {
    return -1;
  }
  return Marked().data(PlanTypeRole).toInt();
}

int CSearchPage::MarkedType() const {
  switch (MarkedFamily()) {
    case -1:
      return 0;
    case PublicTheme:
      return PublicPlanItem;
    case OwnTheme:
      return OwnPlanItem;
    default:
      return ReceivedPlanItem;
  }
}

view_plugin_protocol::TarnPlanViewInfo CSearchPage::MarkedPlan() const {
  using MarUIControl::QStringToString;
  const QModelIndex hit = Marked();
  view_plugin_protocol::TarnPlanViewInfo plan;
  plan.index_code = QStringToString(hit.data(PlanIndexCodeRole).toString());
  plan.name = QStringToString(hit.data().toString());
  plan.group_index_code = QStringToString(hit.data(kSearchGroupRole).toString());
  plan.type = hit.data(PlanTypeRole).toInt();
  plan.playing = hit.isValid() && hit.data(PlanIndexCodeRole).toString() == playing_code_;
  return plan;
}

bool CSearchPage::Mark(const QString& plan_code) {
  const QModelIndex hit = list_->Hit(plan_code);
  if (hit.isValid()) {
    list_->setCurrentIndex(hit);
  }
  return hit.isValid();
}

}  // namespace TarnPlanView
