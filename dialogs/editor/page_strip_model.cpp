#include "page_strip_model.h"

#include "window_text.h"

namespace TarnPlanView {

CPageStripModel::CPageStripModel(CPlanDocument* document, QObject* parent)
    : QAbstractListModel(parent), document_(document) {
  connect(document_, &CPlanDocument::SignalChanged, this, &CPageStripModel::OnDocument);
}

int CPageStripModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : document_->Draft().pages.size();
}

int CPageStripModel::FilledOn(int page) const {
  int filled = 0;
  for (int window_no = 1; window_no <= WindowsOfSplit(document_->Draft().pages[page].split_type); ++window_no) {
    if (view_plugin_protocol::IsFilled(document_->Draft().Window(page, window_no))) {
      ++filled;
    }
  }
  return filled;
}

bool CPageStripModel::IsFilled(const QModelIndex& index, int window_no) const {
  return view_plugin_protocol::IsFilled(document_->Draft().Window(index.row(), window_no));
}

QVariant CPageStripModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) {
    return QVariant();
  }
  const auto& page = document_->Draft().pages[index.row()];
  switch (role) {
    case Qt::DisplayRole:
      return QString::number(index.row() + 1);
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
      return tr("Page %1: %2 of %3 windows filled, shown for %4")
          .arg(index.row() + 1)
          .arg(FilledOn(index.row()))
          .arg(WindowsOfSplit(page.split_type))
          .arg(CWindowText::Dwell(page.dwell_seconds));
    case SplitRole:
      return page.split_type;
    case DwellRole:
      return CWindowText::Dwell(page.dwell_seconds);
    default:
      return QVariant();
  }
}

Qt::ItemFlags CPageStripModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags base = QAbstractListModel::flags(index);
  if (!index.isValid()) {
    return base | Qt::ItemIsDropEnabled;
  }
  return base | Qt::ItemIsDragEnabled;
}

void CPageStripModel::OnDocument(int change, int page) {
  if (change & CPlanDocument::PagesChanged) {
    beginResetModel();
    endResetModel();
  } else if ((change & CPlanDocument::PageChanged) && page >= 0 && page < rowCount()) {
    Q_EMIT dataChanged(index(page), index(page));
  }
}

}  // namespace TarnPlanView
