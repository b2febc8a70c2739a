#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>

#include "TarnHost/plan_site.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// What a new store is made of.
struct NewStore {
  std::function<PlanSite()> content;
  QDateTime now;
};

/// Opens the store at `url`, making it when it does not exist. Throws CStoreError with one line for the user when it
/// cannot be used; nothing that exists is changed before it was found to be a sound store. `watch` cuts the connection
/// to a server that hangs. Thread: the database's.
std::unique_ptr<CSqlEngine> OpenStore(const QString& url, const NewStore& fresh,
                                      std::shared_ptr<CConnectionWatch> watch);

/// The store of a server to which no connection is made yet: Reopen() makes the first.
std::unique_ptr<CSqlEngine> StoreToReach(const QString& url, std::shared_ptr<CConnectionWatch> watch);

/// Whether the store can be read over further connections; one in memory has a single one.
bool HasReaders(const QString& url);
/// A further connection to a store that is open already, by a connection with these `files`. Throws CStoreError.
std::unique_ptr<CSqlEngine> OpenReader(const QString& url, std::shared_ptr<CConnectionWatch> watch,
                                       std::shared_ptr<const CSharedFileState> files);

/// Opens an existing store to look at it or to change rows: nothing is made or brought along. On a server that takes
/// the account that owns the tables. Throws CStoreError.
std::unique_ptr<CSqlEngine> OpenStoreAsItIs(const QString& url);
/// Writes a copy of a store into the new file `copy`, which is a store in a file whatever the store is in. Throws
/// CStoreError; then there is no copy.
void BackUpStore(const QString& url, const QString& copy);

/// Makes tables and content in the empty database of `engine`, all or nothing. Leaves one that has a store as it is,
/// and refuses one that has anything else.
void FillNewStore(CSqlEngine& engine, const NewStore& fresh);

}  // namespace TarnHost::Store
