#pragma once

#include <QDateTime>
#include <QMap>
#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "log_capture.h"
#include "message_guard.h"
#include "outline.h"
#include "plan_calls.h"
#include "recording_services.h"
#include "theme_node_type.h"

class QAbstractItemModel;

namespace TarnPlanView {
class CStandardPlanModel;
}

namespace TarnTest {

/// Groups "Public A" (with "A1" below it), "Public B", "Own C" (with "C1"), each with two plans, and one plan under
/// either root; users "operator" with all rights and "viewer" with none.
TarnHost::PlanSite SmallSite();

struct PlanFixtureOptions {
  QMap<QString, int> switches;
  QString url = QStringLiteral("sqlite::memory:");
  QString user = QStringLiteral("operator");
  std::function<TarnHost::PlanSite()> site = SmallSite;
  std::function<QDateTime()> now;  // the store's clock, asked on any thread; unset: the system's
};

/// The plug-in over a real store behind CRecordingServices, from an empty process to a full one and back.
/// Thread: GUI.
class CPlanFixture {
 public:
  CPlanFixture();
  ~CPlanFixture();

  /// Opens the store and logs in; the plug-in's singletons do not stand yet. False with the reason in `error`.
  bool Open(const PlanFixtureOptions& options, QString* error);
  /// The host's calls at start-up, in their order.
  void Start();
  /// Shuts everything down in the order of a real client. The warnings that were not expected.
  QStringList Close();

  CRecordingServices& Services() { return *services_; }
  TarnHost::CPlanStore& Store() { return *store_; }
  /// Straight to the store, past the plug-in and the recorder: no notice comes of it.
  CPlanCalls InStore() { return CPlanCalls(*store_); }
  CLogCapture& Log() { return *log_; }
  CMessageGuard& Messages() { return *messages_; }
  TarnPlanView::CStandardPlanModel* Model(const QString& monitor, TarnPlanView::ThemeNodeType theme) const;
  TarnPlanView::CStandardPlanModel* Public() const { return Model(QStringLiteral("0"), TarnPlanView::PublicTheme); }
  TarnPlanView::CStandardPlanModel* Own() const { return Model(QStringLiteral("0"), TarnPlanView::OwnTheme); }
  /// All nine, in the order of their registration.
  QList<TarnPlanView::CStandardPlanModel*> Models() const;

  /// Code of the group or plan with this name in the store; empty when there is none.
  QString Code(const QString& name) const;
  /// Waits for all tasks and delivers their answers.
  static void Drain();
  /// Checks every change of `model` for what a model must not do.
  static void Watch(QAbstractItemModel* model);

 private:
  std::string findGroup(const std::string& parent, const std::string& name) const;

  std::unique_ptr<CMessageGuard> messages_;
  std::unique_ptr<CLogCapture> log_;
  std::shared_ptr<TarnHost::CPlanStore> store_;
  std::shared_ptr<CRecordingServices> services_;
};

}  // namespace TarnTest
