#include "TarnUIDataController/popup_menu.h"

#include <QGuiApplication>
#include <QPointer>
#include <algorithm>
#include <utility>
#include <vector>

#include "MarUIControl/screen_room.h"

namespace tarn_ui_data_controller {

class CPopupMenu::Private {
 public:
  QAction* Item(MsgType type) const {
    for (const auto& [item_type, item] : items) {
      if (item_type == type) {
        return item;
      }
    }
    return nullptr;
  }

  std::vector<std::pair<MsgType, QPointer<QAction>>> items;
  std::vector<QPointer<QAction>> more;
  QAction* line_before_more = nullptr;  // the menu leaves it out where nothing stands above or below it
  QVariant data;
};

namespace {

QPoint Within(const QRect& area, const QPoint& point) {
  return {qBound(area.left(), point.x(), area.right()), qBound(area.top(), point.y(), area.bottom())};
}

}  // namespace

CPopupMenu::CPopupMenu(QWidget* parent) : QMenu(parent), d_(new Private) {
  setToolTipsVisible(true);
  d_->line_before_more = addSeparator();
}

CPopupMenu::~CPopupMenu() = default;

QAction* CPopupMenu::AddMenuItem(MsgType type, const QString& text) {
  if (QAction* there = MenuItem(type)) {
    there->setText(text);
    return there;
  }
  auto* item = new QAction(text, this);
  connect(item, &QAction::triggered, this, [this, type] { Q_EMIT signalPopupMenuClicked(type, QVariant(d_->data)); });
  insertAction(d_->line_before_more, item);
  d_->items.emplace_back(type, item);
  return item;
}

QAction* CPopupMenu::MenuItem(MsgType type) const {
  return d_->Item(type);
}

void CPopupMenu::SetMenuItemVisible(MsgType type, bool visible) {
  if (QAction* item = MenuItem(type)) {
    item->setVisible(visible);
  }
}

void CPopupMenu::SetMenuItemEnabled(MsgType type, bool enabled, const QString& reason) {
  if (QAction* item = MenuItem(type)) {
    item->setEnabled(enabled);
    item->setToolTip(enabled ? QString() : reason);
  }
}

void CPopupMenu::SetMoreActions(const QList<QAction*>& actions) {
  for (const auto& action : std::exchange(d_->more, {})) {
    if (action) {
      removeAction(action);
    }
  }
  for (QAction* action : actions) {
    if (action) {
      addAction(action);
      d_->more.emplace_back(action);
    }
  }
}

void CPopupMenu::SetMenuData(const QVariant& about) {
  d_->data = about;
}

void CPopupMenu::PopupAt(const QPoint& global_position) {
  const QList<QAction*> all = actions();
  const bool any =
      std::any_of(all.begin(), all.end(), [](const QAction* one) { return one->isVisible() && !one->isSeparator(); });
  if (any) {
    const QRect room = MarUIControl::RoomAround(global_position, QGuiApplication::primaryScreen());
    popup(Within(room, global_position));
  }
}

}  // namespace tarn_ui_data_controller
