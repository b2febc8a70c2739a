#include "WidgetKit/new_location_view_widget.h"

#include <QKeyEvent>
#include <algorithm>

#include "WidgetKit/hit_counter.h"
#include "WidgetKit/row_locator.h"

namespace WidgetKit {

namespace {

struct StepKey {
  int key;
  bool shift;
  int step;
};

// Return alone is the search's own key.
constexpr StepKey kStepKeys[] = {
    {Qt::Key_F3, false, 1},   {Qt::Key_F3, true, -1},  {Qt::Key_Return, true, -1}, {Qt::Key_Enter, true, -1},
    {Qt::Key_Down, false, 1}, {Qt::Key_Down, true, 1}, {Qt::Key_Up, false, -1},    {Qt::Key_Up, true, -1},
};

const StepKey* StepKeyOf(const QKeyEvent& event) {
  const bool shift = event.modifiers() & Qt::ShiftModifier;
  const auto* found = std::find_if(std::begin(kStepKeys), std::end(kStepKeys),
                                   [&](const StepKey& one) { return one.key == event.key() && one.shift == shift; });
  if (found == std::end(kStepKeys)) {
    return nullptr;
  }
  return found;
}

}  // namespace

class CNewLocationViewWidget::Private {
 public:
  explicit Private(CNewLocationViewWidget* field) : counter(new HitCounter(field)) {}

  void ShowCount();

  HitCounter* const counter;  // a child of the field
  RowLocator locator;
  bool searching = false;  // elsewhere
};

void CNewLocationViewWidget::Private::ShowCount() {
  if (searching) {
    counter->ShowAwaiting();
  } else if (locator.IsIdle()) {
    counter->ShowNothing();
  } else if (locator.IsSearching()) {
    counter->ShowSearching();
  } else {
    counter->ShowHits(locator.Hits().Current() + 1, locator.Hits().Count());
  }
}

CNewLocationViewWidget::CNewLocationViewWidget(QWidget* parent) : CNewSearchLine(parent), d_(new Private(this)) {
  RowLocator* locator = &d_->locator;
  connect(this, &QLineEdit::textChanged, locator, &RowLocator::SetText);
  connect(this, &CNewSearchLine::SignalSearch, locator, [locator] { locator->Step(1); });
  connect(locator, &RowLocator::CountChanged, this, [this] { d_->ShowCount(); });
  connect(locator, &RowLocator::Locating, this, &CNewLocationViewWidget::SignalLocating);
  connect(locator, &RowLocator::Located, this, &CNewLocationViewWidget::SignalLocated);
}

CNewLocationViewWidget::~CNewLocationViewWidget() {
  d_->locator.SetView(nullptr);
}

void CNewLocationViewWidget::SetView(QAbstractItemView* view) {
  d_->locator.SetView(view);
}

QAbstractItemView* CNewLocationViewWidget::View() const {
  return d_->locator.View();
}

QString CNewLocationViewWidget::FilterText() const {
  return text();
}

void CNewLocationViewWidget::ClearFilterText() {
  clear();
}

void CNewLocationViewWidget::Locate() {
  d_->locator.Locate();
}

bool CNewLocationViewWidget::IsLocating() const {
  return d_->locator.IsLocating();
}

int CNewLocationViewWidget::HitCount() const {
  return d_->locator.Hits().Count();
}

QString CNewLocationViewWidget::LocatedText(const QWidget* view) {
  return RowLocator::MarkedText(view);
}

void CNewLocationViewWidget::SetAwaitsRows(bool awaits) {
  d_->locator.SetAwaitsRows(awaits);
}

void CNewLocationViewWidget::SetSearching(bool searching) {
  d_->searching = searching;
  d_->ShowCount();
}

void CNewLocationViewWidget::keyPressEvent(QKeyEvent* event) {
  const bool leaves = event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier && text().isEmpty();
  if (leaves && View()) {
    event->accept();
    Q_EMIT SignalToHits();
    return;
  }
  const StepKey* step = StepKeyOf(*event);
  if (step && View()) {
    event->accept();
    d_->locator.Step(step->step);
    return;
  }
  CNewSearchLine::keyPressEvent(event);
}

void CNewLocationViewWidget::resizeEvent(QResizeEvent* event) {
  CNewSearchLine::resizeEvent(event);
  d_->counter->Place();
}

}  // namespace WidgetKit
