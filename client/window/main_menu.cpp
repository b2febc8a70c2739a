#include "window/main_menu.h"

#include <QToolButton>
#include <utility>

#include "window/window_actions.h"

namespace TarnClient {

CMainMenu::CMainMenu(CWindowActions* actions, PlanEntries plans, WallEntries wall, QWidget* parent)
    : QMenu(parent), actions_(actions), plans_(std::move(plans)), wall_(std::move(wall)) {
  setObjectName(QStringLiteral("main_menu"));
  setAccessibleName(actions_->Of(WindowCommand::Menu)->text());
  setToolTipsVisible(true);
}

void CMainMenu::Fill() {
  clear();
  delete plan_entries_;
  plan_entries_ = new QObject(this);
  const auto add = [this](std::initializer_list<WindowCommand> commands) {
    for (const WindowCommand command : commands) {
      addAction(actions_->Of(command));
    }
    addSeparator();
  };
  addActions(plans_(plan_entries_));
  addSeparator();
  add({WindowCommand::Save, WindowCommand::SaveAs});
  addActions(wall_());
  add({WindowCommand::ShowInTree, WindowCommand::PlayAgain});
  add({WindowCommand::History, WindowCommand::Messages});
  add({WindowCommand::Users, WindowCommand::Settings});
  add({WindowCommand::Keys, WindowCommand::About});
  addAction(actions_->Of(WindowCommand::Quit));
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
