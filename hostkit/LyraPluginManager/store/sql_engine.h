#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "store/connection_watch.h"
#include "store/store_error.h"

namespace TarnHost::Store {

class CSharedFileState;
class CStoreFunctions;
class CUserRoles;

/// One database connection with its prepared statements; the statements are the same for every engine.
///
/// Everything throws CStoreError. Thread: the one that made the object.
class CSqlEngine {
 public:
  virtual ~CSqlEngine();

  /// Sees to it that no one waits for a server for ever. Before Open().
  void SetWatch(std::shared_ptr<CConnectionWatch> watch) { watch_ = std::move(watch); }

  virtual void Open() = 0;
  /// Opens what was lost once more, after the same checks as at the first time.
  virtual void Reopen() {
    Close();
    Open();
  }
  /// What Reopen() runs before it changes anything at a server, a layout of before for one; it may throw.
  void SetBeforeChanges(std::function<void()> check) { before_changes_ = std::move(check); }
  void Close();
  /// Throws kConnectionLost when what is open is not what stands at the store's place any more; cheap.
  virtual void RequireInPlace() {}

  /// What the store's further connections compare before they open it; null for one that is in no file.
  virtual std::shared_ptr<const CSharedFileState> Files() const { return nullptr; }

  /// Starts a transaction that will write; no other process writes until it ends.
  virtual void BeginWrite() = 0;
  /// Starts a transaction that sees one state of the store.
  virtual void BeginRead() = 0;
  void Commit();
  /// Ends the transaction; a failure of it is of no interest any more.
  void Rollback() noexcept;

  /// Whether others may have written since the last call; cheap. Asked so often, an engine whose server can fall silent
  /// notices in time.
  virtual bool MayHaveChanged() = 0;
  virtual std::chrono::milliseconds BetweenLooks() const { return std::chrono::milliseconds(200); }
  /// Where others' changes are announced, there is something to read from this socket then; -1 where they are not.
  virtual int NewsSocket() const { return -1; }
  /// Whether something was announced that MayHaveChanged() was not asked for yet, as far as it was read by now.
  virtual bool HasNews() { return false; }
  /// Announces to others, in a transaction that writes, that it was committed.
  virtual void Announce() {}
  /// Why nothing can be changed at present; empty when that is not known. Cheap.
  virtual CStoreText WriteRefusal() const { return {}; }
  /// The store as messages name it.
  const QString& Place() const { return place_; }
  virtual bool HasTable(const char* name) = 0;
  /// Whether there is nothing at all in the database.
  virtual bool IsEmpty() = 0;
  /// What the engine finds wrong with its own files, a line each; reads all of them.
  virtual QStringList Integrity() { return {}; }
  /// What makes changes beyond the rows of one user; null where plain statements do, since no user reaches the
  /// database.
  virtual CStoreFunctions* Functions() { return nullptr; }
  /// The user as whom the database itself lets this connection read and write; none for who passes its rights.
  virtual std::optional<int32_t> BoundUser() const { return std::nullopt; }
  /// The account that is opened next time, in the form of the store's address; where there are accounts.
  virtual void SetAddress(const QString& url) { Q_UNUSED(url) }
  /// The roles under which users log in at a server; null for a store without one.
  virtual CUserRoles* Roles() { return nullptr; }
  /// Puts the rights of users into a database that knows them; once, with the layout that they are written for.
  virtual void MakeRights() {}
  /// Name of the type for bytes.
  virtual QString BytesType() const = 0;
  /// Whether a column goes without every row being written again.
  virtual bool DropsColumnsAtOnce() const = 0;
  static constexpr int kPatience = 5000;
  /// How long a transaction waits for other processes, kPatience at first; also before Open().
  virtual void SetPatience(int milliseconds) = 0;

  /// Runs a prepared statement; answers the number of rows it touched.
  int Execute(const QString& sql, const QVariantList& values = {});
  /// Calls take(row) for each row. `take` must not run statements.
  void ForEach(const QString& sql, const QVariantList& values, const std::function<void(const QSqlQuery&)>& take);
  /// First column of the first row; invalid when there is no row.
  QVariant Value(const QString& sql, const QVariantList& values = {});
  /// Runs a statement as it is, once; on a server several, of which it answers the first one's value.
  QVariant RunOnce(const QString& sql);

 protected:
  CSqlEngine(const QString& driver, const QString& place);

  virtual CStoreError::Kind KindOf(const QSqlError& error) const = 0;
  [[noreturn]] void Fail(const QSqlError& error) const;
  CConnectionWatch* Watch() const { return watch_.get(); }
  virtual void Configure(QSqlDatabase* database) const = 0;
  void OpenDatabase();
  void WatchSocket(int socket);

  QSqlDatabase database_;
  const QString place_;  // the store as messages name it
  std::function<void()> before_changes_;

 private:
  void RequireOpen() const;
  QSqlQuery& Prepared(const QString& sql);
  QSqlQuery& Run(const QString& sql, const QVariantList& values);

  const QString driver_, connection_;
  std::shared_ptr<CConnectionWatch> watch_;
  QHash<QString, std::shared_ptr<QSqlQuery>> statements_;
};

/// A transaction that is rolled back unless it was committed.
class CTransaction {
 public:
  enum Mode { kRead, kWrite };
  CTransaction(CSqlEngine& engine, Mode mode);
  ~CTransaction();
  CTransaction(const CTransaction&) = delete;
  CTransaction& operator=(const CTransaction&) = delete;
  void Commit();

 private:
  CSqlEngine& engine_;
  bool open_ = true;
};

}  // namespace TarnHost::Store
