#include "window/desk_lock.h"

#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "MarUIControl/modal_tip_dialog.h"
#include "help/help_window.h"
#include "log_in/lock_bar.h"
#include "log_in/log_in_dialog.h"
#include "plans/plan_family.h"
#include "wall/live_wall.h"
#include "window/close_popups.h"
#include "window/desk_window.h"
#include "window/window_actions.h"

namespace TarnClient {

namespace {

bool IsIn(const QWidget* widget, const QWidget* place) {
  return widget == place || place->isAncestorOf(widget);
}

// In a narrow window they stand in the menu of one more.
bool IsMoreButton(const QWidget* widget) {
  return widget && widget->objectName() == QLatin1String("wall_more_btn");
}

// The buttons of the wall's bar.
bool IsPageTurn(const QWidget* widget) {
  const QStringList names{QStringLiteral("wall_previous_btn"), QStringLiteral("wall_pause_btn"),
                          QStringLiteral("wall_next_btn")};
  return names.contains(widget->objectName()) || IsMoreButton(widget);
}

// The buttons that turn pages have their keys while the focus is on them.
bool IsKeyOfPageTurn(const QObject* command) {
  const QWidget* focus = QApplication::focusWidget();
  if (!focus || !IsPageTurn(focus)) {
    return false;
  }
  const QList<QAction*> keys = focus->actions();
  return std::find(keys.begin(), keys.end(), command) != keys.end();
}

// Who it is, and the list of keys and the menus over that; what else is in the menu of page turns is off. Besides what
// is asked at the end of a session or before another user comes: nothing goes on until it is answered.
bool IsOfUnlocking(const QWidget* widget) {
  const QWidget* window = widget->window();
  if (qobject_cast<const MarUIControl::CModalTipDialog*>(window) || qobject_cast<const CHelpWindow*>(window) ||
      IsMoreButton(window->parentWidget())) {
    return true;
  }
  while (widget && !qobject_cast<const CLogInDialog*>(widget)) {
    widget = widget->parentWidget();
  }
  return widget != nullptr;
}

DeskPlace PlaceOnDesk(const CDeskWindow& window, const QWidget* widget) {
  for (const CPlanFamily* family : window.Desk().Families()) {
    const QWidget* rows = family->Panel()->GetPlanViewTree();
    const bool is_editor = widget->inherits("QLineEdit");  // a name that was being changed
    if (IsIn(widget, rows) && !is_editor) {
      return DeskPlace::Rows;
    }
  }
  if (IsIn(widget, window.Desk().Tabs()->tabBar())) {
    return DeskPlace::Tabs;
  }
  if (IsPageTurn(widget)) {
    return DeskPlace::PageTurns;
  }
  return IsIn(widget, &window.Wall()) ? DeskPlace::Wall : DeskPlace::Elsewhere;
}

}  // namespace

CDeskLock::CDeskLock(Windows windows, QObject* parent) : QObject(parent), windows_(std::move(windows)) {}

void CDeskLock::Lock(const QString& text) {
  if (!filter_) {
    CloseAllPopups();
    HideOthers();
    filter_ = std::make_unique<CLockFilter>([this](const QWidget* widget) { return PlaceOf(widget); },
                                            [this](const QObject* command) { return IsOn(command); }, nullptr);
    connect(filter_.get(), &CLockFilter::SignalRefused, this, [](QWidget* window) {
      if (auto* bar = window->findChild<CLockBar*>()) {
        bar->Button()->setFocus(Qt::OtherFocusReason);
      }
    });
  }
  ShowSigns(text);
}

void CDeskLock::Unlock() {
  const QVector<QPointer<QWidget>> hidden = std::exchange(hidden_, {});
  End();
  for (const QPointer<QWidget>& window : hidden) {
    if (window) {
      window->show();
    }
  }
}

void CDeskLock::HandOver() {
  for (const QPointer<QWidget>& window : std::exchange(hidden_, {})) {
    if (window) {
      window->close();
    }
  }
  End();
}

void CDeskLock::End() {
  if (filter_) {
    filter_.reset();
    ShowSigns(QString());
  }
}

void CDeskLock::ShowSigns(const QString& text) {
  for (CDeskWindow* window : windows_()) {
    window->ShowLock(text);
  }
}

// What is open beside the walls may show more than is to be seen. A question cannot wait hidden: who asked goes on with
// an answer.
void CDeskLock::HideOthers() {
  const QVector<CDeskWindow*> walls = windows_();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool is_wall = std::find(walls.begin(), walls.end(), window) != walls.end();
    const bool asks_who_it_is = qobject_cast<CLogInDialog*>(window) != nullptr;
    if (is_wall || asks_who_it_is || !window->isVisible() || window->windowType() != Qt::Dialog) {
      continue;
    }
    if (auto* question = qobject_cast<MarUIControl::CModalTipDialog*>(window)) {
      question->reject();
    } else {
      hidden_.append(window);
      window->hide();
    }
  }
}

DeskPlace CDeskLock::PlaceOf(const QWidget* widget) const {
  if (IsOfUnlocking(widget)) {
    return DeskPlace::LockSign;
  }
  for (const CDeskWindow* window : windows_()) {
    if (!IsIn(widget, window)) {
      continue;
    }
    const auto* bar = window->findChild<CLockBar*>();
    return bar && IsIn(widget, bar) ? DeskPlace::LockSign : PlaceOnDesk(*window, widget);
  }
  return DeskPlace::Elsewhere;
}

bool CDeskLock::IsOn(const QObject* command) const {
  if (IsKeyOfPageTurn(command)) {
    return true;
  }
  for (const CDeskWindow* window : windows_()) {
    for (int number = 0; number < kWindowCommands; ++number) {
      const auto of_window = static_cast<WindowCommand>(number);
      if (window->Actions().Of(of_window) == command) {
        return WorksWhileLocked(of_window);
      }
    }
  }
  return false;
}

}  // namespace TarnClient
