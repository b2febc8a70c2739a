#include "store_fixture.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QtTest>

namespace StoreTest {
namespace {

using TarnHost::PlanSite;

QString RunStatement(const QUrl& url, const QString& statement) {
  QString value;
  {
    const bool file = url.scheme() == "sqlite";
    QSqlDatabase admin = QSqlDatabase::addDatabase(file ? "QSQLITE" : "QPSQL", "admin");
    admin.setHostName(url.host());
    admin.setPort(url.port());
    admin.setUserName(url.userName());
    admin.setDatabaseName(file ? url.path() : url.path().mid(1));
    QSqlQuery query(admin.open() ? admin : QSqlDatabase());
    if (!query.exec(statement)) {
      qFatal("%s fails: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    }
    value = query.next() ? query.value(0).toString() : QString();
  }
  QSqlDatabase::removeDatabase("admin");
  return value;
}

// A database of its own in the server that the environment names.
QString NewPostgresDatabase() {
  static int number = 0;
  QUrl url(QString::fromLocal8Bit(qgetenv("TARN_TEST_POSTGRES")));
  const QString name = QStringLiteral("store_%1_%2").arg(QCoreApplication::applicationPid()).arg(++number);
  url.setPath("/postgres");
  RunStatement(url, "CREATE DATABASE " + name);
  url.setPath("/" + name);
  return url.toString();
}

/// Sees the tree event of a log-in pass, so that it turns up in no test's record.
struct LogInWatch : ResourceData::IResourceObserver {
  void OnResourceUpdate(const Param&) override { passed = true; }
  bool passed = false;
};

}  // namespace

PlanSite SmallSite() {
  PlanSite site;
  site.root_name = "All plans";
  site.users = {{"ann", {5, 6, 7}}, {"bob", {5, 6}}, {"cid", {}}, {"dora", {7}}, {"eve", {5}}, {"fred", {6}}};
  site.regions = {{"Yard", -1}};
  site.cameras = {{"Gate camera", 0, true, {"Wide", "Close"}, {0, 1}}, {"Yard camera", 0, false, {}, {0}}};
  site.groups = {
      {"Gates", -1, 0, -1}, {"North", 0, 0, -1}, {"Ann's", -1, 1, 0}, {"Bob's", -1, 1, 1}, {"Common", -1, 2, -1}};
  const auto add = [&site](const char* name, int group, int family, int owner) {
    PlanSite::Plan plan;
    plan.name = name;
    plan.group = group;
    plan.family = family;
    plan.owner = owner;
    plan.pages = {CameraPage(1, 2, {"#0", "#1"}), CameraPage(2, 1)};
    site.plans.push_back(plan);
  };
  add("Gate A", 0, 0, -1);
  add("Gate B", 1, 0, -1);
  add("Ann's gate", 2, 1, 0);
  add("Bob's gate", 3, 1, 1);
  add("Top", -1, 0, -1);
  return site;
}

bool CStoreFixture::OnPostgres() {
  return qEnvironmentVariableIsSet("TARN_TEST_POSTGRES");
}

CStoreFixture::CStoreFixture() {
  options.url = OnPostgres() ? NewPostgresDatabase() : "sqlite:" + folder_.filePath("plans.db");
  options.first_content = SmallSite;
}

QString CStoreFixture::ReadPastTheStore(const QString& statement) const {
  return RunStatement(QUrl(options.url), statement);
}

QString CStoreFixture::File() const {
  return options.url.mid(7);
}

std::shared_ptr<TarnHost::CPlanStore> CStoreFixture::Open(const QString& user) const {
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store) {
    qFatal("%s", qPrintable(error));
  }
  LogInWatch watch;
  store->ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 1});
  const bool ready = store->LogIn(user, &error) &&
                     QTest::qWaitFor([&] { return watch.passed && store->IsViewResourceDownFinish(); }, 10000);
  store->ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 0});
  if (!ready) {
    qFatal("the store does not get ready: %s", qPrintable(error));
  }
  return store;
}

}  // namespace StoreTest
