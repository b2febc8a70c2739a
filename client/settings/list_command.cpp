#include "settings/list_command.h"

#include <QAbstractItemView>
#include <QAction>
#include <QBoxLayout>

#include "MarUIControl/key_guide.h"
#include "MarUIControl/push_button.h"

namespace TarnClient {

QAction* AddListCommand(QAbstractItemView* list, const char* name, const QString& text, const QKeySequence& key,
                        QBoxLayout* column) {
  auto* action = new QAction(text, list->parent());
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  list->addAction(action);
  auto* button = new MarUIControl::CPushButton(list->parentWidget());
  button->setObjectName(QString::fromLatin1(name));
  button->setText(text);
  button->setAutoDefault(false);
  QList<QKeySequence> keys;
  if (!key.isEmpty()) {
    keys.append(key);
  }
  button->setToolTip(MarUIControl::TipWithKeys(text, keys));
  column->addWidget(button);
  QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
  QObject::connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
  return action;
}

}  // namespace TarnClient
