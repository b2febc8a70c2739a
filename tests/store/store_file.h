#pragma once

#include <QFile>
#include <QtTest>

namespace StoreTest {

inline QByteArray Content(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// In the same file, so that a program that has it open sees it.
inline void Overwrite(const QString& name, const QByteArray& content) {
  QFile file(name);
  QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  QCOMPARE(file.write(content), qint64(content.size()));
}

}  // namespace StoreTest
