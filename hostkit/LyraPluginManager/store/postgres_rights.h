#pragma once

#include <QString>
#include <optional>

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// How a role stands to the rights that a store's database keeps. Throws CStoreError. Thread: the engine's.
struct PostgresRole {
  QString name;
  bool passes_rights = false;    // a superuser, or one whom row-level security leaves alone
  bool meets_functions = false;  // the layout has them
  bool owns_tables = false;      // or is a member of the role that does
  std::optional<int32_t> user;   // that the role belongs to

  static PostgresRole Of(CSqlEngine& engine);
};

/// Puts functions and policies into the schema of the connection, whose role owns the tables.
void MakePostgresRights(CSqlEngine& engine);

}  // namespace TarnHost::Store
