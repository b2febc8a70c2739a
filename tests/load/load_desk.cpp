// A headless desk that works at random and can be made to fail: load_desk URL NAME SEED [rows]
// With "rows" it makes no changes and shows what the plug-in's tree has.
// Standard input: cut, silence, mend (its line to the server), stop (no more changes), tree (what it shows), quit.
// Standard output: see desk_journal.h.
#include <QApplication>
#include <QJsonArray>
#include <QSocketNotifier>
#include <QTextStream>
#include <QUrl>
#include <functional>
#include <map>
#include <thread>

#include <unistd.h>

#include "TarnHost/plan_site.h"
#include "desk_work.h"
#include "faulty_line.h"
#include "plan_calls.h"
#include "plugin_rows.h"

namespace {

class CDesk : public QObject {
 public:
  CDesk(const QStringList& arguments)
      : line_(QUrl(arguments[1])),
        work_(
            arguments[2], arguments[3].toUInt(), [this] { return OpenOnMainThread(); }, &journal_),
        commands_(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&commands_, &QSocketNotifier::activated, this, &CDesk::Obey);
    if (arguments.value(4) == "rows") {
      rows_ = std::make_unique<CPluginRows>(Open());
      journal_.Write({{"session", true}});
    } else {
      thread_ = std::thread([this] { work_.Run(); });
    }
  }
  ~CDesk() override {
    if (thread_.joinable()) {
      thread_.join();
    }
  }

 private:
  CDeskWork::Store OpenOnMainThread() {
    CDeskWork::Store store;
    QMetaObject::invokeMethod(
        this, [&] { store = Open(); }, Qt::BlockingQueuedConnection);
    return store;
  }

  CDeskWork::Store Open() {
    if (store_) {
      store_->Close();
    }
    TarnHost::PlanStoreOptions options;
    options.url = line_.Url();
    options.switch_overrides = {{"load_all", 1}};
    QString error;
    store_ = TarnHost::CPlanStore::Open(options, &error);
    if (store_ && !TarnTest::LogIn(*store_, store_->DefaultUser(), &error)) {
      store_->Close();
      store_.reset();
    }
    if (!store_) {
      journal_.Write({{"not_opened", error}});
    }
    return store_;
  }

  void Obey() {
    char bytes[4096];
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) {
      std::_Exit(3);  // who started this desk is gone
    }
    said_ += QByteArray(bytes, int(count));
    for (int end = said_.indexOf('\n'); end >= 0; end = said_.indexOf('\n')) {
      const QByteArray word = said_.left(end);
      said_.remove(0, end + 1);
      Do(word);
    }
  }

  void Do(const QByteArray& word) {
    const std::map<QByteArray, std::function<void()>> actions = {
        {"cut", [this] { line_.Cut(); }},
        {"silence", [this] { line_.Silence(); }},
        {"mend", [this] { Mend(); }},
        {"stop", [this] { Stop(); }},
        {"tree",
         [this] {
           journal_.Write({{"tree", rows_ ? CPluginRows::Tree() : CDeskWork::Tree(*store_)}});
         }},
        {"quit", [this] { Quit(); }},
    };
    actions.at(word)();
  }

  // A line that was silent for a while is cut, too: what was sent over it in between is lost.
  void Mend() {
    line_.Cut();
    line_.Mend();
  }

  void Stop() {
    work_.Stop();
    if (rows_) {
      journal_.Write({{"stopped", true}});
    }
  }

  void Quit() {
    rows_.reset();
    if (store_) {
      store_->Close();
    }
    QCoreApplication::quit();
  }

  CDeskJournal journal_;
  StoreTest::CFaultyLine line_;
  CDeskWork::Store store_;
  std::unique_ptr<CPluginRows> rows_;
  CDeskWork work_;
  QSocketNotifier commands_;
  QByteArray said_;
  std::thread thread_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const CDesk desk(application.arguments());
  return QApplication::exec();
}
