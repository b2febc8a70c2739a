#include "settings/wall_memory.h"

#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QEvent>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>

#include "plans/plan_family.h"
#include "window/window_place.h"

namespace TarnClient {

namespace {

bool ArePlansLoaded() {
  return TarnPlanView::CViewModelDataManagerExport::Instance().IsViewModelInitFinish();
}

}  // namespace

CWallMemory::CWallMemory(const Parts& parts, QObject* parent) : QObject(parent), parts_(parts) {
  parts_.window->installEventFilter(this);
  connect(parts_.splitter, &QSplitter::splitterMoved, this, &CWallMemory::SignalChanged);
  connect(parts_.tabs, &QTabWidget::currentChanged, this, &CWallMemory::SignalChanged);
  for (int family = 0; family < parts_.families.size(); ++family) {
    Watch(family);
  }
}

void CWallMemory::Watch(int family) {
  connect(TreeOf(family), &QTreeView::expanded, this, &CWallMemory::SignalChanged);
  connect(TreeOf(family), &QTreeView::collapsed, this, &CWallMemory::SignalChanged);
  connect(parts_.families[family]->Panel(), &TarnPlanView::CViewExternWidget::SignalLastSearchesChanged, this,
          &CWallMemory::SignalChanged);
  const QAbstractItemModel* rows = parts_.families[family]->Model();
  awaits_rows_.append(!rows || rows->rowCount() == 0);
  if (rows) {
    connect(rows, &QAbstractItemModel::rowsInserted, this, [this, family](const QModelIndex& above) {
      awaits_rows_[family] = awaits_rows_[family] && above.isValid();
    });
  }
}

bool CWallMemory::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
      Q_EMIT SignalChanged();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void CWallMemory::PlaceWindow(const RememberedWall& wall) {
  if (!wall.window.isEmpty()) {
    const QVector<ScreenPlace> screens = ScreensNow();
    const QRect place = FollowScreen(screens, wall.window, {wall.screen, wall.screen_place});
    parts_.window->setGeometry(WindowPlaceOn(RoomsOf(screens), place));
  }
  Qt::WindowStates state = parts_.window->windowState();
  state.setFlag(Qt::WindowMaximized, wall.is_maximized || state.testFlag(Qt::WindowMaximized));
  state.setFlag(Qt::WindowFullScreen, wall.is_full_screen);
  parts_.window->setWindowState(state);
}

void CWallMemory::Restore(const RememberedWall& wall) {
  if (wall.side_width > 0) {
    const int all = parts_.splitter->width();
    parts_.splitter->setSizes({wall.side_width, qMax(1, all - wall.side_width)});
  }
  parts_.tabs->setCurrentIndex(qMin(wall.shown_family, parts_.tabs->count() - 1));
  last_played_ = wall.last_played;
  for (int number = 0; number < parts_.families.size(); ++number) {
    const RememberedWall::Family family = wall.families.value(number);
    TreeOf(number)->SetOpenGroups(family.open_groups);
    parts_.families[number]->Panel()->SetLastSearches(family.searches);
  }
}

void CWallMemory::SetPlayed(const QString& code, bool is_group) {
  last_played_ = {code, is_group};
  Q_EMIT SignalChanged();
}

RememberedWall CWallMemory::Now(const RememberedWall& last) const {
  RememberedWall wall;
  wall.number = parts_.number;
  wall.window = parts_.window->normalGeometry();
  wall.is_maximized = parts_.window->isMaximized();
  wall.is_full_screen = parts_.window->isFullScreen();
  wall.screen = parts_.window->screen()->name();
  wall.screen_place = parts_.window->screen()->geometry();
  wall.side_width = last.side_width;  // while the wall has the whole screen
  if (!parts_.tabs->isHidden()) {
    wall.side_width = parts_.splitter->sizes().value(0);
  }
  wall.shown_family = parts_.tabs->currentIndex();
  wall.last_played = last_played_;
  for (int number = 0; number < parts_.families.size(); ++number) {
    wall.families.append(FamilyNow(number, last));
  }
  return wall;
}

// During a load, the trees do not show what the user left open.
RememberedWall::Family CWallMemory::FamilyNow(int number, const RememberedWall& last) const {
  RememberedWall::Family family = last.families.value(number);
  family.searches = parts_.families[number]->Panel()->GetLastSearches();
  if (!awaits_rows_[number] && ArePlansLoaded()) {
    family.open_groups = TreeOf(number)->GetOpenGroups().mid(0, RememberedWall::kMostOpenGroups);
  }
  return family;
}

TarnPlanView::CPlanViewTree* CWallMemory::TreeOf(int number) const {
  return parts_.families[number]->Panel()->GetPlanViewTree();
}

}  // namespace TarnClient
