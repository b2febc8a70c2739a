#include "WidgetKit/new_location_view_widget.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPointer>
#include <QTreeView>

namespace WidgetKit {

namespace {

constexpr char kLocatedText[] = "_located_text_";

}  // namespace

class CNewLocationViewWidget::Private {
 public:
  QPointer<QAbstractItemView> view;
  QList<QPersistentModelIndex> hits;
  int current = -1;
};

CNewLocationViewWidget::CNewLocationViewWidget(QWidget* parent) : CNewSearchLine(parent), d_(new Private) {
  connect(this, &QLineEdit::textChanged, this, [this] { Locate(); });
}

CNewLocationViewWidget::~CNewLocationViewWidget() = default;

void CNewLocationViewWidget::SetView(QAbstractItemView* view) {
  d_->view = view;
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
  d_->hits.clear();
  d_->current = -1;
  if (!d_->view || !d_->view->model()) {
    return;
  }
  d_->view->setProperty(kLocatedText, text());
  d_->view->viewport()->update();
  QAbstractItemModel* model = d_->view->model();
  if (!text().isEmpty()) {
    for (const QModelIndex& hit :
         model->match(model->index(0, 0), Qt::DisplayRole, text(), -1, Qt::MatchContains | Qt::MatchRecursive)) {
      d_->hits.append(hit);
    }
  }
  StepToHit(1);
  Q_EMIT SignalLocated(d_->hits.size());
}

void CNewLocationViewWidget::StepToHit(int by) {
  if (!d_->view || d_->hits.isEmpty()) {
    return;
  }
  const int count = d_->hits.size();
  d_->current = ((d_->current + by) % count + count) % count;
  d_->view->setCurrentIndex(d_->hits.at(d_->current));
}

bool CNewLocationViewWidget::IsLocating() const {
  return false;
}

int CNewLocationViewWidget::HitCount() const {
  return d_->hits.size();
}

QString CNewLocationViewWidget::LocatedText(const QWidget* view) {
  return view ? view->property(kLocatedText).toString() : QString();
}

void CNewLocationViewWidget::keyPressEvent(QKeyEvent* event) {
  CNewSearchLine::keyPressEvent(event);
}

void CNewLocationViewWidget::resizeEvent(QResizeEvent* event) {
  CNewSearchLine::resizeEvent(event);
}

}  // namespace WidgetKit
