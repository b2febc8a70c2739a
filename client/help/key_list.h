#pragma once

#include <QList>
#include <QStandardItemModel>

#include "MarUIControl/key_guide.h"

class QAction;

namespace TarnClient {

/// The keys of these actions, those without keys left out.
QList<MarUIControl::KeyEntry> KeysOf(const QList<QAction*>& actions, const QString& group);

/// Keys by group: a row for each group, below it one for each thing that keys do, with the keys in the second column.
/// Groups stand in the order in which they come first. Thread: GUI.
class CKeyList : public QStandardItemModel {
  Q_OBJECT
 public:
  enum Column { What, Keys, kColumns };

  explicit CKeyList(const QList<MarUIControl::KeyEntry>& keys, QObject* parent = nullptr);
};

}  // namespace TarnClient
