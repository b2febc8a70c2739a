#include "store/sql_engine.h"

#include <QUuid>

#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

// A text without content is stored as an empty one; NULL is kept for what is not there. The text is asked and not the
// value around it: in Qt 6 that is not null for a text that is.
QVariant NotNull(const QVariant& value) {
  return value.userType() == QMetaType::QString && value.toString().isNull() ? QVariant(QStringLiteral("")) : value;
}

// Null for what only the database's own words explain.
const char* TextOf(CStoreError::Kind kind) {
  switch (kind) {
    case CStoreError::kBusy:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 is locked by another program.");
    case CStoreError::kReadOnly:
      return kReadOnlyStore;
    case CStoreError::kNoRight:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 does not allow its user to do that.");
    case CStoreError::kNoRoom:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 has no room left: its disk is full.");
    case CStoreError::kDamaged:
      return kDamagedStore;
    case CStoreError::kConnectionLost:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The connection to the plan store %1 is lost.");
    case CStoreError::kTooLarge:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 cannot keep that much in one piece.");
    default:
      return nullptr;
  }
}

}  // namespace

CSqlEngine::CSqlEngine(const QString& driver, const QString& place)
    : place_(place), driver_(driver), connection_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {}

CSqlEngine::~CSqlEngine() {
  Close();
}

void CSqlEngine::OpenDatabase() {
  database_ = QSqlDatabase::addDatabase(driver_, connection_);
  Configure(&database_);
  if (!database_.open()) {
    Fail(database_.lastError());
  }
}

void CSqlEngine::WatchSocket(int socket) {
  if (watch_) {
    watch_->Attach(socket);
  }
}

// The driver goes before its statements, or each of them would still turn to a server that may be lost.
void CSqlEngine::Close() {
  if (database_.isValid()) {
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection_);
  }
  statements_.clear();
  if (watch_) {
    watch_->Detach();
  }
}

void CSqlEngine::Commit() {
  RunOnce(QStringLiteral("COMMIT"));
}

void CSqlEngine::Rollback() noexcept {
  if (!database_.isOpen()) {
    return;
  }
  const CConnectionWatch::CWait wait(watch_.get());
  QSqlQuery query(database_);
  query.exec(QStringLiteral("ROLLBACK"));
}

// After a connection that was lost could not be made again.
void CSqlEngine::RequireOpen() const {
  if (!database_.isOpen()) {
    Fail(QSqlError());
  }
}

QSqlQuery& CSqlEngine::Prepared(const QString& sql) {
  RequireOpen();
  std::shared_ptr<QSqlQuery>& query = statements_[sql];
  if (!query) {
    auto fresh = std::make_shared<QSqlQuery>(database_);
    fresh->setForwardOnly(true);
    const CConnectionWatch::CWait wait(watch_.get());
    if (!fresh->prepare(sql)) {
      const QSqlError error = fresh->lastError();
      statements_.remove(sql);
      Fail(error);
    }
    query = fresh;
  }
  return *query;
}

QSqlQuery& CSqlEngine::Run(const QString& sql, const QVariantList& values) {
  QSqlQuery& query = Prepared(sql);
  for (int i = 0; i < values.size(); ++i) {
    query.bindValue(i, NotNull(values[i]));
  }
  const CConnectionWatch::CWait wait(watch_.get());
  if (!query.exec()) {
    const QSqlError error = query.lastError();
    query.finish();
    Fail(error);
  }
  return query;
}

int CSqlEngine::Execute(const QString& sql, const QVariantList& values) {
  QSqlQuery& query = Run(sql, values);
  const int touched = query.numRowsAffected();
  query.finish();
  return touched;
}

void CSqlEngine::ForEach(const QString& sql, const QVariantList& values,
                         const std::function<void(const QSqlQuery&)>& take) {
  QSqlQuery& query = Run(sql, values);
  CConnectionWatch::CWait wait(watch_.get());
  while (query.next()) {
    take(query);
    wait.Renew();
  }
  const QSqlError error = query.lastError();
  query.finish();  // a statement left half read would hold the connection's view of the store
  if (error.isValid()) {
    Fail(error);
  }
}

QVariant CSqlEngine::Value(const QString& sql, const QVariantList& values) {
  QSqlQuery& query = Run(sql, values);
  const CConnectionWatch::CWait wait(watch_.get());
  const bool found = query.next();
  const QVariant value = found ? query.value(0) : QVariant();
  const QSqlError error = query.lastError();
  query.finish();
  if (!found && error.isValid()) {
    Fail(error);
  }
  return value;
}

QVariant CSqlEngine::RunOnce(const QString& sql) {
  RequireOpen();
  const CConnectionWatch::CWait wait(watch_.get());
  QSqlQuery query(database_);
  query.setForwardOnly(true);
  if (!query.exec(sql)) {
    Fail(query.lastError());
  }
  QVariant value;
  if (query.next()) {
    value = query.value(0);
  }
  while (query.nextResult()) {
  }
  if (query.lastError().isValid()) {  // of a later statement
    Fail(query.lastError());
  }
  return value;
}

void CSqlEngine::Fail(const QSqlError& error) const {
  if (watch_ && watch_->WasCut()) {
    throw CStoreError::NotAnswering(CStoreError::kConnectionLost);
  }
  const CStoreError::Kind kind = KindOf(error);
  const QString words = error.databaseText().simplified();
  if (const char* text = TextOf(kind)) {
    throw CStoreError(kind, {text, {place_}}, words);
  }
  throw CStoreError(CStoreError::kFailed,
                    {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 failed: %2"), {place_, words}}, words);
}

CTransaction::CTransaction(CSqlEngine& engine, Mode mode) : engine_(engine) {
  if (mode == kWrite) {
    engine_.BeginWrite();
  } else {
    engine_.BeginRead();
  }
}

CTransaction::~CTransaction() {
  if (open_) {
    engine_.Rollback();
  }
}

void CTransaction::Commit() {
  engine_.Commit();
  open_ = false;
}

}  // namespace TarnHost::Store
