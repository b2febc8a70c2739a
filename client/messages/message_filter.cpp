#include "messages/message_filter.h"

#include <algorithm>

#include "messages/message_log.h"

namespace TarnClient {

void CMessageFilter::SetText(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

void CMessageFilter::SetKind(int kind) {
  kind_ = kind;
  invalidateFilter();
}

bool CMessageFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  const QModelIndex message = sourceModel()->index(row, 0, parent);
  const QString text = message.data(CMessageLog::PlainTextRole).toString();
  const auto stands_there = [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); };
  return (kind_ == kAllKinds || kind_ == message.data(CMessageLog::KindRole).toInt()) &&
         std::all_of(words_.begin(), words_.end(), stands_there);
}

}  // namespace TarnClient
