#include "store/sqlite_engine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <utility>

#include "store/migrations.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

// Primary result codes of the SQLite library.
enum ResultCode {
  kPermission = 3,
  kBusy = 5,
  kLocked = 6,
  kReadOnly = 8,
  kCorrupt = 11,
  kFull = 13,
  kTooBig = 18,
  kNotADatabase = 26
};

constexpr int kPrimaryCode = 0xff;  // of an extended one
constexpr qint64 kHeaderSize = 100;
const char kMemory[] = ":memory:";

}  // namespace

const char* CSqliteEngine::ModeOf(Access access) {
  switch (access) {
    case Access::kMake:
      return "?mode=rwc";
    case Access::kChange:
      break;
    case Access::kRead:
      return "?mode=ro";
    case Access::kFrozen:
      return "?mode=ro&immutable=1";
  }
  return "?mode=rw";
}

CSqliteEngine::CSqliteEngine(const QString& file, Mode mode, const QString& place)
    : CSqlEngine(QStringLiteral("QSQLITE"), place.isEmpty() ? file : place), file_(file), mode_(mode) {}

CSqliteEngine::CSqliteEngine(const QString& file, std::shared_ptr<const CSharedFileState> session)
    : CSqlEngine(QStringLiteral("QSQLITE"), file), file_(file), mode_(kExisting), session_(std::move(session)) {}

// Only what makes a store may make a file: in the place of one that has gone an empty one would stand.
void CSqliteEngine::Configure(QSqlDatabase* database) const {
  if (file_ == kMemory) {
    database->setDatabaseName(file_);
    return;
  }
  const QString path = QDir::cleanPath(QFileInfo(file_).absoluteFilePath());
  database->setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI"));
  // The very bytes by which the system knows the file, in any locale.
  const QByteArray name = QFile::encodeName(path).toPercentEncoding("/");
  database->setDatabaseName("file:" + QString::fromLatin1(name) + ModeOf(access_));
}

void CSqliteEngine::Open() {
  if (mode_ == kMake) {
    OpenAs(Access::kMake);
  } else {
    OpenExisting();
  }
  files_->Set(seen_);
}

// A further connection that went ahead of the session to what stands there now would lay the log of the old file over
// it.
void CSqliteEngine::OpenExisting() {
  if (session_) {
    seen_ = session_->Get();
    RequireUnmoved();
  }
  const SqliteFileState now = SqliteFileState::Of(file_);
  if (!now.file.IsThere()) {
    Lose(kStoreFileGone);
  }
  if (now.file.size == 0) {
    Lose(kStoreFileEmpty);
  }
  if (!session_) {
    seen_ = now;
  }
  const bool frozen = now.log.size == 0 && !HasJournal();  // else those have a part of the content
  refusal_ = RefusalByPermissions();
  if (refusal_.IsEmpty()) {
    OpenForChanges(frozen);
  } else if (frozen && !IsInWritableFolder(file_)) {
    OpenAs(Access::kFrozen);
  } else {
    OpenAs(Access::kRead);
  }
}

// Of a store without a log: what a change that was interrupted has written over.
bool CSqliteEngine::HasJournal() const {
  return QFileInfo(file_ + "-journal").size() > 0;
}

CStoreText CSqliteEngine::RefusalByPermissions() const {
  if (!IsWritableFile(file_)) {
    return {kReadOnlyStore, {place_}};
  }
  if (!IsInWritableFolder(file_)) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is in a read-only folder."), {place_}};
  }
  return {};
}

// Where there is no room for a log the store is opened for reading, if its file has all of the content.
void CSqliteEngine::OpenForChanges(bool frozen) {
  try {
    OpenAs(Access::kChange);
  } catch (const CStoreError& error) {
    const bool may_lack_room = error.GetKind() == CStoreError::kNoRoom || error.GetKind() == CStoreError::kFailed;
    if (!frozen || !may_lack_room) {
      throw;
    }
    Close();
    RequireUnmoved();  // the attempt may have left an empty log
    OpenAs(Access::kFrozen);
    refusal_ = {
        QT_TRANSLATE_NOOP("TarnHost::Store",
                          "The plan store %1 can only be read: no file can be written beside it. Is the disk full?"),
        {place_}};
  }
}

void CSqliteEngine::OpenAs(Access access) {
  access_ = access;
  data_version_ = -1;
  OpenDatabase();
  RequireOpened();
  // The first look takes hold of the log; what is wrong with it shows at the next statement.
  QSqlQuery(database_).exec(QStringLiteral("PRAGMA schema_version"));
  RequireOpened();
  SetPatience(patience_);
  // An acknowledged change must survive a power cut, not only the end of the process.
  RunOnce(QStringLiteral("PRAGMA synchronous = FULL"));
}

// What was opened is what stands there. The log may have been another until it was taken hold of: a client that closed
// as the last one had removed it. A further connection finds the one that its session holds. The first look takes back
// what an interrupted change has written, by which the file may get smaller.
void CSqliteEngine::RequireOpened() {
  if (mode_ == kMake) {
    seen_ = SqliteFileState::Of(file_);
    return;
  }
  if (!session_ && access_ != Access::kFrozen) {
    seen_.log = {};
    seen_.file.size = 0;
  }
  RequireUnmoved();
}

void CSqliteEngine::Reopen() {
  const SqliteFileState now = SqliteFileState::Of(file_);
  if (damaged_ && now == *damaged_) {
    throw CStoreError(CStoreError::kConnectionLost, trouble_);  // to read all of it again would find the same
  }
  const SqliteFileState good = seen_;
  trouble_ = {};
  damaged_.reset();
  try {
    OpenAgain();
    files_->Set(seen_);
  } catch (const CStoreError& error) {
    Close();
    seen_ = good;
    trouble_ = error.Text();
    NoteFailure(now, error.GetKind() == CStoreError::kDamaged);
    throw CStoreError(CStoreError::kConnectionLost, trouble_);
  }
}

// Whatever else is in the way may go away without a change of the file.
void CSqliteEngine::NoteFailure(const SqliteFileState& now, bool damaged) {
  const bool emptied = now.file.IsThere() && now.file.size == 0;
  const bool has_old_log = seen_.log.IsThere() && now.log.IsSameFile(seen_.log);
  if ((damaged || emptied) && now.file.size < seen_.file.size && has_old_log) {
    PutLogAside();
  } else if (damaged) {
    damaged_ = SqliteFileState::Of(file_);
  }
}

void CSqliteEngine::OpenAgain() {
  Close();
  const SqliteFileState now = SqliteFileState::Of(file_);
  if (now.file.IsThere() && !now.file.IsSameFile(seen_.file) && seen_.log.IsThere() && now.log.IsSameFile(seen_.log)) {
    PutLogAside();
  }
  OpenExisting();
  RequireSound();
  BringAlong();
}

// The log of a file that is no longer there, or no longer whole: what is put in its place must not get these pages.
void CSqliteEngine::PutLogAside() {
  QFile::remove(file_ + "-wal.replaced");
  QFile::rename(file_ + "-wal", file_ + "-wal.replaced");
  QFile::remove(file_ + "-shm");
}

// By way of SQLite: to close a file that was opened past it would take this process's other locks on it. Nothing is
// locked, recovered or written.
void CSqliteEngine::RequireHeader() {
  const auto refuse = [this](const char* text, CStoreError::Kind kind = CStoreError::kDamaged) {
    throw CStoreError(kind, {text, {place_}});
  };
  const SqliteFileState::Entry entry = SqliteFileState::Of(file_).file;
  if (!QFileInfo(file_).isFile() || !QFileInfo(file_).isReadable()) {
    refuse(QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 cannot be read."), CStoreError::kFailed);
  }
  if (entry.size == 0) {
    refuse(kStoreFileEmpty);
  }
  const auto [code, id] = ReadApplicationId();
  if (code == kNotADatabase) {
    refuse(kNotAPlanStore);
  }
  if (entry.size < kHeaderSize) {
    refuse(QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is damaged: it is cut off."));
  }
  if (code == 0 && id != kApplicationId) {
    refuse(kNotAPlanStore, CStoreError::kRefused);
  }
}

// The result code of the attempt, 0 when it succeeded, and the number.
std::pair<int, qint64> CSqliteEngine::ReadApplicationId() {
  access_ = Access::kFrozen;
  OpenDatabase();
  std::pair<int, qint64> found(0, 0);
  {
    QSqlQuery query(database_);
    if (query.exec(QStringLiteral("PRAGMA application_id")) && query.next()) {
      found.second = query.value(0).toLongLong();
    } else {
      found.first = query.lastError().nativeErrorCode().toInt() & kPrimaryCode;
    }
  }
  Close();
  return found;
}

void CSqliteEngine::RequireSound() {
  if (RunOnce("PRAGMA application_id").toInt() != kApplicationId) {
    throw CStoreError(CStoreError::kRefused, {kNotAPlanStore, {place_}});
  }
  RequirePlanStore(*this, place_);
  if (StoredVersion(*this) <= AllMigrations().back().to && !AreTablesSound()) {
    throw CStoreError(CStoreError::kDamaged, {kDamagedStore, {place_}});
  }
}

// Pages and thumbnails, nearly all of the file, are left out: a start would have to read them. What is wrong with those
// of a plan shows when it is read.
bool CSqliteEngine::AreTablesSound() {
  QStringList tables;
  ForEach("SELECT name FROM sqlite_master WHERE type = 'table' AND name <> 'plan_content'", {},
          [&tables](const QSqlQuery& query) { tables << query.value(0).toString(); });
  return std::all_of(tables.begin(), tables.end(), [this](QString table) {
    return RunOnce(QStringLiteral("PRAGMA quick_check(\"%1\")").arg(table.replace('"', "\"\""))).toString() == "ok";
  });
}

// A step begins a write, which for a store that can only be read would open it again first, and so on without end.
void CSqliteEngine::BringAlong() {
  if (!CanWrite() && StoredVersion(*this) < AllMigrations().back().to) {
    throw CStoreError(CStoreError::kReadOnly, refusal_);
  }
  Migrate(*this, place_);
}

void CSqliteEngine::Lose(const char* text) {
  throw CStoreError(CStoreError::kConnectionLost, {text, {place_}});
}

void CSqliteEngine::RequireInPlace() {
  if (mode_ == kMake) {
    return;
  }
  if (!trouble_.IsEmpty()) {
    throw CStoreError(CStoreError::kConnectionLost, trouble_);
  }
  RequireUnmoved();
  files_->Set(seen_);
}

// A file grows and, but for a cleaning by hand, never shrinks; whether it is sound then shows when it is opened again.
void CSqliteEngine::RequireUnmoved() {
  const SqliteFileState now = SqliteFileState::Of(file_);
  if (!now.file.IsThere()) {
    Lose(kStoreFileGone);
  }
  if (!now.file.IsSameFile(seen_.file) || (seen_.log.IsThere() && !now.log.IsSameFile(seen_.log))) {
    Lose(QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 was replaced while it was open."));
  }
  if (now.file.size < seen_.file.size) {
    Lose(QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 was cut off while it was open."));
  }
  if (access_ == Access::kFrozen && !(now == seen_)) {
    Lose(QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 was changed by another program."));
  }
  seen_ = now;
}

void CSqliteEngine::SetPatience(int milliseconds) {
  patience_ = milliseconds;
  if (database_.isOpen()) {
    RunOnce(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
  }
}

// What stood in the way when the file was opened may be over by now.
CStoreText CSqliteEngine::WriteRefusal() const {
  if (!CanWrite() && RefusalByPermissions().IsEmpty() && QStorageInfo(file_).bytesAvailable() > 0) {
    return {};
  }
  return refusal_;
}

// A transaction that reads first and then writes would fail at once when another process wrote in between.
void CSqliteEngine::BeginWrite() {
  RequireInPlace();
  if (!CanWrite() && WriteRefusal().IsEmpty()) {
    Reopen();
  }
  if (!CanWrite()) {
    throw CStoreError(CStoreError::kReadOnly, refusal_);
  }
  RunOnce(QStringLiteral("BEGIN IMMEDIATE"));
}

void CSqliteEngine::BeginRead() {
  RunOnce(QStringLiteral("BEGIN"));
}

bool CSqliteEngine::HasTable(const char* name) {
  return Value(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?"), {name}).isValid();
}

bool CSqliteEngine::IsEmpty() {
  return !Value(QStringLiteral("SELECT 1 FROM sqlite_master LIMIT 1")).isValid();
}

QStringList CSqliteEngine::Integrity() {
  QStringList lines;
  ForEach(QStringLiteral("PRAGMA integrity_check"), {},
          [&lines](const QSqlQuery& query) { lines.append(query.value(0).toString()); });
  lines.removeOne(QStringLiteral("ok"));
  return lines;
}

bool CSqliteEngine::MayHaveChanged() {
  RequireInPlace();
  const int64_t version = Value(QStringLiteral("PRAGMA data_version")).toLongLong();
  const bool changed = version != data_version_;
  data_version_ = version;
  return changed;
}

CStoreError::Kind CSqliteEngine::KindOf(const QSqlError& error) const {
  switch (error.nativeErrorCode().toInt() & kPrimaryCode) {
    case kBusy:
    case kLocked:
      return CStoreError::kBusy;
    case kReadOnly:
    case kPermission:
      return CStoreError::kReadOnly;
    case kCorrupt:
    case kNotADatabase:
      return CStoreError::kDamaged;
    case kTooBig:
      return CStoreError::kTooLarge;
    case kFull:
      return CStoreError::kNoRoom;
    default:
      return CStoreError::kFailed;
  }
}

}  // namespace TarnHost::Store
