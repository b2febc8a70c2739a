#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QThread>

#include "TarnHost/plan_store.h"
#include "bench_site.h"
#include "figures.h"

namespace {

constexpr int kGroups = 10000, kPlansEach = 10, kPages = 4;
constexpr int kThumbnailBytes = 14000;
constexpr int kLongestStartSeconds = 120;
constexpr int kSampleMs = 50;

TarnHost::PlanSite MakeSite() {
  TarnHost::PlanSite site = MakeBenchSite(kGroups, kPlansEach);
  for (TarnHost::PlanSite::Plan& plan : site.plans) {
    plan.pages.resize(kPages, plan.pages.front());
  }
  return site;
}

std::shared_ptr<TarnHost::CPlanStore> Load(const QString& file) {
  TarnHost::PlanStoreOptions options;
  options.url = "sqlite:" + file;
  options.first_content = &MakeSite;
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn({store->DefaultUser()}).IsDone()) {
    qFatal("the store of the bench cannot be made: %s", qPrintable(error));
  }
  while (!store->IsViewResourceDownFinish()) {
    QThread::msleep(1);
  }
  return store;
}

// Past the store: as a site they would all stand in memory at once.
void AddThumbnails(const QString& file) {
  const QString connection = QStringLiteral("thumbnails");
  {
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(file);
    database.open();
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("UPDATE plan_content SET thumbnail = randomblob(%1)").arg(kThumbnailBytes))) {
      qFatal("the store of the bench gets no thumbnails: %s", qPrintable(query.lastError().text()));
    }
  }
  QSqlDatabase::removeDatabase(connection);
}

/// 10,000 groups and 100,000 plans of four pages and a thumbnail each, in a file.
class CLargeStore {
 public:
  CLargeStore() {
    Load(File())->Close();
    AddThumbnails(File());
  }
  QString File() const { return folder_.filePath(QStringLiteral("plans.db")); }
  double Bytes() const { return static_cast<double>(QFileInfo(File()).size()); }

 private:
  QTemporaryDir folder_;
};

/// The number behind `key` in one of the process's files under /proc.
double FromProc(const QString& process, const char* file, const QByteArray& key) {
  QFile proc(QStringLiteral("/proc/%1/%2").arg(process, QLatin1String(file)));
  if (proc.open(QIODevice::ReadOnly)) {
    for (const QByteArray& line : proc.readAll().split('\n')) {
      if (line.startsWith(key)) {
        return line.mid(key.size()).simplified().split(' ').first().toDouble();
      }
    }
  }
  return 0;
}

// Of the page cache it does not matter what it holds: what is asked of the file is what a cold disk would have to give.
Figure ColdStart(const CLargeStore& large) {
  const QString self = QStringLiteral("self");
  const double before = FromProc(self, "io", "rchar:");
  const auto store = Load(large.File());
  const double read = FromProc(self, "io", "rchar:") - before;
  store->Close();
  if (read <= 0) {
    qFatal("the system does not say what was read");
  }
  const double mib = 1024 * 1024;
  return {QStringLiteral("cold_start"),
          QStringLiteral("bytes read until 110,000 records are loaded against the file"),
          read / large.Bytes(),
          0.1,
          Figure::AtMost,
          QStringLiteral("%1 MiB of %2 MiB").arg(read / mib, 0, 'f', 1).arg(large.Bytes() / mib, 0, 'f', 0)};
}

struct Run {
  int rows = 0;
  double mib = 0;
};

// The client says at its end how many rows there are; until then its memory is looked at.
Run RunClient(const QString& file, bool load_all, int seconds) {
  QProcess client;
  client.start(QCoreApplication::applicationDirPath() + "/" TARN_CLIENT_NAME,
               {"--store", "sqlite:" + file, "--set", QStringLiteral("load_all=%1").arg(int(load_all)), "--quit-after",
                QString::number(seconds), "--log", file + ".log"});
  Run run;
  if (!client.waitForStarted()) {
    qFatal("the client does not start: %s", qPrintable(client.errorString()));
  }
  while (!client.waitForReadyRead(kSampleMs) && client.state() == QProcess::Running) {
    const double kib = FromProc(QString::number(client.processId()), "status", "VmRSS:");
    if (kib > 0) {
      run.mib = kib / 1024;
    }
  }
  client.waitForFinished();
  const QJsonObject report = QJsonDocument::fromJson(client.readAllStandardOutput()).object();
  run.rows = report[QStringLiteral("rows")].toObject()[QStringLiteral("public")].toInt();
  return run;
}

// A busy machine takes longer to load; what counts is what a loaded client holds.
Figure ClientMemory(const CLargeStore& large) {
  Run loaded;
  for (int seconds = 8; loaded.rows < kGroups * (kPlansEach + 1) && seconds <= kLongestStartSeconds; seconds *= 2) {
    loaded = RunClient(large.File(), true, seconds);
  }
  if (loaded.rows < kGroups * (kPlansEach + 1)) {
    qFatal("the client does not load the bench's store");
  }
  const Run first_level = RunClient(large.File(), false, 8);
  return {QStringLiteral("client_memory"),
          QStringLiteral("resident MiB of the client with 10,000 groups and 100,000 plans loaded"),
          loaded.mib,
          300,
          Figure::AtMost,
          QStringLiteral("%1 MiB with the groups alone").arg(first_level.mib, 0, 'f', 0)};
}

}  // namespace

Figures MeasureStart() {
  const CLargeStore large;
  return {ColdStart(large), ClientMemory(large)};
}
