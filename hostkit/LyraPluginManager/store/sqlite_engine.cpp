#include "store/sqlite_engine.h"

namespace TarnHost::Store {
namespace {

// Primary result codes of the SQLite library.
enum ResultCode { kPermission = 3, kBusy = 5, kLocked = 6, kReadOnly = 8, kCorrupt = 11, kNotADatabase = 26 };

}  // namespace

CSqliteEngine::CSqliteEngine(const QString& file, const QString& place)
    : CSqlEngine(QStringLiteral("QSQLITE"), place.isEmpty() ? file : place), file_(file) {}

void CSqliteEngine::Configure(QSqlDatabase* database) const {
  database->setDatabaseName(file_);
}

void CSqliteEngine::Open() {
  OpenDatabase();
  SetPatience(patience_);
  // An acknowledged change must survive a power cut, not only the end of the process.
  RunOnce(QStringLiteral("PRAGMA synchronous = FULL"));
}

void CSqliteEngine::SetPatience(int milliseconds) {
  patience_ = milliseconds;
  if (database_.isOpen()) {
    RunOnce(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
  }
}

// A transaction that reads first and then writes would fail at once when another process wrote in between.
void CSqliteEngine::BeginWrite() {
  RunOnce(QStringLiteral("BEGIN IMMEDIATE"));
}

void CSqliteEngine::BeginRead() {
  RunOnce(QStringLiteral("BEGIN"));
}

bool CSqliteEngine::IsFilled() {
  return Value(QStringLiteral("SELECT 1 FROM sqlite_master WHERE name = 'store_info'")).isValid();
}

bool CSqliteEngine::MayHaveChanged() {
  const int64_t version = Value(QStringLiteral("PRAGMA data_version")).toLongLong();
  const bool changed = version != data_version_;
  data_version_ = version;
  return changed;
}

CStoreError::Kind CSqliteEngine::KindOf(const QSqlError& error) const {
  switch (error.nativeErrorCode().toInt() & 0xff) {
    case kBusy:
    case kLocked:
      return CStoreError::kBusy;
    case kReadOnly:
    case kPermission:
      return CStoreError::kReadOnly;
    case kCorrupt:
    case kNotADatabase:
      return CStoreError::kDamaged;
    default:
      return CStoreError::kFailed;
  }
}

}  // namespace TarnHost::Store
