#include "found_plans.h"

#include <QTextDocument>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "plan_item_role.h"
#include "qt/first_rows.h"
#include "view_config_manager.h"
#include "view_plan_item.h"

namespace TarnPlanView {

using MarUIControl::StringToQString;
using view_plugin_protocol::SearchedPlan;

namespace {

// The groups above, or its namesakes would look the same; and the camera by which it was found.
QString TextOf(const SearchedPlan& found) {
  QStringList groups;
  for (const std::string& group : found.groups_above) {
    groups.append(StringToQString(group));
  }
  if (groups.isEmpty() && !found.group_name.empty()) {
    groups.append(StringToQString(found.group_name));
  }
  QString text = StringToQString(found.name);
  if (!groups.isEmpty()) {
    text = QStringLiteral("%1 (%2)").arg(text, groups.join(QStringLiteral(" / ")));
  }
  if (!found.shown_camera.empty()) {
    text += QStringLiteral(" \u00b7 ") + CFoundPlans::tr("shows %1").arg(StringToQString(found.shown_camera));
  }
  return text;
}

QStandardItem* RowOf(const SearchedPlan& found) {
  view_plugin_protocol::PlanBasicInfo plan;
  plan.index_code = found.index_code;
  plan.name = found.name;
  plan.group_index_code = found.group_index_code;
  plan.type = found.type;
  auto* row = new CViewPlanItem(ViewManagerParam(static_cast<ThemeNodeType>(found.type), QString()), plan);
  row->setText(TextOf(found));
  row->setToolTip(Qt::convertFromPlainText(row->text()));
  row->setEditable(false);
  return row;
}

}  // namespace

CFoundPlans::CFoundPlans(IsLoaded is_loaded, QObject* parent) : QObject(parent), is_loaded_(std::move(is_loaded)) {
  connect(&search_, &CPlanSearch::SignalFailed, this, [this](const QString& error) { Enter(Failed, error); });
  connect(&search_, &CPlanSearch::SignalFound, this, &CFoundPlans::OnFound);
}

CFoundPlans::~CFoundPlans() = default;

void CFoundPlans::SetText(const QString& text) {
  text_ = text.trimmed();
  Renew();
}

void CFoundPlans::Renew() {
  search_.Cancel();
  Enter(text_.isEmpty() ? Idle : Asking);
}

void CFoundPlans::Ask() {
  if (state_ == Asking && !is_sent_) {
    is_sent_ = true;
    search_.Start(text_);
  }
}

void CFoundPlans::Enter(State state, const QString& reason) {
  state_ = state;
  is_sent_ = false;
  reason_ = reason;
  if (state == Idle) {
    rows_.removeRows(0, rows_.rowCount());
  } else if (rows_.rowCount() == 0) {
    auto* top = new QStandardItem;
    top->setData(kFoundPlansItem, ItemTypeRole);
    top->setFlags(Qt::NoItemFlags);
    top->setText(StateText());
    rows_.appendRow(top);
  } else {
    rows_.item(0)->removeRows(0, rows_.item(0)->rowCount());
    ShowState();
  }
  Q_EMIT SignalChanged();
}

// A part of the search may have failed; what the other part has found is worth showing all the same.
void CFoundPlans::OnFound(const std::list<SearchedPlan>& plans) {
  QList<QStandardItem*> found;
  for (const SearchedPlan& plan : plans) {
    if (IsOffered(plan) && !is_loaded_(StringToQString(plan.index_code))) {
      found.append(RowOf(plan));
    }
  }
  if (state_ == Asking) {
    state_ = Answered;
  }
  TarnQt::AppendRows(rows_.item(0), found);
  ShowState();
  Q_EMIT SignalChanged();
}

// What stands directly under a root has no row where the site keeps plans in groups alone.
bool CFoundPlans::IsOffered(const SearchedPlan& plan) const {
  const bool under_root = plan.group_index_code == kPublicRootCode || plan.group_index_code == kOwnRootCode;
  const bool shown_family = plan.type == PublicTheme || plan.type == OwnTheme;
  return shown_family && (!under_root || CViewConfigManager::Instance().CreatePlanUnderRootNode());
}

void CFoundPlans::DropLoaded() {
  QStandardItem* top = rows_.item(0);
  if (!top) {
    return;
  }
  for (int row = top->rowCount() - 1; row >= 0; --row) {
    if (is_loaded_(top->child(row)->data(PlanIndexCodeRole).toString())) {
      top->removeRow(row);
    }
  }
  ShowState();
}

void CFoundPlans::ShowState() {
  rows_.item(0)->setText(StateText());
}

QString CFoundPlans::StateText() const {
  switch (state_) {
    case Failed:
      return tr("The search got no answer: %1").arg(reason_);
    case Answered:
      return CountText();
    case Idle:
    case Asking:
      break;
  }
  return tr("Searching for further plans...");
}

QString CFoundPlans::CountText() const {
  const int found = rows_.item(0)->rowCount();
  if (found == 0) {
    return tr("No further plans found");
  }
  return tr("Further plans found: %1").arg(found);
}

}  // namespace TarnPlanView
