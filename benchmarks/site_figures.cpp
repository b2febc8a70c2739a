#include <unistd.h>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardItem>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <atomic>
#include <future>

#include "TarnHost/plan_store.h"
#include "TarnHost/store_care.h"
#include "bench_site.h"
#include "figures.h"
#include "gui_holds.h"
#include "host_fixture.h"
#include "plan_calls.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

using TarnHost::CPlanStore;
using TarnTest::CPlanCalls;
using Store = std::shared_ptr<CPlanStore>;

namespace {

constexpr int kChanges = 200, kDesks = 100, kChangesASecond = 10;
constexpr int kGroups = 10, kPlansEach = 10;
constexpr int kLargeGroups = 10000, kStarts = 3;
constexpr int kFaultMs = 5000;
constexpr double kLongestPause = 0.2;  // s
const char kServer[] = "TARN_TEST_POSTGRES", kServersProcess[] = "TARN_TEST_POSTGRES_PID";

int SecondsOfLoad() {
  return qEnvironmentVariableIsSet("TARN_BENCH_QUICK") ? 10 : 60;
}

QString NewDatabase(const QString& name) {
  QUrl url(qEnvironmentVariable(kServer));
  {
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    database.setHostName(url.host());
    database.setPort(url.port());
    database.setUserName(url.userName());
    database.setDatabaseName(QStringLiteral("postgres"));
    if (!database.open() || !QSqlQuery(database).exec("CREATE DATABASE " + name)) {
      qFatal("no database can be made for the bench");
    }
  }
  QSqlDatabase::removeDatabase(name);
  url.setPath('/' + name);
  return url.toString();
}

TarnHost::PlanStoreOptions OptionsOf(const QString& url, int groups = kGroups) {
  TarnHost::PlanStoreOptions options;
  options.url = url;
  options.switch_overrides = {{QStringLiteral("load_all"), 1}};
  options.first_content = [groups] { return MakeBenchSite(groups, kPlansEach); };
  return options;
}

Store OpenDesk(const TarnHost::PlanStoreOptions& options) {
  QString error;
  Store store = CPlanStore::Open(options, &error);
  if (!store || !store->LogIn({store->DefaultUser()}).IsDone()) {
    qFatal("a desk of the bench does not start: %s", qPrintable(error));
  }
  HostFixture::WaitFor([&store] { return store->IsViewResourceDownFinish(); });
  return store;
}

/// A store on the server, as a desk reaches it: under the role of its user, with the rights that he has in the
/// database.
QString NewServerStore(const QString& name, int groups = kGroups) {
  QUrl url(NewDatabase(name));
  const Store owner = OpenDesk(OptionsOf(url.toString(), groups));
  const QString user = owner->DefaultUser();
  owner->Close();
  QString said, error;
  if (!TarnHost::StoreCare::UseRoles(url.toString(), &said, &error)) {
    qFatal("the users of the bench get no roles: %s", qPrintable(error));
  }
  url.setUserName(user);
  return url.toString();
}

view_plugin_protocol::UpdatePlanRequest Renamed(const Store& store, const std::string& plan, const QString& name) {
  auto change = TarnTest::Unchanged(CPlanCalls(*store).Detail(plan));
  change.plan_name = name.toStdString();
  return change;
}

void MustBeEmpty(const QString& error) {
  if (!error.isEmpty()) {
    qFatal("a change of the bench is refused: %s", qPrintable(error));
  }
}

void RunEventsFor(double seconds) {
  bool over = false;
  QTimer::singleShot(static_cast<int>(seconds * 1000), qApp, [&over] { over = true; });
  while (!over) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
  }
}

/// From the moment at which one desk begins to save a change until a row of another desk's tree shows it.
std::vector<double> NewsMs(const QString& url) {
  HostFixture watcher(OptionsOf(url));
  watcher.RestartPlugin();
  auto& manager = TarnPlanView::CViewModelDataManager::Instance();
  manager.LoadAllViewManagerModelData();
  auto* model = qobject_cast<TarnPlanView::CStandardPlanModel*>(
      manager.GetViewManagerByTheme(QStringLiteral("0"), TarnPlanView::PublicTheme));
  const Store writer = OpenDesk(OptionsOf(url));
  const std::string plan = writer->FindPlanByName(QString::fromStdString(MakeBenchSite(1, 1).plans.front().name));
  std::vector<double> times;
  QRandomGenerator pauses(1);
  for (int change = 0; change < kChanges; ++change) {
    RunEventsFor(pauses.bounded(kLongestPause));  // or each would come right after a look
    const QString name = QStringLiteral("Changed %1").arg(change);
    const auto is_seen = [&] {
      const QStandardItem* row = model->FindTargetItemByIndexCode(QString::fromStdString(plan), false);
      return row != nullptr && row->text() == name;
    };
    const auto request = Renamed(writer, plan, name);
    QElapsedTimer clock;
    clock.start();
    auto saved = std::async(std::launch::async, [&] { return CPlanCalls(*writer).Update(request); });
    HostFixture::WaitFor(is_seen);
    times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    MustBeEmpty(saved.get());
  }
  writer->Close();
  std::sort(times.begin(), times.end());
  return times;
}

Figures NewsFigures(const char* engine, const QString& url, double bar) {
  const std::vector<double> times = NewsMs(url);
  const QString name = QStringLiteral("news_") + engine, note = QStringLiteral("%1 changes").arg(times.size());
  return {{name, QStringLiteral("ms until another desk's row shows a change, median"), times[times.size() / 2], bar,
           Figure::AtMost, note},
          {name + "_worst", QStringLiteral("the same, the worst"), times.back(), 1000, Figure::AtMost, note}};
}

/// Seconds of processor time that a process, and those that it started and that have ended, have had.
double ProcessorSeconds(const QString& process, bool with_ended, const QString& wanted_parent = {}) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(process));
  const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
  if (!wanted_parent.isEmpty() && fields.value(1) != wanted_parent.toLatin1()) {
    return 0;
  }
  constexpr int kUser = 11, kSystem = 12, kUserOfEnded = 13, kSystemOfEnded = 14;
  qint64 ticks = fields.value(kUser).toLongLong() + fields.value(kSystem).toLongLong();
  if (with_ended) {
    ticks += fields.value(kUserOfEnded).toLongLong() + fields.value(kSystemOfEnded).toLongLong();
  }
  return static_cast<double>(ticks) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

double ServersSeconds() {
  const QString server = qEnvironmentVariable(kServersProcess);
  double seconds = ProcessorSeconds(server, true);
  for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    if (process.toInt() > 0) {
      seconds += ProcessorSeconds(process, false, server);
    }
  }
  return seconds;
}

QStringList TreeOf(const Store& store) {
  const CPlanCalls calls(*store);
  QStringList rows = calls.Groups("-1");
  for (const QString& group : QStringList(rows)) {
    rows += calls.Plans(calls.Group("-1", group.section('@', 0, 0).toStdString()));
  }
  return rows;
}

/// Renames plans, and adds and deletes some, `kChangesASecond` times a second. Answers how many changes it made.
int ChangeFor(const Store& writer, int seconds) {
  const CPlanCalls calls(*writer);
  const std::string group = calls.Group("-1", calls.Groups("-1").value(3).section('@', 0, 0).toStdString());
  const std::string plan = writer->FindPlanByName(QString::fromStdString(MakeBenchSite(1, 1).plans.front().name));
  QElapsedTimer clock;
  clock.start();
  std::string added;
  int made = 0;
  while (!clock.hasExpired(seconds * 1000)) {
    if (made % 10 == 3) {
      MustBeEmpty(calls.AddPlan(group, QStringLiteral("Added %1").arg(made).toStdString(), &added));
    } else if (made % 20 == 14) {
      MustBeEmpty(calls.DeletePlan(added));
    } else {
      MustBeEmpty(calls.Update(Renamed(writer, plan, QStringLiteral("Change %1").arg(made))));
    }
    ++made;
    const qint64 next = qint64{made} * 1000 / kChangesASecond;
    QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, next - clock.elapsed())));
  }
  return made;
}

Figures ManyDesksFigures() {
  const QString url = NewServerStore(QStringLiteral("many_desks"));
  std::vector<Store> desks;
  for (int desk = 0; desk < kDesks; ++desk) {
    desks.push_back(OpenDesk(OptionsOf(url)));
  }
  RunEventsFor(1);
  const double before = ServersSeconds(), idle_seconds = SecondsOfLoad() / 3.0;
  RunEventsFor(idle_seconds);
  const double idle = 100 * (ServersSeconds() - before) / idle_seconds;

  const double before_load = ServersSeconds();
  auto changes = std::async(std::launch::async, [&] { return ChangeFor(desks.front(), SecondsOfLoad()); });
  HostFixture::WaitFor([&] { return changes.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
                       2 * SecondsOfLoad());
  const double busy = 100 * (ServersSeconds() - before_load) / SecondsOfLoad();
  QElapsedTimer clock;
  clock.start();
  const QStringList wanted = TreeOf(desks.front());
  for (const Store& desk : desks) {
    HostFixture::WaitFor([&] { return TreeOf(desk) == wanted; });
  }
  const double equal = static_cast<double>(clock.elapsed()) / 1000;
  for (const Store& desk : desks) {
    desk->Close();
  }
  return {{QStringLiteral("idle_desks"), QStringLiteral("% of a core that the server needs for 100 idle desks"), idle,
           5, Figure::AtMost, QStringLiteral("over %1 s").arg(idle_seconds, 0, 'f', 0)},
          {QStringLiteral("many_desks"), QStringLiteral("s until 100 desks show all that one of them has changed"),
           equal, 2, Figure::AtMost,
           QStringLiteral("%1 changes in %2 s, the server needed %3 % of a core")
               .arg(changes.get())
               .arg(SecondsOfLoad())
               .arg(busy, 0, 'f', 0)}};
}

/// Of all faults the longest calls on the GUI thread.
StoreTest::CGuiHolds::Longest LongestHolds() {
  using StoreTest::CServerFault;
  StoreTest::CGuiHolds::Longest longest;
  for (const CServerFault::Kind fault :
       {CServerFault::kHangs, CServerFault::kLineIsCut, CServerFault::kLineIsSilent, CServerFault::kIsLocked}) {
    StoreTest::CStoreFixture fixture;
    const StoreTest::CClient other(&fixture, QStringLiteral("bob"));
    other->DefaultUser();
    StoreTest::CFaultyLine line{QUrl(fixture.Url())};
    fixture.options.url = line.Url();
    bool is_known = false;
    fixture.options.on_trouble = [&](TarnHost::StoreTrouble, const QString& text) { is_known = !text.isEmpty(); };
    StoreTest::CGuiHolds desk(StoreTest::CClient(&fixture, QStringLiteral("ann")), other);
    {
      const CServerFault present(fault, fixture, &line);
      desk.Ask(kFaultMs, [&] { return is_known; });
    }
    if (!desk.Wrong().isEmpty()) {
      qFatal("what was asked on the GUI thread was not answered: %s", qPrintable(desk.Wrong().first()));
    }
    longest.read = std::max(longest.read, desk.Holds().read);
    longest.write = std::max(longest.write, desk.Holds().write);
  }
  return longest;
}

Figures HoldFigures() {
  const auto longest = LongestHolds();
  const QString note = QStringLiteral("server hangs, line cut, line silent, store locked");
  return {
      {QStringLiteral("gui_reads"), QStringLiteral("ms that a read holds the GUI thread under a fault, the longest"),
       longest.read, 100, Figure::AtMost, note},
      {QStringLiteral("gui_writes"), QStringLiteral("ms that a write holds it, the longest"), longest.write, 2000,
       Figure::AtMost, note}};
}

/// The best of a few starts, from opening the store to a tree with all rows.
double StartMs(const QString& url) {
  const TarnHost::PlanStoreOptions options = OptionsOf(url, kLargeGroups);
  OpenDesk(options)->Close();
  double best = 0;
  for (int start = 0; start < kStarts; ++start) {
    const double ms = TimeMs([&] {
      HostFixture desk(options);
      desk.RestartPlugin();
      TarnPlanView::CViewModelDataManager::Instance().LoadAllViewManagerModelData();
    });
    best = start == 0 ? ms : std::min(best, ms);
  }
  return best;
}

Figure StartFigure() {
  const QTemporaryDir folder;
  const double file = StartMs("sqlite:" + folder.filePath(QStringLiteral("plans.db")));
  const double server = StartMs(NewServerStore(QStringLiteral("large_site"), kLargeGroups));
  return {QStringLiteral("start_postgres"),
          QStringLiteral("start with 110,000 records on PostgreSQL against SQLite"),
          server / file,
          3,
          Figure::AtMost,
          QStringLiteral("%1 ms against %2 ms").arg(server, 0, 'f', 0).arg(file, 0, 'f', 0)};
}

/// The chapter once more, in a process that has a server of its own.
Figures MeasureWithServer() {
  const QTemporaryDir folder;
  const QString json = folder.filePath(QStringLiteral("site.json"));
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QStringLiteral("python3"), {QStringLiteral(WITH_POSTGRES), QCoreApplication::applicationFilePath(),
                                            "--only", "site", "--json", json});
  process.waitForFinished(-1);
  QFile file(json);
  if (!file.open(QIODevice::ReadOnly)) {
    qFatal("the figures of a site with a server could not be measured: %s",
           process.readAllStandardOutput().constData());
  }
  Figures figures;
  for (const QJsonValue& value : QJsonDocument::fromJson(file.readAll()).object()["figures"].toArray()) {
    figures.push_back({value["name"].toString(), value["what"].toString(), value["value"].toDouble(),
                       value["bar"].toDouble(), Figure::AtMost, value["note"].toString()});
  }
  return figures;
}

}  // namespace

Figures MeasureSite() {
  if (!qEnvironmentVariableIsSet(kServer)) {
    return MeasureWithServer();
  }
  const QTemporaryDir folder;
  Figures figures = NewsFigures("postgres", NewServerStore(QStringLiteral("news")), 20);
  for (const Figures& more : {NewsFigures("sqlite", "sqlite:" + folder.filePath(QStringLiteral("plans.db")), 200),
                              ManyDesksFigures(), HoldFigures(), Figures{StartFigure()}}) {
    figures.insert(figures.end(), more.begin(), more.end());
  }
  return figures;
}
