#pragma once

#include <QObject>
#include <QtTest>

#include "plan_fixture.h"

namespace TarnTest {

/// Base of tests over the whole plug-in: after each test everything is shut down, and a warning nobody expected fails.
class CPlanTest : public QObject {
  Q_OBJECT
 protected:
  /// Opens the store with these switches; with `start` also brings the plug-in up.
  void Open(const QMap<QString, int>& switches = {}, bool start = true) {
    PlanFixtureOptions options;
    options.switches = switches;
    QString error;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    if (start) {
      fixture_.Start();
    }
  }
  /// Shuts down in the middle of a test that opens again.
  void Shut() { QCOMPARE(fixture_.Close(), QStringList()); }
  CRecordingServices& Services() { return fixture_.Services(); }

  CPlanFixture fixture_;

 private Q_SLOTS:
  void cleanup() { Shut(); }
};

}  // namespace TarnTest
