#include "window/main_menu.h"

#include <QToolButton>
#include <utility>

#include "window/window_actions.h"

namespace TarnClient {

CMainMenu::CMainMenu(CWindowActions* actions, PlanEntries plans, WallEntries wall, Parts last, QWidget* parent)
    : QMenu(parent), actions_(actions), plans_(std::move(plans)), wall_(std::move(wall)), last_(std::move(last)) {
  setObjectName(QStringLiteral("main_menu"));
  setAccessibleName(actions_->Of(WindowCommand::Menu)->text());
  setToolTipsVisible(true);
}

void CMainMenu::Fill() {
  clear();
  delete plan_entries_;
  plan_entries_ = new QObject(this);
  addActions(plans_(plan_entries_));
  addSeparator();
  AddPart({WindowCommand::Save, WindowCommand::SaveAs});
  addActions(wall_());
  AddPart({WindowCommand::ShowInTree, WindowCommand::PlayAgain, WindowCommand::FullScreen});
  for (const QVector<WindowCommand>& part : last_) {
    AddPart(part);
  }
}

// A line at the end of a menu is not shown.
void CMainMenu::AddPart(const QVector<WindowCommand>& commands) {
  for (const WindowCommand command : commands) {
    addAction(actions_->Of(command));
  }
  addSeparator();
}

void CMainMenu::OpenAbove(const QToolButton* button) {
  if (isVisible()) {
    return;
  }
  Fill();
  const QSize size = sizeHint();
  popup(button->mapToGlobal(QPoint(button->width() - size.width(), -size.height())));
  for (QAction* action : actions()) {
    if (action->isEnabled() && action->isVisible() && !action->isSeparator()) {
      setActiveAction(action);
      return;
    }
  }
}

}  // namespace TarnClient
