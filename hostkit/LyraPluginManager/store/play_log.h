#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Which plan was played when and by whom, for 90 days. Throws CStoreError. Thread: the engine's.
class CPlayLog {
 public:
  struct Entry {
    int32_t user = 0;
    QString name;
    bool automatic = false, from_history = false;
  };

  explicit CPlayLog(CSqlEngine& engine) : engine_(engine) {}

  /// Adds an entry, and forgets old ones: once a day, and of many a part each time, so that no one waits for all of
  /// them. Inside the caller's transaction.
  void Add(const Entry& entry, const QDateTime& now);

 private:
  void ForgetOld(const QDateTime& now);

  CSqlEngine& engine_;
  std::optional<QDate> looked_on_;
};

}  // namespace TarnHost::Store
