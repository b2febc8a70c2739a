#pragma once

#include <QStringList>

#include "moving/site_records.h"

namespace TarnHost::Moving {

/// What is said of an import, a line for each thing.
class CImportReport {
 public:
  void LeaveOut(const QString& named, const QString& why) { left_out.append(named + QStringLiteral(": ") + why); }
  template <class Record>
  void LeaveOut(const char* kind, const Record& record, const QString& why) {
    LeaveOut(Named(kind, record.name, record.code), why);
  }
  /// `file_code`: what it has in the file.
  void NoteTaken(const char* kind, const QString& name, int32_t code, int32_t file_code, const QString& remark = {}) {
    QString line = Named(kind, name, code);
    if (file_code != code) {
      line += QStringLiteral(", %1 in the file").arg(file_code);
    }
    taken.append(line + remark);
  }
  /// `what` is another than before; false for nothing.
  bool NoteChanged(const QString& named, const QStringList& what) {
    if (what.isEmpty()) {
      ++same;
      return false;
    }
    changed.append(named + QStringLiteral(": ") + what.join(QStringLiteral(", ")));
    return true;
  }

  QStringList taken, changed, left_out;
  QStringList remarks;  // what is to be known besides
  int same = 0;         // as they are in the file already
};

inline void AddIf(bool condition, const char* what, QStringList* list) {
  if (condition) {
    list->append(QLatin1String(what));
  }
}

inline const char kNoParent[] = "what it is in is left out or not in the file, or it is below itself";
inline const char kNamesake[] = "there is one of this name in the same place already, and it is another";

}  // namespace TarnHost::Moving
