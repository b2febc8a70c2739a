#pragma once

#include <QMap>
#include <QString>

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// The statements of a script of the store's, with names in the places that are marked "@place@".
QString PostgresScript(const char* file, const QMap<QString, QString>& names);

/// A name as a statement has it, whatever it is made of.
QString QuotedName(const QString& name);

/// The schema in which the connection finds the store's tables, as a statement has it.
QString CurrentSchema(CSqlEngine& engine);

}  // namespace TarnHost::Store
