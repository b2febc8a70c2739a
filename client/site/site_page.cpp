#include "site/site_page.h"

#include <QAction>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <utility>

#include "MarUIControl/line_edit.h"
#include "MarUIControl/nomal_message.h"
#include "TarnHost/camera_address.h"
#include "TarnHost/host_services.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/show_message_tip.h"
#include "host_calls/ask.h"
#include "settings/list_command.h"
#include "site/authority_form.h"
#include "site/camera_file.h"
#include "site/camera_form.h"
#include "site/device_form.h"
#include "site/export_form.h"
#include "site/import_form.h"
#include "site/region_form.h"
#include "site/removal_text.h"
#include "site/site_call.h"

namespace TarnClient {

namespace {

using MarUIControl::CNomalMessage;

constexpr int kQuestion = 3;  // OK and Cancel
constexpr int kFilterPauseMs = 150;
constexpr int kAgainMs = 3000;
constexpr int kNameWidth = 250, kAddressWidth = 205;

struct SiteAnswer {
  std::shared_ptr<const SiteTable> site;
  QString error;
};

SiteAnswer ReadSite() {
  std::string error;
  SiteAnswer answer{SiteTable::Read(&error), {}};
  answer.error = QString::fromStdString(error);
  return answer;
}

QString ChosenFile(QWidget* parent, bool to_write) {
  const QString kinds = CSitePage::tr("Tables (*.csv);;All files (*)");
  if (to_write) {
    return QFileDialog::getSaveFileName(parent, CSitePage::tr("Export cameras"), QStringLiteral("cameras.csv"), kinds);
  }
  return QFileDialog::getOpenFileName(parent, CSitePage::tr("Import cameras"), QString(), kinds);
}

struct PlansAnswer {
  bool known = false;
  TarnHost::PlansShowing showing;
  std::string error;
};

PlansAnswer PlansOf(const std::vector<std::string>& cameras) {
  PlansAnswer answer;
  if (const auto services = TarnHost::InstalledHostServices()) {
    answer.known = services->GetPlansShowing(cameras, answer.showing, &answer.error);
  }
  return answer;
}

}  // namespace

CSitePage::CSitePage(TryCamera try_camera, QWidget* parent)
    : QWidget(parent), try_camera_(std::move(try_camera)), choose_file_(&ChosenFile), model_(new CSiteModel(this)) {
  setObjectName(QStringLiteral("site_page"));
  auto* left = new QVBoxLayout;
  left->setSpacing(8);
  left->addWidget(BuildFilter());
  BuildList();
  left->addWidget(list_, 1);
  left->addWidget(state_, 1);
  left->addWidget(summary_);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 12, 0, 0);
  layout->setSpacing(16);
  layout->addLayout(left, 1);
  layout->addLayout(BuildCommands());
  filter_soon_.setSingleShot(true);
  connect(&filter_soon_, &QTimer::timeout, this, &CSitePage::Filter);
  again_.setSingleShot(true);
  again_.setInterval(kAgainMs);
  connect(&again_, &QTimer::timeout, this, &CSitePage::Read);
  connect(&notice_, &CCameraNotice::SignalCamerasChanged, this, &CSitePage::Read);
  setFocusProxy(list_);
  Read();
}

QList<MarUIControl::KeyEntry> CSitePage::Keys() {
  const QString group = tr("In the settings, on the page of cameras");
  return {{group, {QKeySequence(Qt::Key_Insert)}, tr("New camera")},
          {group, {QKeySequence(Qt::Key_F2), QKeySequence(Qt::Key_Return)}, tr("Edit")},
          {group, {QKeySequence(Qt::Key_Delete)}, tr("Remove")},
          {group, QKeySequence::keyBindings(QKeySequence::Find).mid(0, 1), tr("Filter cameras")}};
}

QWidget* CSitePage::BuildFilter() {
  filter_ = new MarUIControl::CLineEdit(this);
  filter_->setObjectName(QStringLiteral("site_filter"));
  filter_->setMinimumHeight(30);
  filter_->setPlaceholderText(tr("Filter by name, address, user or code"));
  filter_->setAccessibleName(filter_->placeholderText());
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, this, [this] { filter_soon_.start(kFilterPauseMs); });
  auto* find = new QAction(filter_->placeholderText(), this);
  find->setShortcut(QKeySequence::Find);
  find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(find, &QAction::triggered, filter_, [this] { filter_->setFocus(Qt::ShortcutFocusReason); });
  addAction(find);
  return filter_;
}

void CSitePage::BuildList() {
  list_ = new QTreeView(this);
  list_->setObjectName(QStringLiteral("site_list"));
  list_->setAccessibleName(tr("Regions and cameras"));
  list_->setModel(model_);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setAllColumnsShowFocus(true);
  list_->setUniformRowHeights(true);
  list_->setTextElideMode(Qt::ElideRight);
  list_->setExpandsOnDoubleClick(false);
  list_->header()->setSectionsMovable(false);
  list_->header()->setSectionResizeMode(QHeaderView::Interactive);
  list_->header()->resizeSection(CSiteModel::kName, kNameWidth);
  list_->header()->resizeSection(CSiteModel::kMain, kAddressWidth);
  list_->header()->resizeSection(CSiteModel::kSub, kAddressWidth);
  connect(list_, &QAbstractItemView::activated, this, [this] { Run(&CSitePage::Edit); });
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CSitePage::RenewCommands);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, &CSitePage::RenewCommands);
  state_ = new QLabel(this);
  state_->setObjectName(QStringLiteral("site_state"));
  state_->setAlignment(Qt::AlignCenter);
  state_->setWordWrap(true);
  state_->setTextFormat(Qt::PlainText);
  summary_ = new QLabel(this);
  summary_->setObjectName(QStringLiteral("settings_note"));
  summary_->setWordWrap(true);
}

QBoxLayout* CSitePage::BuildCommands() {
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  with_site_ << AddCommand("site_add_camera_btn", tr("New camera..."), Qt::Key_Insert, &CSitePage::AddCamera, column)
             << AddCommand("site_add_region_btn", tr("New region..."), {}, &CSitePage::AddRegion, column);
  edit_ = AddCommand("site_edit_btn", tr("Edit..."), Qt::Key_F2, &CSitePage::Edit, column);
  remove_ = AddCommand("site_remove_btn", tr("Remove..."), Qt::Key_Delete, &CSitePage::Remove, column);
  column->addSpacing(16);
  with_site_ << AddCommand("site_find_btn", tr("Find cameras..."), {}, &CSitePage::FindCameras, column)
             << AddCommand("site_import_btn", tr("Import..."), {}, &CSitePage::Import, column)
             << AddCommand("site_export_btn", tr("Export..."), {}, &CSitePage::Export, column);
  column->addSpacing(16);
  with_site_ << AddCommand("site_authority_btn", tr("Certificates..."), {}, &CSitePage::ChooseAuthority, column);
  column->addStretch();
  return column;
}

QAction* CSitePage::AddCommand(const char* name, const QString& text, const QKeySequence& key, Command command,
                               QBoxLayout* column) {
  QAction* action = AddListCommand(list_, name, text, key, column);
  connect(action, &QAction::triggered, this, [this, command] { Run(command); });
  return action;
}

// One at a time: what the last one still asks for ends in a form or a question.
void CSitePage::Run(Command command) {
  if (!removing_.IsUnderWay() && !importing_.IsUnderWay()) {
    (this->*command)();
  }
}

// A look that is under way may have missed what was changed just now.
void CSitePage::Read() {
  is_outdated_ = reading_.IsUnderWay();
  if (is_outdated_) {
    return;
  }
  HostCalls::Ask(&ReadSite).Within(reading_).Then(this, [this](const SiteAnswer& answer) {
    if (std::exchange(is_outdated_, false)) {
      Read();
      return;
    }
    trouble_ = answer.error;
    if (answer.site) {
      site_ = answer.site;
      Filter();
    } else {
      again_.start();
      ShowState();
    }
  });
  ShowState();
}

void CSitePage::Filter() {
  if (!site_) {
    return;
  }
  HostCalls::Ask(
      [site = site_, text = filter_->text()] { return std::make_shared<const SiteRows>(SiteRows::Of(*site, text)); })
      .Replacing(filtering_)
      .Then(this, [this](const std::shared_ptr<const SiteRows>& rows) { Show(rows); });
}

template <class Visit>
void CSitePage::ForEachRegion(const Visit& visit) const {
  const std::vector<SiteRow>& rows = model_->Rows().rows;
  for (size_t place = 0; place < rows.size(); ++place) {
    if (rows[place].is_region) {
      visit(rows[place], model_->IndexAt(static_cast<int>(place)));
    }
  }
}

std::set<std::string> CSitePage::OpenRegions() const {
  std::set<std::string> open;
  ForEachRegion([&](const SiteRow& region, const QModelIndex& index) {
    if (list_->isExpanded(index)) {
      open.insert(region.code);
    }
  });
  return open;
}

CSitePage::RowKey CSitePage::KeyOf(const QModelIndex& index) const {
  const SiteRow* row = model_->RowOf(index);
  return row ? RowKey(row->code, row->is_region) : RowKey();
}

// The current row, then what would be nearest without it: those behind it, those before it, the region around it.
std::vector<CSitePage::RowKey> CSitePage::NearestRows() const {
  const QModelIndex current = list_->currentIndex();
  std::vector<RowKey> keys = {KeyOf(current)};
  for (int row = current.row() + 1; row < model_->rowCount(current.parent()); ++row) {
    keys.push_back(KeyOf(model_->index(row, 0, current.parent())));
  }
  for (int row = current.row() - 1; row >= 0; --row) {
    keys.push_back(KeyOf(model_->index(row, 0, current.parent())));
  }
  for (QModelIndex above = current.parent(); above.isValid(); above = above.parent()) {
    keys.push_back(KeyOf(above));
  }
  return keys;
}

// Nothing is chosen that the user has not chosen: the next key may be that which removes.
void CSitePage::ChooseAgain(const std::set<RowKey>& chosen, const std::vector<RowKey>& nearest) {
  std::map<RowKey, QModelIndex> places;
  QItemSelection selection;
  for (size_t place = 0; place < model_->Rows().rows.size(); ++place) {
    const QModelIndex index = model_->IndexAt(static_cast<int>(place));
    const RowKey key = KeyOf(index);
    places[key] = index;
    if (chosen.count(key) != 0) {
      selection.select(index, index);
    }
  }
  QModelIndex current = model_->index(0, 0);
  const auto found =
      std::find_if(nearest.begin(), nearest.end(), [&places](const RowKey& key) { return places.count(key) != 0; });
  if (found != nearest.end()) {
    current = places[*found];
  }
  list_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

// What was open, current and chosen stays so; what a filter has found is open.
void CSitePage::Show(std::shared_ptr<const SiteRows> rows) {
  const std::set<std::string> open = OpenRegions();
  const std::vector<RowKey> nearest = NearestRows();
  std::set<RowKey> chosen;
  for (const SiteRow* row : Selected()) {
    chosen.emplace(row->code, row->is_region);
  }
  model_->SetRows(std::move(rows));
  const bool is_first = std::exchange(is_first_, false);
  if (is_first) {
    list_->expandToDepth(0);
  }
  if (!filter_->text().trimmed().isEmpty()) {
    list_->expandAll();
  } else {
    ForEachRegion([&](const SiteRow& region, const QModelIndex& index) {
      if (open.count(region.code) != 0) {
        list_->expand(index);
      }
    });
  }
  ChooseAgain(chosen, nearest);
  ShowState();
  if (is_first && filter_->text().isEmpty()) {
    list_->setFocus(Qt::OtherFocusReason);  // before, it was hidden
  }
}

void CSitePage::ShowState() {
  QString text;
  if (!site_ && trouble_.isEmpty()) {
    text = tr("The cameras are being read...");
  } else if (!site_) {
    text = tr("The cameras cannot be read: %1").arg(trouble_);
  } else if (site_->cameras.empty() && site_->regions.empty()) {
    text = tr("This site has no cameras yet. Add one, or import a list.");
  } else if (model_->rowCount() == 0) {
    text = tr("No camera like this.");
  }
  state_->setText(text);
  state_->setVisible(!text.isEmpty());
  list_->setVisible(text.isEmpty());
  summary_->setText(Summary());
  RenewCommands();
}

QString CSitePage::Summary() const {
  if (!site_) {
    return QString();
  }
  const QString counts = tr("%n camera(s)", nullptr, model_->Rows().cameras) + QStringLiteral(", ") +
                         tr("%n region(s)", nullptr, model_->Rows().regions);
  if (trouble_.isEmpty()) {
    return counts;
  }
  return counts + QLatin1Char('\n') + tr("Changed since, and cannot be read: %1").arg(trouble_);
}

void CSitePage::RenewCommands() {
  for (QAction* action : qAsConst(with_site_)) {
    action->setEnabled(site_ != nullptr);
  }
  edit_->setEnabled(Current() != nullptr);
  remove_->setEnabled(list_->selectionModel()->hasSelection());
}

const SiteRow* CSitePage::Current() const {
  return model_->RowOf(list_->currentIndex());
}

QList<const SiteRow*> CSitePage::Selected() const {
  QList<const SiteRow*> rows;
  for (const QModelIndex& index : list_->selectionModel()->selectedRows()) {
    rows.append(model_->RowOf(index));
  }
  return rows;
}

/// The current region, or that of the current camera.
std::string CSitePage::CurrentRegion() const {
  const SiteRow* current = Current();
  if (!current || current->is_region) {
    return current ? current->code : std::string();
  }
  const SiteRow* above = model_->RowOf(list_->currentIndex().parent());
  return above ? above->code : std::string();
}

void CSitePage::AddCamera() {
  OpenCamera({});
}

void CSitePage::AddRegion() {
  OpenRegion({});
}

void CSitePage::Edit() {
  const SiteRow* current = Current();
  if (!current) {
    return;
  }
  if (current->is_region) {
    OpenRegion(current->code);
  } else {
    OpenCamera(current->code);
  }
}

void CSitePage::OpenCamera(const std::string& code) {
  (new CCameraForm(site_, code, CurrentRegion(), try_camera_, this))->open();
}

void CSitePage::OpenRegion(const std::string& code) {
  (new CRegionForm(site_, code, CurrentRegion(), this))->open();
}

// A region goes with all that is in it.
void CSitePage::Remove() {
  const QList<const SiteRow*> rows = Selected();
  if (rows.isEmpty()) {
    return;
  }
  TarnHost::CameraChanges changes;
  std::vector<std::string> regions;
  for (const SiteRow* row : rows) {
    (row->is_region ? regions : changes.removed_cameras).push_back(row->code);
  }
  SiteTable::Below below = site_->CollectBelow(regions);
  changes.removed_regions = std::move(below.regions);
  changes.removed_cameras.insert(changes.removed_cameras.end(), below.cameras.begin(), below.cameras.end());
  std::sort(changes.removed_cameras.begin(), changes.removed_cameras.end());
  changes.removed_cameras.erase(std::unique(changes.removed_cameras.begin(), changes.removed_cameras.end()),
                                changes.removed_cameras.end());
  const QString name = rows.size() == 1 ? rows.front()->name : QString();
  AskToRemove(changes, name, rows.size() == 1 && rows.front()->is_region);
}

void CSitePage::AskToRemove(const TarnHost::CameraChanges& changes, const QString& name, bool is_region) {
  HostCalls::Ask([codes = changes.removed_cameras] { return PlansOf(codes); })
      .Replacing(removing_)
      .Then(this, [this, changes, name, is_region](const PlansAnswer& plans) {
        if (!plans.known) {
          Tip(QString::fromStdString(plans.error), true);  // what would be lost is not known
          return;
        }
        const auto cameras = static_cast<int>(changes.removed_cameras.size());
        RemoveIfConfirmed(changes, CRemovalText::Of(name, is_region, cameras, plans.showing));
      });
}

void CSitePage::RemoveIfConfirmed(const TarnHost::CameraChanges& changes, const QString& question) {
  const QPointer<CSitePage> alive(this);
  const int answer =
      tarn_ui_data_controller::ShowMessageTip(question, CNomalMessage::Failure, this, kQuestion, tr("Remove"));
  if (!alive || answer != 1) {
    return;
  }
  SendSiteChanges(changes, this, [this](const SiteCallResult& result) {
    if (!result.ok) {
      Tip(QString::fromStdString(result.response.error_info), true);
    }
  });
}

void CSitePage::FindCameras() {
  (new CDeviceForm(site_, CurrentRegion(), this))->open();
}

void CSitePage::Import() {
  const QString file = choose_file_(this, false);
  if (file.isEmpty()) {
    return;
  }
  HostCalls::Ask([file] { return CCameraFile::PlanOf(file); })
      .Replacing(importing_)
      .Then(this, [this, file](const CCameraFile::Read& read) {
        if (!read.plan) {
          Tip(read.error, true);
          return;
        }
        (new CImportForm(file, read.encoding, *read.plan, this))->open();
      });
}

void CSitePage::Export() {
  auto* form = new CExportForm(this);
  connect(form, &CExportForm::SignalChosen, this, [this](bool with_passwords) {
    const QString file = choose_file_(this, true);
    if (!file.isEmpty()) {
      WriteTo(file, with_passwords);
    }
  });
  form->open();
}

void CSitePage::WriteTo(const QString& file, bool with_passwords) {
  using Written = HostCalls::Result<view_plugin_protocol::ResponseHeader>;  // its text, done or not
  HostCalls::Ask([file, with_passwords] {
    Written written;
    bool failed = false;
    written.response.error_info = CCameraFile::Write(file, with_passwords, &failed).toStdString();
    written.ok = !failed;
    return written;
  })
      .AsCurrentUser()
      .Then(this,
            [this](const Written& written) { Tip(QString::fromStdString(written.response.error_info), !written.ok); });
}

void CSitePage::ChooseAuthority() {
  (new CAuthorityForm(site_->authority, this))->open();
}

void CSitePage::Tip(const QString& text, bool failed) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(
      text, failed ? CNomalMessage::Failure : CNomalMessage::Success, this);
}

}  // namespace TarnClient
