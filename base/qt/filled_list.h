#pragma once

#include <QList>

namespace TarnQt {

/// Makes the list's records from `sources`, one of each, where they stand: `fill` gets an empty record and its source.
/// Qt 5, whose lists hold pointers to records as large as ours, makes them one by one.
template <class Record, class Sources, class Fill>
void FillList(QList<Record>* records, const Sources& sources, const Fill& fill) {
  const auto count = static_cast<int>(sources.size());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  records->resize(count);
#else
  records->clear();
  records->reserve(count);
  for (int at = 0; at < count; ++at) {
    records->append(Record());
  }
#endif
  auto record = records->begin();
  for (const auto& source : sources) {
    fill(&*record++, source);
  }
}

}  // namespace TarnQt
