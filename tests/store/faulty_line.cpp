#include "faulty_line.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <atomic>
#include <memory>
#include <utility>
#include <vector>

namespace StoreTest {

class CFaultyLine::Exchange : public QObject {
 public:
  explicit Exchange(const QUrl& server) : server_(server) {
    connect(&calls_, &QTcpServer::newConnection, this, &Exchange::Connect);
    calls_.setParent(this);
  }

  void Listen() {
    silent_ = false;
    for (const auto& weak : std::exchange(pairs_, {})) {
      const auto pair = weak.lock();
      if (pair && pair->client->isOpen() && pair->server->isOpen()) {
        pairs_.push_back(pair);
        FromClient(*pair);
        FromServer(*pair);
      }
    }
    TakeCalls();
  }
  void FailAfter(const QByteArrayList& words, Fault fault) {
    words_ = words;
    fault_ = fault;
    failed = false;
  }
  void Cut() {
    calls_.close();
    for (QTcpSocket* socket : findChildren<QTcpSocket*>()) {
      socket->abort();
    }
  }
  void Silence() {
    silent_ = true;
    TakeCalls();
  }
  quint16 Port() const { return port_; }

  std::atomic<bool> failed{false};
  std::atomic<int> calls{0};

 private:
  struct Pair {
    QTcpSocket *client = nullptr, *server = nullptr;
    QByteArray said;  // what is still to be looked through
    int words = 0;    // how many of the awaited ones were said
    bool silent = false, cut_when_answered = false;
  };

  void TakeCalls() {
    if (!calls_.isListening() && !calls_.listen(QHostAddress::LocalHost, port_)) {
      qFatal("the line cannot listen: %s", qPrintable(calls_.errorString()));
    }
    port_ = calls_.serverPort();
  }

  void Connect() {
    while (QTcpSocket* client = calls_.nextPendingConnection()) {
      ++calls;
      const auto pair = std::make_shared<Pair>();
      pair->client = client;
      pair->server = new QTcpSocket(this);
      client->setParent(this);
      pair->server->connectToHost(QHostAddress(server_.host()), static_cast<quint16>(server_.port()));
      pair->server->waitForConnected();
      pairs_.push_back(pair);
      connect(client, &QTcpSocket::readyRead, this, [this, pair] { FromClient(*pair); });
      connect(pair->server, &QTcpSocket::readyRead, this, [this, pair] { FromServer(*pair); });
      connect(client, &QTcpSocket::disconnected, this, [pair] { End(*pair, pair->server); });
      connect(pair->server, &QTcpSocket::disconnected, this, [pair] { End(*pair, pair->client); });
    }
  }

  // Over a silent line the other end hears of nothing, its partner's end included.
  static void End(const Pair& pair, QTcpSocket* other) {
    if (!pair.silent) {
      other->disconnectFromHost();
    }
  }

  void FromClient(Pair& pair) {
    if (pair.silent || silent_) {
      return;
    }
    const QByteArray bytes = pair.client->readAll();
    const bool now = HearsAll(pair, bytes);
    if (now && fault_ == kCutBefore) {
      Fail();
      return;
    }
    pair.server->write(bytes);
    pair.server->flush();
    if (now) {
      pair.silent = fault_ == kSilent;
      pair.cut_when_answered = fault_ == kCutAnswered;
      failed = pair.silent;
    }
  }

  void FromServer(Pair& pair) {
    if (pair.cut_when_answered) {
      Fail();
    } else if (!pair.silent && !silent_) {
      pair.client->write(pair.server->readAll());
    }
  }

  bool HearsAll(Pair& pair, const QByteArray& bytes) {
    pair.said += bytes;
    while (pair.words < words_.size()) {
      const int place = pair.said.indexOf(words_[pair.words]);
      if (place < 0) {
        pair.said = pair.said.right(words_[pair.words].size());
        return false;
      }
      pair.said.remove(0, place + words_[pair.words].size());
      ++pair.words;
    }
    const bool now = !words_.isEmpty();
    words_.clear();
    return now;
  }

  void Fail() {
    Cut();
    failed = true;
  }

  const QUrl server_;
  QTcpServer calls_;
  quint16 port_ = 0;
  QByteArrayList words_;
  Fault fault_ = kSilent;
  bool silent_ = false;
  std::vector<std::weak_ptr<Pair>> pairs_;
};

CFaultyLine::CFaultyLine(const QUrl& server) : address_(server), exchange_(new Exchange(server)) {
  exchange_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, exchange_, &QObject::deleteLater);
  thread_.start();
  Mend();
  address_.setHost(QStringLiteral("127.0.0.1"));
  address_.setPort(exchange_->Port());
}

CFaultyLine::~CFaultyLine() {
  thread_.quit();
  thread_.wait();
}

QString CFaultyLine::Url() const {
  return address_.toString();
}

bool CFaultyLine::HasFailed() const {
  return exchange_->failed;
}

int CFaultyLine::Calls() const {
  return exchange_->calls;
}

void CFaultyLine::FailAfter(const QByteArrayList& words, Fault fault) {
  QMetaObject::invokeMethod(
      exchange_, [=] { exchange_->FailAfter(words, fault); }, Qt::BlockingQueuedConnection);
}

void CFaultyLine::Cut() {
  QMetaObject::invokeMethod(
      exchange_, [this] { exchange_->Cut(); }, Qt::BlockingQueuedConnection);
}

void CFaultyLine::Silence() {
  QMetaObject::invokeMethod(
      exchange_, [this] { exchange_->Silence(); }, Qt::BlockingQueuedConnection);
}

void CFaultyLine::Mend() {
  QMetaObject::invokeMethod(
      exchange_, [this] { exchange_->Listen(); }, Qt::BlockingQueuedConnection);
}

}  // namespace StoreTest
