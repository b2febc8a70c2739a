#pragma once

#include <QList>

namespace TarnQt {

/// A new record at the end of the list, made where it stands. Qt 5, whose lists hold pointers to records as large as
/// ours, copies an empty one.
template <class Record>
Record& AppendNew(QList<Record>* records) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return records->emplaceBack();
#else
  records->append(Record());
  return records->last();
#endif
}

}  // namespace TarnQt
