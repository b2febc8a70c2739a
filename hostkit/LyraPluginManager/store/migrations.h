#pragma once

#include <vector>

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// One step of the store's layout, from version `to` - 1 to `to`. A step that was ever released never changes.
struct Migration {
  int to;
  QStringList (*statements)(const CSqlEngine& engine);
  /// What statements alone cannot do, after them; may take minutes on a large store.
  void (*work)(CSqlEngine& engine) = nullptr;
};

const std::vector<Migration>& AllMigrations();

/// Version of the opened store; 0 for one without any table.
int StoredVersion(CSqlEngine& engine);

/// Refuses a database that holds something else, whatever its tables are called.
void RequirePlanStore(CSqlEngine& engine, const QString& place);

/// Refuses a store that a newer program made.
void RequireKnownVersion(int stored, int newest, const QString& place);

/// Refuses what is no plan store, and one of another version than this program makes: for what brings none along.
void RequireNewest(CSqlEngine& engine);

/// Makes the newest layout in an empty database, inside the caller's transaction.
void MakeLayout(CSqlEngine& engine, const std::vector<Migration>& migrations = AllMigrations());

/// Brings the opened store to the newest version, each step in a transaction of its own. Refuses a store that is
/// newer than the last step.
void Migrate(CSqlEngine& engine, const QString& place, const std::vector<Migration>& migrations = AllMigrations());

}  // namespace TarnHost::Store
