#include "WidgetKit/new_search_line.h"

#include <QAction>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>

#include "MarUIControl/return_key.h"
#include "WidgetKit/typed_search.h"

namespace WidgetKit {

namespace {

constexpr int kPauseMs = 300;

}  // namespace

class CNewSearchLine::Private {
 public:
  void Take(TypedSearch::Step step) {
    if (step == TypedSearch::Step::Await && as_typed) {
      pause.start(kPauseMs);
    } else if (step != TypedSearch::Step::Nothing) {
      pause.stop();
    }
  }

  TypedSearch typed;
  QTimer pause;
  bool as_typed = false;
  bool is_typed_search = false;
};

CNewSearchLine::CNewSearchLine(QWidget* parent) : CLineEdit(parent), search_(new Private) {
  setProperty("search_line", true);
  setClearButtonEnabled(true);
  if (auto* clear = findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction"))) {
    clear->setText(tr("Clear the search"));  // it shows a picture only
  }
  QAction* search = addAction(QIcon(QStringLiteral(":/TarnHost/icons/search.svg")), QLineEdit::LeadingPosition);
  search->setText(tr("Search"));
  connect(search, &QAction::triggered, this, &CNewSearchLine::Request);
  search_->pause.setSingleShot(true);
  connect(&search_->pause, &QTimer::timeout, this, &CNewSearchLine::OnPause);
  connect(this, &QLineEdit::textEdited, this,
          [this](const QString& text) { search_->Take(search_->typed.OnText(text, true)); });
  connect(this, &QLineEdit::textChanged, this,
          [this](const QString& text) { search_->Take(search_->typed.OnText(text, false)); });
}

CNewSearchLine::~CNewSearchLine() = default;

void CNewSearchLine::SetSearchesAsTyped(bool as_typed) {
  search_->as_typed = as_typed;
  search_->pause.stop();
}

bool CNewSearchLine::IsTypedSearch() const {
  return search_->is_typed_search;
}

void CNewSearchLine::DropWait() {
  search_->typed.DropWait();
  search_->pause.stop();
}

void CNewSearchLine::ForgetSearched() {
  search_->typed.ForgetSearched();
}

void CNewSearchLine::Request() {
  search_->Take(search_->typed.OnRequest());
  Q_EMIT SignalSearch();
}

// A receiver may end the field.
void CNewSearchLine::OnPause() {
  if (search_->typed.OnPause() != TypedSearch::Step::Search) {
    return;
  }
  const QPointer<CNewSearchLine> alive(this);
  search_->is_typed_search = true;
  Q_EMIT SignalSearch();
  if (alive) {
    search_->is_typed_search = false;
  }
}

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
    const bool had_text = !text().isEmpty();
    event->setAccepted(had_text || isSignalConnected(QMetaMethod::fromSignal(&CNewSearchLine::SignalLeave)));
    clear();
    if (!had_text || search_->as_typed) {
      Q_EMIT SignalLeave();
    }
    return;
  }
  if (search_->as_typed && event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier) {
    event->accept();
    if (search_->pause.isActive()) {
      Request();  // the hits of before are not those meant
    } else {
      Q_EMIT SignalToHits();
    }
    return;
  }
  CLineEdit::keyPressEvent(event);
  if (MarUIControl::IsReturn(event->key())) {
    event->accept();  // not for the default button of a dialog around
    Request();
  }
}

}  // namespace WidgetKit
