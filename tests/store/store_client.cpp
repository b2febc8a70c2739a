// A second process for the tests: store_client URL add [MAX_FILE_BYTES] | read MAX_FILE_BYTES | station
#include <QCoreApplication>
#include <QThread>
#include <csignal>
#include <cstdio>
#include <string>

#include <sys/resource.h>

#include "store_fixture.h"

namespace {

std::shared_ptr<TarnHost::CPlanStore> Open(const QString& url) {
  TarnHost::PlanStoreOptions options;
  options.url = url;
  options.first_content = StoreTest::SmallSite;
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn({"ann"}).IsDone()) {
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
    const bool next_group = number % 8 == 0;
    const QString error = next_group ? client.AddGroup("-1", "Group", &code)
                                     : client.AddPlan(group, "Plan " + std::to_string(number), &code);
    if (!error.isEmpty()) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return 1;
    }
    group = next_group ? code : group;
    Say(code);
  }
  return 2;
}

// From this size on writing fails, as on a full disk.
void LimitFiles(rlim_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

// What stands at the top, then what becomes of a change, as soon as the plans are there.
int ReadThenAdd(const QString& url) {
  const auto store = Open(url);
  if (!store) {
    return 2;
  }
  while (!store->IsViewResourceDownFinish()) {
    QThread::yieldCurrentThread();
  }
  const StoreTest::CClient client(store);
  for (const QString& line : client.Groups("-1") + client.Plans("-1")) {
    Say(line.toStdString());
  }
  std::fprintf(stderr, "%s\n", qPrintable(client.AddPlan("-1", "One more")));
  return 0;
}

int SayStation(const QString& url) {
  const auto store = Open(url);
  Say(store ? store->StationId() : std::string());
  return store ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  const QString mode = arguments.value(2);
  if (arguments.value(3).toLongLong() >= 0 && arguments.size() > 3) {
    LimitFiles(arguments[3].toULongLong());
  }
  if (mode == "add") {
    return AddForever(arguments[1]);
  }
  return mode == "read" ? ReadThenAdd(arguments[1]) : SayStation(arguments[1]);
}
