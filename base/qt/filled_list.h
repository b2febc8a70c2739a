#pragma once

#include <QList>

namespace TarnQt {

/// Appends a record for each of `sources`, made where it stands: `fill` gets an empty one and its source. Qt 5, whose
/// lists hold pointers to records as large as ours, makes them one by one.
template <class Record, class Sources, class Fill>
void AppendFilled(QList<Record>* records, const Sources& sources, const Fill& fill) {
  const auto first = records->size();
  const auto count = static_cast<int>(sources.size());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  records->resize(first + count);
#else
  records->reserve(first + count);
  for (int at = 0; at < count; ++at) {
    records->append(Record());
  }
#endif
  auto record = records->begin() + first;
  for (const auto& source : sources) {
    fill(&*record++, source);
  }
}

}  // namespace TarnQt
