#pragma once

#include <QList>
#include <QPair>
#include <QString>

namespace TarnClient {

/// What is said of the store; no password may be in it.
struct StoreFacts {
  QString engine, address;
  int layout_version = 0;
};

/// Engine and address of a store's URL, without its secrets.
StoreFacts FactsOf(const QString& store_url);

/// Versions of all that the client is made of: what it is, and its version.
QList<QPair<QString, QString>> AboutLines(const StoreFacts& store);

/// The text of --version, a line for each part, for scripts in English: the program's own comes first.
QString VersionText();

}  // namespace TarnClient
