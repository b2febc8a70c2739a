#include "panel_actions.h"

#include <QAction>
#include <QToolButton>
#include <utility>

#include "current_skin.h"
#include "view_extern_widget.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

constexpr QSize kBarIconSize(20, 20);

// How a command is shown where it has a button; menus have texts of their own.
struct Look {
  const char* name;
  const char* keys;
  const char* icon;
};

constexpr Look kLooks[] = {
    {QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "New group"), "Ctrl+Shift+N", "bar_add_group"},
    {QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "New plan"), "Ctrl+N", "bar_add_plan"},
    {QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "Edit"), "F2", "bar_edit"},
    {QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "Delete"), "Del", "bar_delete"},
    {QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "Search"), "Ctrl+F", "bar_search"},
};

QIcon BarIcon(const char* name) {
  const QString path = QStringLiteral(":/Images/TarnPlanView/%1.svg").arg(QLatin1String(name));
  return QIcon(CViewPublicDef::GetDarkPath(path, IsCurrentSkinDark()));
}

}  // namespace

CPanelActions::CPanelActions(QObject* parent) : QObject(parent) {
  for (QAction*& action : actions_) {
    action = new QAction(this);
  }
  for (size_t command = 0; command < std::size(kLooks); ++command) {
    actions_[command]->setText(CViewExternWidget::tr(kLooks[command].name));
  }
}

QKeySequence CPanelActions::KeysOf(PlanCommand command) {
  const auto number = static_cast<size_t>(command);
  if (number >= std::size(kLooks)) {
    return QKeySequence();
  }
  return QKeySequence(QLatin1String(kLooks[number].keys));
}

QList<MarUIControl::KeyEntry> CPanelActions::Keys() {
  QList<MarUIControl::KeyEntry> keys;
  for (const Look& look : kLooks) {
    keys.append({CViewExternWidget::tr("Plans and groups"),
                 {QKeySequence(QLatin1String(look.keys))},
                 CViewExternWidget::tr(look.name)});
  }
  keys.append({CViewExternWidget::tr("Plans and groups"),
               {QKeySequence(QKeySequence::Undo)},
               CViewExternWidget::tr("Undo the last deletion or move, while it is offered")});
  return keys;
}

void CPanelActions::Bind(PlanCommand command, QToolButton* button) {
  QAction* action = Of(command);
  button->setDefaultAction(action);
  button->setAccessibleName(action->text());
  button->setIconSize(kBarIconSize);
  button->setFocusPolicy(Qt::TabFocus);
  // Only what changes here: the host may have hidden the button itself.
  connect(action, &QAction::changed, button, [action, button, shown = true]() mutable {
    const bool was_shown = std::exchange(shown, action->isVisible());
    if (was_shown != shown) {
      button->setVisible(shown);
    }
  });
}

void CPanelActions::Show(const CommandStates& states) {
  for (size_t command = 0; command < std::size(kLooks); ++command) {
    const CommandState& state = states[static_cast<PlanCommand>(command)];
    QString why_not;
    if (!state.button_enabled) {
      why_not = TextOf(state.reason);
    }
    const QKeySequence keys = KeysOf(static_cast<PlanCommand>(command));
    actions_[command]->setToolTip(MarUIControl::TipWithKeys(actions_[command]->text(), {keys}, why_not));
  }
  for (size_t command = 0; command < actions_.size(); ++command) {
    const CommandState& state = states[static_cast<PlanCommand>(command)];
    actions_[command]->setVisible(state.shown);
    actions_[command]->setEnabled(state.button_enabled);
  }
}

void CPanelActions::Run(PlanCommand command, const CommandState& state, const QString& code) {
  if (state.enabled) {
    QAction* action = Of(command);
    action->setData(code);
    // Not trigger(): the state is that of now, and what the buttons show may be older, which Qt 6 would go by.
    Q_EMIT action->triggered(false);
  } else if (state.reason != Refusal::None) {
    Q_EMIT SignalRefused(TextOf(state.reason));
  }
}

void CPanelActions::RenewIcons() {
  for (size_t command = 0; command < std::size(kLooks); ++command) {
    actions_[command]->setIcon(BarIcon(kLooks[command].icon));
  }
}

}  // namespace TarnPlanView
