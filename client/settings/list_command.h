#pragma once

#include <QKeySequence>

class QAbstractItemView;
class QAction;
class QBoxLayout;

namespace TarnClient {

/// A command about the rows of a list: a button in the column, which says the key, and the key in the list alone, for a
/// filter beside it has its own Delete. An action that is switched off switches the button off. Both go with the list's
/// parent. Thread: GUI.
QAction* AddListCommand(QAbstractItemView* list, const char* name, const QString& text, const QKeySequence& key,
                        QBoxLayout* column);

}  // namespace TarnClient
