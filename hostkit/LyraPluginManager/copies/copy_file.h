#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <memory>
#include <set>

#include "store/sqlite_engine.h"

namespace TarnHost::Store {

/// What a copy says of itself.
struct CopyFacts {
  QString station;  // of the site
  QString user;
  int32_t user_id = 0;
  bool is_bound = false;       // the server kept from the desk what the user does not see
  int64_t change = -1;         // up to where the log of changes is in it
  QString mark;                // of the log up to there
  QDateTime at;                // when it was true
  std::set<int32_t> withheld;  // cameras whose password or address only the store has
  QString hash;                // of the user's password; empty for none
};

/// The copy that one user of this machine has of a store on a server: a store in a file, with the rows that he sees and
/// no passwords of cameras. Throws CStoreError with one line. Thread: that of the engine.
namespace CopyFile {

/// Where the copy of this user stands; the store is known by its servers and database.
QString PathOf(const QString& folder, const QString& url, const QString& user);
/// Of all users of the store.
QStringList PathsOf(const QString& folder, const QString& url);

/// Opens a copy that is whole and of the present layout; reads nearly all but the pages of plans.
std::unique_ptr<CSqlEngine> Open(const QString& path);
/// The same at once, of one that was opened before.
std::unique_ptr<CSqlEngine> OpenAgain(const QString& path);
/// Of a copy of any layout, also a damaged one as far as it can be read; empty for none.
QString UserOf(const QString& path);
CopyFacts FactsOf(CSqlEngine& copy);
/// With all rows but those of its own; in the caller's transaction.
void SetFacts(CSqlEngine& copy, const CopyFacts& facts);
/// Of the copy at `path`, if it is this user's as of this change, and else false: it was true at `at`, too.
bool SetMoment(const QString& path, int32_t user_id, int64_t change, const QDateTime& at);

/// Makes the folder, for its owner alone, unless it is there.
void MakeFolder(const QString& folder);
/// With what SQLite keeps beside it.
void Remove(const QString& path);

}  // namespace CopyFile

}  // namespace TarnHost::Store
