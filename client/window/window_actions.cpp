#include "window/window_actions.h"

#include <QAction>
#include <QIcon>
#include <QShortcut>
#include <QToolButton>
#include <QWidget>

#include "MarUIControl/key_guide.h"

namespace TarnClient {

namespace {

constexpr QSize kIconSize(20, 20);
constexpr char kWhyNot[] = "why_not";

struct Look {
  const char* text;
  const char* icon;  // null for none
  QKeySequence keys;
};

std::array<Look, kWindowCommands> Looks() {
  return {{
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Save the plan"), "save", Qt::CTRL | Qt::Key_S},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Save as a new plan..."), nullptr,
       Qt::CTRL | Qt::SHIFT | Qt::Key_S},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Ways to save"), "drop_down", {}},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Plans played lately"), "history", Qt::CTRL | Qt::Key_H},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Messages"), "messages", Qt::CTRL | Qt::Key_M},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Switch user"), "user", Qt::CTRL | Qt::Key_U},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Lock the desk, and unlock it"), nullptr, Qt::CTRL | Qt::Key_L},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Settings"), "settings", Qt::CTRL | Qt::Key_Comma},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Show in tree"), "show_in_tree", Qt::CTRL | Qt::Key_T},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Play again"), nullptr, Qt::CTRL | Qt::Key_R},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "New wall"), nullptr, Qt::CTRL | Qt::SHIFT | Qt::Key_W},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Close this wall"), nullptr, {}},  // no key, as for "Quit"
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Live view on the whole screen, and back"), nullptr,
       Qt::Key_F11},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Menu"), "menu", Qt::Key_F10},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Keys"), nullptr, Qt::Key_F1},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "About this program"), nullptr, {}},
      {QT_TRANSLATE_NOOP("TarnClient::CWindowActions", "Quit"), nullptr, {}},  // no key: a slip would close the wall
  }};
}

}  // namespace

CWindowActions::CWindowActions(QWidget* window) : QObject(window) {
  const auto looks = Looks();
  for (size_t command = 0; command < looks.size(); ++command) {
    const Look& look = looks[command];
    Action& one = actions_[command];
    one.tip = tr(look.text);
    one.action = new QAction(one.tip, this);
    if (look.icon) {
      one.action->setIcon(QIcon(QStringLiteral(":/TarnClient/images/%1.svg").arg(QLatin1String(look.icon))));
    }
    one.action->setShortcut(look.keys);
    one.action->setAutoRepeat(false);
    one.action->setShortcutVisibleInContextMenu(true);
    window->addAction(one.action);
    RenewTip(one);
  }
}

QList<QAction*> CWindowActions::All() const {
  QList<QAction*> all;
  for (const Action& one : actions_) {
    all << one.action;
  }
  return all;
}

void CWindowActions::Connect(WindowCommand command, const std::function<void()>& run) {
  QAction* action = Of(command);
  connect(action, &QAction::triggered, this, run);
  if (action->shortcut().isEmpty()) {
    return;
  }
  auto* keys_while_off = new QShortcut(action->shortcut(), static_cast<QWidget*>(parent()));
  keys_while_off->setAutoRepeat(false);
  const auto renew = [action, keys_while_off] { keys_while_off->setEnabled(!action->isEnabled()); };
  connect(action, &QAction::changed, keys_while_off, renew);
  connect(keys_while_off, &QShortcut::activated, this, run);
  renew();
}

void CWindowActions::SetReason(WindowCommand command, const QString& why_not) {
  Action& one = actions_[static_cast<size_t>(command)];
  one.why_not = why_not;
  Renew(one);
}

void CWindowActions::SetLocked(const QString& why_not, const std::function<bool(WindowCommand)>& works_all_the_same) {
  for (int number = 0; number < kWindowCommands; ++number) {
    Action& one = actions_[static_cast<size_t>(number)];
    one.locked.clear();
    if (!works_all_the_same(static_cast<WindowCommand>(number))) {
      one.locked = why_not;
    }
    Renew(one);
  }
}

void CWindowActions::Renew(const Action& one) {
  RenewTip(one);
  one.action->setEnabled(one.why_not.isEmpty() && one.locked.isEmpty());
}

void CWindowActions::SetTipText(WindowCommand command, const QString& text) {
  Action& one = actions_[static_cast<size_t>(command)];
  one.tip = text;
  RenewTip(one);
}

void CWindowActions::RenewTip(const Action& one) {
  const QString& why_not = one.locked.isEmpty() ? one.why_not : one.locked;
  one.action->setProperty(kWhyNot, why_not);
  one.action->setToolTip(MarUIControl::TipWithKeys(one.tip, one.action->shortcuts(), why_not));
}

void BindButton(QToolButton* button, QAction* action) {
  button->setDefaultAction(action);
  button->setIconSize(kIconSize);
  const auto renew = [button, action] {
    button->setAccessibleName(action->text());
    button->setAccessibleDescription(action->property(kWhyNot).toString());
  };
  QObject::connect(action, &QAction::changed, button, renew);
  renew();
}

}  // namespace TarnClient
