#include "WidgetKit/new_location_view_widget.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <optional>

#include "WidgetKit/hit_list.h"
#include "WidgetKit/row_scanner.h"

namespace WidgetKit {

namespace {

constexpr char kLocatedText[] = "_located_text_";
constexpr int kTypingMs = 150;
constexpr int kFirstRenewMs = 50;
constexpr int kLastRenewMs = 1000;
constexpr int kMostRowsCompared = 64;

// The step that a key asks for; none for other keys. Return alone is the search's own key.
std::optional<int> StepOf(const QKeyEvent& event) {
  const bool back = event.modifiers() & Qt::ShiftModifier;
  switch (event.key()) {
    case Qt::Key_F3:
      return back ? -1 : 1;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return back ? std::optional<int>(-1) : std::nullopt;
    case Qt::Key_Down:
      return 1;
    case Qt::Key_Up:
      return -1;
    default:
      return std::nullopt;
  }
}

void ExpandTo(QAbstractItemView* view, const QModelIndex& index) {
  auto* tree = qobject_cast<QTreeView*>(view);
  const QModelIndex parent = index.parent();
  if (!tree || !parent.isValid() || parent == tree->rootIndex()) {
    return;
  }
  ExpandTo(view, parent);
  tree->expand(parent);
}

// Whoever follows the current row may take away the row or the view.
void MoveTo(const QPointer<QAbstractItemView>& view, const QPersistentModelIndex& index) {
  ExpandTo(view, index);
  if (!view || !index.isValid()) {
    return;
  }
  const bool in_sight = view->viewport()->rect().contains(view->visualRect(index).center());
  view->setCurrentIndex(index);
  if (!in_sight && view && index.isValid()) {
    view->scrollTo(index, QAbstractItemView::PositionAtCenter);  // with some of what stands around it
  }
}

}  // namespace

class CNewLocationViewWidget::Private : public QObject {
 public:
  explicit Private(CNewLocationViewWidget* field);

  void SetView(QAbstractItemView* new_view);
  void OnText();
  void Locate();
  void Step(int by);
  void Reset();
  void SetAwaitsRows(bool awaits_rows);
  void PlaceCounter();

  CNewLocationViewWidget* const q;
  QPointer<QAbstractItemView> view;
  QPointer<QAbstractItemModel> watched;
  QString sought;  // empty while nothing is looked for
  RowScanner scanner;
  HitList hits;
  QLabel* counter;
  QTimer typing;  // runs from the last key until looking begins
  QTimer renew;   // runs from a change of the rows until looking begins again
  int renew_ms = kFirstRenewMs;
  bool to_first = false;  // the first hit is to become current
  bool stale = false;     // texts changed while it looked
  bool awaits = false;    // rows for the text are being fetched

 private:
  void Begin();
  void Watch(QAbstractItemModel* model);
  void OnRows();
  void OnTexts(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);
  bool AnyHitChanged(const QModelIndex& first, const QModelIndex& last) const;
  void OnInterrupted();
  void OnFinished(const QVector<QModelIndex>& found, int count);
  void Mark(const QString& text);
  void ShowCount();
  void SetCounter(const QString& text, const QString& spoken);
};

CNewLocationViewWidget::Private::Private(CNewLocationViewWidget* field) : q(field), counter(new QLabel(field)) {
  counter->setObjectName(QStringLiteral("locate_counter"));
  counter->setAttribute(Qt::WA_TransparentForMouseEvents);
  counter->hide();
  typing.setSingleShot(true);
  typing.setInterval(kTypingMs);
  renew.setSingleShot(true);
  connect(&typing, &QTimer::timeout, this, &Private::Locate);
  connect(&renew, &QTimer::timeout, this, &Private::Begin);
  connect(&scanner, &RowScanner::Finished, this, &Private::OnFinished);
  connect(&scanner, &RowScanner::Interrupted, this, &Private::OnInterrupted);
  connect(q, &QLineEdit::textChanged, this, &Private::OnText);
  connect(q, &CNewSearchLine::SignalSearch, this, [this] { Step(1); });
}

void CNewLocationViewWidget::Private::SetView(QAbstractItemView* new_view) {
  if (view == new_view) {
    return;
  }
  Reset();
  Watch(nullptr);
  view = new_view;
  OnText();
}

void CNewLocationViewWidget::Private::OnText() {
  if (!view || q->text().isEmpty()) {
    Reset();
    return;
  }
  typing.start();
}

void CNewLocationViewWidget::Private::Reset() {
  typing.stop();
  renew.stop();
  scanner.Stop();
  hits.Clear();
  to_first = false;
  sought.clear();
  Mark(QString());
  SetCounter(QString(), QString());
}

void CNewLocationViewWidget::Private::Locate() {
  typing.stop();
  if (!view || !view->model() || q->text().isEmpty()) {
    Reset();
    return;
  }
  to_first = true;
  renew_ms = kFirstRenewMs;
  hits.Clear();
  SetCounter(QStringLiteral("\u2026"), CNewLocationViewWidget::tr("Searching"));
  sought = q->text();
  Begin();
  Q_EMIT q->SignalLocating();
}

void CNewLocationViewWidget::Private::Begin() {
  renew.stop();
  if (!view || !view->model()) {
    Reset();
    return;
  }
  stale = false;
  Watch(view->model());
  scanner.Start(watched, view->rootIndex(), sought);
}

void CNewLocationViewWidget::Private::Watch(QAbstractItemModel* model) {
  if (watched == model) {
    return;
  }
  if (watched) {
    disconnect(watched, nullptr, this, nullptr);
  }
  watched = model;
  if (!model) {
    return;
  }
  connect(model, &QAbstractItemModel::rowsInserted, this, &Private::OnRows);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &Private::OnRows);
  connect(model, &QAbstractItemModel::rowsMoved, this, &Private::OnRows);
  connect(model, &QAbstractItemModel::layoutChanged, this, &Private::OnRows);
  connect(model, &QAbstractItemModel::modelReset, this, &Private::OnRows);
  connect(model, &QAbstractItemModel::dataChanged, this, &Private::OnTexts);
}

void CNewLocationViewWidget::Private::OnRows() {
  if (scanner.IsRunning()) {
    scanner.Stop();
    OnInterrupted();
  } else if (!sought.isEmpty() && !renew.isActive()) {
    renew.start(kFirstRenewMs);
  }
}

// A tree that is just being filled changes all the time: the pauses grow until it is left in peace for one look.
void CNewLocationViewWidget::Private::OnInterrupted() {
  renew.start(renew_ms);
  renew_ms = qMin(2 * renew_ms, kLastRenewMs);
}

void CNewLocationViewWidget::Private::OnTexts(const QModelIndex& first, const QModelIndex& last,
                                              const QVector<int>& roles) {
  const bool texts = roles.isEmpty() || roles.contains(Qt::DisplayRole) || roles.contains(Qt::EditRole);
  if (!texts || sought.isEmpty()) {
    return;
  }
  if (scanner.IsRunning()) {
    stale = true;
  } else if (!renew.isActive() && AnyHitChanged(first, last)) {
    renew.start(kFirstRenewMs);
  }
}

bool CNewLocationViewWidget::Private::AnyHitChanged(const QModelIndex& first, const QModelIndex& last) const {
  if (last.row() - first.row() >= kMostRowsCompared || !hits.IsComplete()) {
    return true;
  }
  const QStringMatcher matcher(sought, Qt::CaseInsensitive);
  for (int row = first.row(); row <= last.row(); ++row) {
    const QModelIndex index = first.sibling(row, 0);
    if (RowScanner::Contains(matcher, index) != hits.Contains(index)) {
      return true;
    }
  }
  return false;
}

void CNewLocationViewWidget::Private::OnFinished(const QVector<QModelIndex>& found, int count) {
  if (!view || view->model() != watched) {
    Begin();
    return;
  }
  const QPointer<Private> alive(this);
  renew_ms = kFirstRenewMs;
  hits.Set(found, count);
  Mark(sought);  // together with the move to a hit: one painting for both
  if (to_first) {
    to_first = awaits && count == 0;
    Step(1);
  }
  if (!alive) {
    return;
  }
  ShowCount();
  if (stale && !renew.isActive()) {
    renew.start(kFirstRenewMs);
  }
  Q_EMIT q->SignalLocated(count);
}

void CNewLocationViewWidget::Private::Step(int by) {
  if (!view) {
    return;
  }
  if (typing.isActive() || (view->model() != watched && !q->text().isEmpty())) {
    Locate();
    return;
  }
  const QModelIndex hit = hits.Step(by);
  if (hit.isValid()) {
    ShowCount();
    MoveTo(view, hit);
  }
}

// What was fetched last may still have to be looked through.
void CNewLocationViewWidget::Private::SetAwaitsRows(bool awaits_rows) {
  if (awaits == awaits_rows) {
    return;
  }
  awaits = awaits_rows;
  if (!sought.isEmpty() && !scanner.IsRunning() && !renew.isActive()) {
    to_first = to_first && awaits;
    ShowCount();
  }
}

void CNewLocationViewWidget::Private::Mark(const QString& text) {
  if (view && LocatedText(view) != text) {
    view->setProperty(kLocatedText, text);
    view->viewport()->update();
  }
}

void CNewLocationViewWidget::Private::ShowCount() {
  const int count = hits.Count(), at = hits.Current() + 1;
  if (count == 0 && awaits) {
    SetCounter(QStringLiteral("\u2026"), CNewLocationViewWidget::tr("Searching"));
  } else if (count == 0) {
    SetCounter(CNewLocationViewWidget::tr("No hit"), CNewLocationViewWidget::tr("No hit"));
  } else {
    SetCounter(QStringLiteral("%1/%2").arg(at).arg(count),
               CNewLocationViewWidget::tr("Hit %1 of %2").arg(at).arg(count));
  }
}

void CNewLocationViewWidget::Private::SetCounter(const QString& text, const QString& spoken) {
  counter->setProperty("no_hit", hits.Count() == 0);
  counter->style()->unpolish(counter);
  counter->style()->polish(counter);
  counter->setText(text);
  q->setAccessibleDescription(spoken);
  PlaceCounter();
}

// Between the text and the cross that clears, which the field's own layout puts at the right.
void CNewLocationViewWidget::Private::PlaceCounter() {
  int right = q->width() - 4;
  const auto buttons = q->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  for (const QToolButton* button : buttons) {
    right = button->x() > q->width() / 2 ? qMin(right, button->x() - 2) : right;
  }
  const int width = counter->sizeHint().width();
  const bool fits = !counter->text().isEmpty() && width < q->width() / 2;
  counter->setGeometry(right - width, 0, width, q->height());
  counter->setVisible(fits);
  q->setTextMargins(0, 0, fits ? width + 4 : 0, 0);
}

CNewLocationViewWidget::CNewLocationViewWidget(QWidget* parent) : CNewSearchLine(parent), d_(new Private(this)) {}

CNewLocationViewWidget::~CNewLocationViewWidget() {
  d_->SetView(nullptr);
}

void CNewLocationViewWidget::SetView(QAbstractItemView* view) {
  d_->SetView(view);
}

QAbstractItemView* CNewLocationViewWidget::View() const {
  return d_->view;
}

QString CNewLocationViewWidget::FilterText() const {
  return text();
}

void CNewLocationViewWidget::ClearFilterText() {
  clear();
}

void CNewLocationViewWidget::Locate() {
  d_->Locate();
}

void CNewLocationViewWidget::StepToHit(int by) {
  d_->Step(by);
}

bool CNewLocationViewWidget::IsLocating() const {
  return d_->scanner.IsRunning() || d_->typing.isActive() || d_->renew.isActive();
}

int CNewLocationViewWidget::HitCount() const {
  return d_->hits.Count();
}

QString CNewLocationViewWidget::LocatedText(const QWidget* view) {
  return view ? view->property(kLocatedText).toString() : QString();
}

void CNewLocationViewWidget::SetAwaitsRows(bool awaits) {
  d_->SetAwaitsRows(awaits);
}

void CNewLocationViewWidget::keyPressEvent(QKeyEvent* event) {
  const std::optional<int> step = d_->view ? StepOf(*event) : std::nullopt;
  if (step) {
    event->accept();
    d_->Step(*step);
    return;
  }
  CNewSearchLine::keyPressEvent(event);
}

void CNewLocationViewWidget::resizeEvent(QResizeEvent* event) {
  CNewSearchLine::resizeEvent(event);
  d_->PlaceCounter();
}

}  // namespace WidgetKit
