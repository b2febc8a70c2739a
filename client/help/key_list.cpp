#include "help/key_list.h"

#include <QAction>
#include <QHash>

namespace TarnClient {

namespace {

QStandardItem* NewItem(const QString& text) {
  auto* item = new QStandardItem(text);
  item->setEditable(false);
  return item;
}

}  // namespace

QList<MarUIControl::KeyEntry> KeysOf(const QList<QAction*>& actions, const QString& group) {
  QList<MarUIControl::KeyEntry> keys;
  for (const QAction* action : actions) {
    if (!action->shortcut().isEmpty()) {
      keys.append({group, action->shortcuts(), action->text()});
    }
  }
  return keys;
}

CKeyList::CKeyList(const QList<MarUIControl::KeyEntry>& keys, QObject* parent) : QStandardItemModel(parent) {
  setColumnCount(kColumns);
  QHash<QString, QStandardItem*> groups;
  for (const MarUIControl::KeyEntry& entry : keys) {
    QStandardItem*& group = groups[entry.group];
    if (!group) {
      group = NewItem(entry.group);
      QFont font = group->font();
      font.setBold(true);
      group->setFont(font);
      group->setSelectable(false);
      QStandardItem* beside = NewItem(QString());
      beside->setSelectable(false);
      appendRow({group, beside});
    }
    QStandardItem* what = NewItem(entry.text);
    QStandardItem* shown = NewItem(MarUIControl::TextOfKeys(entry.keys));
    what->setData(QStringLiteral("%1: %2").arg(entry.text, shown->text()), Qt::AccessibleTextRole);
    group->appendRow({what, shown});
  }
}

}  // namespace TarnClient
