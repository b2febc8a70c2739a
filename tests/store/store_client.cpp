// A second process for the tests: store_client URL add | station | lock MODE
#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <cstdio>
#include <string>

#include "store_fixture.h"

namespace {

std::shared_ptr<TarnHost::CPlanStore> Open(const QString& url) {
  TarnHost::PlanStoreOptions options;
  options.url = url;
  options.first_content = StoreTest::SmallSite;
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn("ann", &error)) {
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return nullptr;
  }
  return store;
}

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

// Acknowledges each change with a line, until it is killed or its reader is gone.
int AddForever(const QString& url) {
  const auto store = Open(url);
  const StoreTest::CClient client(store);
  std::string group, code;
  for (int number = 0; store && std::ferror(stdout) == 0; ++number) {
    if (number % 8 == 0) {
      client.AddGroup("-1", "Group", &group);
      Say(group);
    }
    const QString error = client.AddPlan(group, "Plan " + std::to_string(number), &code);
    if (!error.isEmpty()) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return 1;
    }
    Say(code);
  }
  return 2;
}

int SayStation(const QString& url) {
  const auto store = Open(url);
  Say(store ? store->StationId() : std::string());
  return store ? 0 : 2;
}

int HoldLock(const QString& file, const QString& mode) {
  QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE");
  database.setDatabaseName(file);
  QSqlQuery query(database.open() ? database : QSqlDatabase());
  const bool held = (mode != "whole" || query.exec("PRAGMA locking_mode = EXCLUSIVE")) &&
                    query.exec("BEGIN EXCLUSIVE") && query.exec("UPDATE counter SET value = value WHERE name = 'seq'");
  Say(held ? "held" : "failed");
  return std::getchar();  // until the parent closes the pipe
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  const QString mode = arguments.value(2);
  return mode == "add"       ? AddForever(arguments[1])
         : mode == "station" ? SayStation(arguments[1])
                             : HoldLock(arguments[1], arguments.value(3));
}
