#include "settings/desk_memory.h"

#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>

#include "plans/plan_family.h"
#include "settings/user_settings.h"
#include "window/window_place.h"

namespace TarnClient {

namespace {

constexpr int kLaterMs = 500;  // for what comes in a run, as when a window is dragged

// The main screen first.
QVector<QRect> RoomsOfScreens() {
  QVector<QRect> rooms;
  for (const QScreen* screen : QGuiApplication::screens()) {
    rooms.append(screen->availableGeometry());
  }
  return rooms;
}

bool ArePlansLoaded() {
  return TarnPlanView::CViewModelDataManagerExport::Instance().IsViewModelInitFinish();
}

}  // namespace

CDeskMemory::CDeskMemory(CUserSettings* settings, const Desk& desk, QObject* parent)
    : QObject(parent), settings_(settings), desk_(desk) {
  later_.setSingleShot(true);
  later_.setInterval(kLaterMs);
  connect(&later_, &QTimer::timeout, this, &CDeskMemory::Keep);
  Watch();
}

void CDeskMemory::Watch() {
  desk_.window->installEventFilter(this);
  connect(desk_.splitter, &QSplitter::splitterMoved, this, &CDeskMemory::KeepLater);
  connect(desk_.tabs, &QTabWidget::currentChanged, this, &CDeskMemory::KeepLater);
  connect(desk_.history, &QAbstractItemModel::rowsInserted, this, &CDeskMemory::KeepLater);
  connect(desk_.history, &QAbstractItemModel::dataChanged, this, &CDeskMemory::KeepLater);
  for (int number = 0; number < desk_.families.size(); ++number) {
    connect(TreeOf(number), &QTreeView::expanded, this, &CDeskMemory::KeepLater);
    connect(TreeOf(number), &QTreeView::collapsed, this, &CDeskMemory::KeepLater);
    connect(desk_.families[number]->Panel(), &TarnPlanView::CViewExternWidget::SignalLastSearchesChanged, this,
            &CDeskMemory::KeepLater);
    const QAbstractItemModel* rows = desk_.families[number]->Model();
    awaits_rows_.append(!rows || rows->rowCount() == 0);
    if (rows) {
      connect(rows, &QAbstractItemModel::rowsInserted, this, [this, number](const QModelIndex& above) {
        awaits_rows_[number] = awaits_rows_[number] && above.isValid();
      });
    }
  }
}

bool CDeskMemory::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
      KeepLater();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void CDeskMemory::PlaceWindow() {
  const RememberedDesk& desk = settings_->Remembered();
  if (!desk.window.isEmpty()) {
    desk_.window->setGeometry(WindowPlaceOn(RoomsOfScreens(), desk.window));
  }
  if (desk.is_maximized) {
    desk_.window->setWindowState(desk_.window->windowState() | Qt::WindowMaximized);
  }
}

void CDeskMemory::Restore() {
  const RememberedDesk desk = settings_->Remembered();
  if (desk.side_width > 0) {
    const int all = desk_.splitter->width();
    desk_.splitter->setSizes({desk.side_width, qMax(1, all - desk.side_width)});
  }
  desk_.tabs->setCurrentIndex(qMin(desk.shown_family, desk_.tabs->count() - 1));
  desk_.history->SetPlans(desk.history);
  last_played_ = desk.last_played;
  for (int number = 0; number < desk_.families.size(); ++number) {
    const RememberedDesk::Family family = desk.families.value(number);
    TreeOf(number)->SetOpenGroups(family.open_groups);
    desk_.families[number]->Panel()->SetLastSearches(family.searches);
  }
  later_.stop();
}

void CDeskMemory::RestoreForNewUser() {
  awaits_rows_.fill(true);
  Restore();
}

void CDeskMemory::SetPlayed(const QString& code, bool is_group) {
  last_played_ = {code, is_group};
  KeepLater();
}

void CDeskMemory::Keep() {
  later_.stop();
  settings_->Remember(Now());
}

RememberedDesk CDeskMemory::Now() const {
  RememberedDesk desk;
  desk.window = desk_.window->normalGeometry();
  desk.is_maximized = desk_.window->isMaximized();
  desk.side_width = desk_.splitter->sizes().value(0);
  desk.shown_family = desk_.tabs->currentIndex();
  desk.history = desk_.history->Plans();
  desk.last_played = last_played_;
  for (int number = 0; number < desk_.families.size(); ++number) {
    desk.families.append(FamilyNow(number));
  }
  return desk;
}

// During a load, the trees do not show what the user left open.
RememberedDesk::Family CDeskMemory::FamilyNow(int number) const {
  RememberedDesk::Family family = settings_->Remembered().families.value(number);
  family.searches = desk_.families[number]->Panel()->GetLastSearches();
  if (!awaits_rows_[number] && ArePlansLoaded()) {
    family.open_groups = TreeOf(number)->GetOpenGroups().mid(0, RememberedDesk::kMostOpenGroups);
  }
  return family;
}

TarnPlanView::CPlanViewTree* CDeskMemory::TreeOf(int number) const {
  return desk_.families[number]->Panel()->GetPlanViewTree();
}

}  // namespace TarnClient
