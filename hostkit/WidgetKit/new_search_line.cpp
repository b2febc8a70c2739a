#include "WidgetKit/new_search_line.h"

#include <QAction>
#include <QKeyEvent>

#include "MarUIControl/return_key.h"

namespace WidgetKit {

CNewSearchLine::CNewSearchLine(QWidget* parent) : CLineEdit(parent) {
  setProperty("search_line", true);
  setClearButtonEnabled(true);
  QAction* search = addAction(QIcon(QStringLiteral(":/TarnHost/icons/search.svg")), QLineEdit::LeadingPosition);
  search->setToolTip(tr("Search"));
  connect(search, &QAction::triggered, this, &CNewSearchLine::SignalSearch);
}

CNewSearchLine::~CNewSearchLine() = default;

bool CNewSearchLine::event(QEvent* event) {
  // Esc is this field's own while it holds text, before a shortcut of the window takes it.
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel) &&
      !text().isEmpty()) {
    event->accept();
    return true;
  }
  return CLineEdit::event(event);
}

void CNewSearchLine::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    event->setAccepted(!text().isEmpty());
    if (text().isEmpty()) {
      Q_EMIT SignalLeave();
    } else {
      clear();
    }
    return;
  }
  CLineEdit::keyPressEvent(event);
  if (MarUIControl::IsReturn(event->key())) {
    event->accept();  // not for the default button of a dialog around
    Q_EMIT SignalSearch();
  }
}

}  // namespace WidgetKit
