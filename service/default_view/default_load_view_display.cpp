#include "default_load_view_display.h"

#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/label.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"
#include "default_view_tree.h"
#include "host_calls/ask.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "plan_way.h"
#include "standard_view_controller.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::ClienDefaultViewConfigRequest;

namespace {

constexpr int kIconSize = 18;  // as in the plan tree

ClienDefaultViewConfigRequest RequestOf(const QModelIndex& index) {
  ClienDefaultViewConfigRequest request;
  request.index_code = kPlaceholderCode;
  if (CViewPublicDef::IsPlanGroup(index)) {
    request.type = ResourceData::RT_VIEW_GROUP;
    request.index_code = QStringToString(CodeOfRow(index));
  } else if (IsPlanRow(index)) {
    request.type = ResourceData::RT_VIEW;
    request.index_code = QStringToString(CodeOfRow(index));
  }
  return request;
}

// Whatever type is stored with it.
bool IsNone(const ClienDefaultViewConfigRequest& view) {
  return view.index_code == kPlaceholderCode;
}

// Codes of plans and of groups differ by their type alone.
bool IsSame(const ClienDefaultViewConfigRequest& a, const ClienDefaultViewConfigRequest& b) {
  return a.index_code == b.index_code && (a.type == b.type || IsNone(a));
}

}  // namespace

class CDefaultLoadViewDisplay::Private {
 public:
  explicit Private(CDefaultLoadViewDisplay* display) : q(display) {}

  void BuildUi();
  void Connect();
  QModelIndex FindRow() const;
  void Seek();
  void FetchWay();
  void OnWay(const PlanWay& found);
  void OnGone();
  void OnExpanded(const QString& group, bool loaded);
  static QString NotOffered();
  static QString WhyNotShown(const PlanWay& found);
  void StopSeeking(const QString& why);
  void Show(const QModelIndex& row);
  void OnChosen(const QModelIndex& row);
  void OnRowsInserted(const QModelIndex& parent, int first);
  void OnRowsRemoved();
  void ConnectSearch();
  bool Ask(const std::function<bool()>& call, std::string* refusal);

  CDefaultLoadViewDisplay* const q;
  WidgetKit::CNewLocationComboBox* box = nullptr;  // child of the display
  CDefaultViewTree* tree = nullptr;                // likewise
  QPointer<CStandardViewController> controller;
  ClienDefaultViewConfigRequest stored;
  bool is_stored_known = false;
  view_plugin_protocol::ClienDefaultViewConfigReponse set_response;
  std::string response_text;

  ClienDefaultViewConfigRequest wanted;  // what is shown, or being looked for
  bool seeking = false;
  bool was_shown = false;  // what is looked for has been there already
  bool missed = false;     // it was not found, and nothing else is shown: it may come after all
  QStringList way;
  HostCalls::CCallScope way_calls;
  QTimer seek_soon;
};

void CDefaultLoadViewDisplay::Private::BuildUi() {
  auto* label = new MarUIControl::CLabel(q);
  label->SetText(tr("Default view"));
  box = new WidgetKit::CNewLocationComboBox(q);
  box->setObjectName(QStringLiteral("default_view_box"));
  box->setAccessibleName(label->text());
  q->setFocusProxy(box);
  box->SetPlaceholderText(tr("Choose a plan or group"));
  box->LocationTree()->setAccessibleName(tr("Plans and groups"));
  box->LocationTree()->setIconSize(QSize(kIconSize, kIconSize));
  tree = new CDefaultViewTree(box->LocationTree(), q);
  auto* layout = new QVBoxLayout(q);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(6);
  layout->addWidget(label);
  layout->addWidget(box);
  q->setFocusProxy(box);
}

void CDefaultLoadViewDisplay::Private::Connect() {
  connect(box, &MarUIControl::CLocationComboBox::SignalIndexActivated, q,
          [this](const QModelIndex& row) { OnChosen(row); });
  connect(tree->Rows(), &QAbstractItemModel::rowsInserted, q,
          [this](const QModelIndex& parent, int first) { OnRowsInserted(parent, first); });
  connect(tree->Rows(), &QAbstractItemModel::rowsRemoved, q, [this] { OnRowsRemoved(); });
  connect(tree, &CDefaultViewTree::SignalExpanded, q,
          [this](const QString& group, bool loaded) { OnExpanded(group, loaded); });
  seek_soon.setSingleShot(true);
  connect(&seek_soon, &QTimer::timeout, q, [this] { Seek(); });
  // Where all is loaded at the start, the rows are all there is to look through.
  if (!CViewConfigManager::Instance().IsLoadAll()) {
    ConnectSearch();
  }
}

void CDefaultLoadViewDisplay::Private::ConnectSearch() {
  CFoundPlans* found = tree->Found();
  WidgetKit::CNewLocationViewWidget* line = box->SearchLine();
  connect(line, &QLineEdit::textChanged, found, &CFoundPlans::SetText);
  connect(line, &WidgetKit::CNewLocationViewWidget::SignalLocating, found, &CFoundPlans::Renew);
  connect(line, &WidgetKit::CNewLocationViewWidget::SignalLocated, found, [found, line] {
    if (!line->IsLocating()) {
      found->Ask();
    }
  });
  connect(found, &CFoundPlans::SignalChanged, line, [found, line] { line->SetAwaitsRows(found->IsAsking()); });
}

// Codes are decimal numbers; anything else names no row.
QModelIndex CDefaultLoadViewDisplay::Private::FindRow() const {
  if (IsNone(wanted) || (wanted.type != ResourceData::RT_VIEW && wanted.type != ResourceData::RT_VIEW_GROUP)) {
    return tree->Find(QString::fromLatin1(kPlaceholderCode), true);
  }
  bool is_number = false;
  const int code = StringToQString(wanted.index_code).toInt(&is_number);
  if (!is_number) {
    return QModelIndex();
  }
  return tree->Find(QString::number(code), wanted.type == ResourceData::RT_VIEW_GROUP);
}

void CDefaultLoadViewDisplay::Private::Seek() {
  if (!seeking && !missed) {
    return;
  }
  const QModelIndex row = FindRow();
  if (row.isValid()) {
    Show(row);
  } else if (seeking && !tree->ExpandLowest(way)) {
    StopSeeking(NotOffered());
  }
}

QString CDefaultLoadViewDisplay::Private::WhyNotShown(const PlanWay& found) {
  if (found.error.isEmpty()) {
    return NotOffered();
  }
  return tr("The default view cannot be shown: %1").arg(found.error);
}

QString CDefaultLoadViewDisplay::Private::NotOffered() {
  return tr("The default view is not among the plans offered here.");
}

void CDefaultLoadViewDisplay::Private::FetchWay() {
  way.clear();
  HostCalls::Ask([type = wanted.type, code = wanted.index_code] { return FindPlanWay(type, code); })
      .Replacing(way_calls)
      .Then(q, [this](const PlanWay& found) {
        if (seeking) {
          OnWay(found);
        }
      });
}

void CDefaultLoadViewDisplay::Private::OnWay(const PlanWay& found) {
  way = found.groups;
  if (!way.isEmpty()) {
    Seek();
  } else if (tree->IsFound(box->GetCurrentIndex())) {
    StopSeeking(found.error);
  } else if (found.is_gone) {
    OnGone();
  } else {
    StopSeeking(WhyNotShown(found));
  }
}

// A choice that was never saved leaves the default view as it was; a stored one took the default view with it.
void CDefaultLoadViewDisplay::Private::OnGone() {
  const QModelIndex none = tree->Find(QString::fromLatin1(kPlaceholderCode), true);
  if (!was_shown || !none.isValid()) {
    StopSeeking(QString());
  } else if (is_stored_known && !IsSame(stored, wanted)) {
    q->SelectView(stored.type, stored.index_code);
  } else {
    wanted = RequestOf(none);
    if (is_stored_known) {
      stored = wanted;
    }
    Show(none);
  }
}

void CDefaultLoadViewDisplay::Private::OnExpanded(const QString& group, bool loaded) {
  if (!seeking || !way.contains(group)) {
    return;
  }
  if (loaded) {
    seek_soon.start(0);
    return;
  }
  // Where all is loaded at the start the controller was not asked, so it says nothing.
  const bool is_silent = CViewConfigManager::Instance().IsLoadAll();
  StopSeeking(is_silent ? tr("The plans could not be loaded.") : QString());
}

// The choice stays as it is and can be saved; what is stored but not shown stays stored.
void CDefaultLoadViewDisplay::Private::StopSeeking(const QString& why) {
  const QModelIndex shown = box->GetCurrentIndex();
  seeking = false;
  missed = !shown.isValid();
  if (shown.isValid()) {
    was_shown = true;
    wanted = RequestOf(shown);
  }
  if (!why.isEmpty() && controller) {
    Q_EMIT controller->signalShowMessage(why, MarUIControl::CNomalMessage::Failure);
  }
  Q_EMIT q->SignalChoiceChanged();
}

void CDefaultLoadViewDisplay::Private::Show(const QModelIndex& row) {
  seeking = missed = false;
  was_shown = true;
  box->SetCurrentIndex(row);
  Q_EMIT q->SignalChoiceChanged();
}

// What a search has found gets its own row loaded, too.
void CDefaultLoadViewDisplay::Private::OnChosen(const QModelIndex& row) {
  seeking = tree->IsFound(row);
  missed = false;
  was_shown = true;
  wanted = RequestOf(row);
  if (seeking) {
    FetchWay();
  }
  Q_EMIT q->SignalChoiceChanged();
}

void CDefaultLoadViewDisplay::Private::OnRowsInserted(const QModelIndex& parent, int first) {
  if (tree->IsFound(tree->Rows()->index(first, 0, parent))) {
    return;
  }
  if (!seeking && !missed) {
    return;
  }
  if (!parent.isValid()) {
    seeking = true;  // all once more
    FetchWay();
  }
  seek_soon.start(0);
}

// A reload takes the roots and brings them again: only then is there something to look for. A moved plan comes back
// elsewhere.
void CDefaultLoadViewDisplay::Private::OnRowsRemoved() {
  if (seeking || missed || !was_shown || box->GetCurrentIndex().isValid()) {
    return;
  }
  seeking = true;
  way.clear();
  if (tree->HasRoots()) {
    FetchWay();
  }
}

// The host's text reaches the widget by the tip alone where the kept response is that of an earlier answer.
bool CDefaultLoadViewDisplay::Private::Ask(const std::function<bool()>& call, std::string* refusal) {
  const auto heard = connect(controller, &CStandardViewController::signalShowMessage, q,
                             [refusal](const QString& text) { *refusal = QStringToString(text); });
  const bool done = call();
  disconnect(heard);
  return done;
}

CDefaultLoadViewDisplay::CDefaultLoadViewDisplay(QWidget* parent)
    : QWidget(parent), d_(std::make_unique<Private>(this)) {
  d_->BuildUi();
  d_->Connect();
}

// The rows first: their view is the box's.
CDefaultLoadViewDisplay::~CDefaultLoadViewDisplay() {
  disconnect(d_->tree->Rows(), nullptr, this, nullptr);
  delete d_->tree;
}

void CDefaultLoadViewDisplay::SetViewController(CStandardViewController* controller) {
  d_->controller = controller;
  d_->tree->SetViewController(controller);
}

bool CDefaultLoadViewDisplay::ReadDefaultView() {
  if (!d_->controller) {
    return false;
  }
  std::string refusal;
  const bool done = d_->Ask([this] { return d_->controller->GetClientViewDefaultConfig({}); }, &refusal);
  const auto response = CViewModelDataManager::Instance().GetSeverResponseData();
  if (!done) {
    d_->response_text = response.error_info.empty() ? refusal : response.error_info;
    return false;
  }
  d_->stored.index_code = response.index_code;
  d_->stored.type = response.type;
  d_->is_stored_known = true;
  return true;
}

void CDefaultLoadViewDisplay::SelectView(int32_t type, const std::string& code) {
  d_->wanted.type = type;
  d_->wanted.index_code = code;
  const QModelIndex row = d_->FindRow();
  if (row.isValid()) {
    d_->Show(row);
    return;
  }
  d_->seeking = true;
  d_->was_shown = d_->missed = false;
  d_->FetchWay();
}

bool CDefaultLoadViewDisplay::SaveChosenView() {
  if (!d_->controller || d_->seeking || !d_->box->GetCurrentIndex().isValid()) {
    return false;
  }
  const ClienDefaultViewConfigRequest request = RequestOf(d_->box->GetCurrentIndex());
  std::string refusal;
  const bool done = d_->Ask([&] { return d_->controller->SetClientViewDefaultConfig(request); }, &refusal);
  d_->set_response = CViewModelDataManager::Instance().GetSetConfigResponseData();
  if (!done) {
    d_->response_text = d_->set_response.error_info.empty() ? refusal : d_->set_response.error_info;
    return false;
  }
  d_->stored = request;
  d_->is_stored_known = true;
  Q_EMIT SignalChoiceChanged();
  return true;
}

std::string CDefaultLoadViewDisplay::GetIndexCode() const {
  return d_->stored.index_code;
}

int32_t CDefaultLoadViewDisplay::GetResourceType() const {
  return d_->stored.type;
}

std::string CDefaultLoadViewDisplay::GetResponseText() const {
  return d_->response_text;
}

bool CDefaultLoadViewDisplay::IsChanged() const {
  const QModelIndex chosen = d_->box->GetCurrentIndex();
  return !d_->seeking && chosen.isValid() && (!d_->is_stored_known || !IsSame(RequestOf(chosen), d_->stored));
}

WidgetKit::CNewLocationComboBox* CDefaultLoadViewDisplay::GetLocationComboBox() const {
  return d_->box;
}

}  // namespace TarnPlanView
