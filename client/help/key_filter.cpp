#include "help/key_filter.h"

#include <algorithm>

#include "help/key_list.h"

namespace TarnClient {

CKeyFilter::CKeyFilter(QObject* parent) : QSortFilterProxyModel(parent) {
  setRecursiveFilteringEnabled(true);
}

void CKeyFilter::SetText(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

// A group shows for the sake of its keys alone, but its name is looked through as well.
bool CKeyFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return false;
  }
  QString text = parent.data().toString();
  for (int column = 0; column < CKeyList::kColumns; ++column) {
    text += QLatin1Char(' ') + sourceModel()->index(row, column, parent).data().toString();
  }
  return std::all_of(words_.begin(), words_.end(),
                     [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace TarnClient
