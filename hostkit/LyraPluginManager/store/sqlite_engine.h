#pragma once

#include <optional>
#include <utility>

#include "store/shared_file_state.h"
#include "store/sql_engine.h"
#include "store/sqlite_file_state.h"

namespace TarnHost::Store {

/// A store in one SQLite file, or in memory.
///
/// An existing file is opened for reading alone where it or its folder is not to be written, or has no room left; the
/// first change says so. While it is open its file is watched: a file that was removed, moved, replaced or cut counts
/// as a lost connection.
class CSqliteEngine : public CSqlEngine {
 public:
  /// Marks a file as a plan store, at a fixed place of the file.
  static constexpr int32_t kApplicationId = 0x5461726e;

  enum Mode { kMake, kExisting };

  /// `place` names the store in messages; by default the file itself.
  CSqliteEngine(const QString& file, Mode mode, const QString& place = {});
  /// A further connection: opens nothing but what the one that `session` comes from has open.
  CSqliteEngine(const QString& file, std::shared_ptr<const CSharedFileState> session);

  void Open() override;
  void Reopen() override;
  void RequireInPlace() override;
  std::shared_ptr<const CSharedFileState> Files() const override { return files_; }
  void BeginWrite() override;
  void BeginRead() override;
  bool MayHaveChanged() override;
  CStoreText WriteRefusal() const override;
  bool HasTable(const char* name) override;
  bool IsEmpty() override;
  QStringList Integrity() override;
  QString BytesType() const override { return QStringLiteral("BLOB"); }
  bool DropsColumnsAtOnce() const override { return false; }
  void SetPatience(int milliseconds) override;

  /// Looks at the header of an existing file alone, so that a foreign one is never opened for more. Throws CStoreError
  /// for one that is missing, unreadable, empty, cut off in its header or no plan store. Before Open().
  void RequireHeader();

  bool CanWrite() const { return refusal_.IsEmpty(); }
  /// Throws unless the open database is a whole plan store.
  void RequireSound();
  /// Brings a store of an older program along; throws when it can only be read.
  void BringAlong();

 private:
  enum class Access { kMake, kChange, kRead, kFrozen };

  static const char* ModeOf(Access access);
  void OpenExisting();
  bool HasJournal() const;
  CStoreText RefusalByPermissions() const;
  void OpenForChanges(bool frozen);
  std::pair<int, qint64> ReadApplicationId();
  bool AreTablesSound();
  void OpenAs(Access access);
  void OpenAgain();
  void NoteFailure(const SqliteFileState& now, bool damaged);
  void PutLogAside();
  void RequireOpened();
  void RequireUnmoved();
  [[noreturn]] void Lose(const char* text);
  void Configure(QSqlDatabase* database) const override;
  CStoreError::Kind KindOf(const QSqlError& error) const override;

  const QString file_;
  const Mode mode_;
  Access access_ = Access::kMake;
  CStoreText refusal_;    // of changes, when the store is open for reading alone
  CStoreText trouble_;    // why the store could not be opened again
  SqliteFileState seen_;  // as it was open last
  const std::shared_ptr<CSharedFileState> files_ = std::make_shared<CSharedFileState>();
  const std::shared_ptr<const CSharedFileState> session_;  // null for the session's own connection
  std::optional<SqliteFileState> damaged_;  // as it was found damaged at the last attempt to open it again
  int patience_ = kPatience;
  int64_t data_version_ = -1;
};

}  // namespace TarnHost::Store
