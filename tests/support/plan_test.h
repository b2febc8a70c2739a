#pragma once

#include <QObject>
#include <QtTest>

#include "plan_fixture.h"
#include "standard_plan_model.h"

namespace TarnTest {

/// Base of tests over the whole plug-in: after each test everything is shut down, and an unexpected warning fails.
class CPlanTest : public QObject {
  Q_OBJECT
 protected:
  /// Opens the store with these switches; with `start` also brings the plug-in up.
  void Open(const QMap<QString, int>& switches = {}, bool start = true,
            const std::function<TarnHost::PlanSite()>& site = SmallSite) {
    PlanFixtureOptions options;
    options.switches = switches;
    options.site = site;
    QString error;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    if (start) {
      fixture_.Start();
    }
  }
  /// Opens and starts for a stage made of it.
  CPlanFixture& Opened(const QMap<QString, int>& switches = {}) {
    Open(switches);
    return fixture_;
  }
  /// Shuts down in the middle of a test that opens again.
  void Shut() { QCOMPARE(fixture_.Close(), QStringList()); }
  CRecordingServices& Services() { return fixture_.Services(); }
  /// Row of the group (plan) with this name in the store, in the public tree or in another.
  QModelIndex GroupRow(const QString& name, const TarnPlanView::CStandardPlanModel* model = nullptr) const {
    return (model ? model : fixture_.Public())->FindIndexByIndexCode(fixture_.Code(name), true);
  }
  QModelIndex PlanRow(const QString& name, const TarnPlanView::CStandardPlanModel* model = nullptr) const {
    return (model ? model : fixture_.Public())->FindIndexByIndexCode(fixture_.Code(name), false);
  }

  CPlanFixture fixture_;

 private Q_SLOTS:
  void cleanup() { Shut(); }
};

}  // namespace TarnTest
