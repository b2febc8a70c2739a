#pragma once

#include <QDir>
#include <QFile>
#include <QSet>
#include <QUrl>
#include <algorithm>
#include <csignal>
#include <vector>

#include <sys/types.h>

namespace StoreTest {

/// One end of a connection to the PostgreSQL server that the tests were given.
struct ServerSocket {
  bool is_servers, has_unread;
  double alive_seconds;  // until the system asks the other end for a sign of life; negative when it does not
};

inline std::vector<ServerSocket> ServerSockets() {
  constexpr double kTicks = 100;  // a second, as the system shows times
  const int port = QUrl(QString::fromLocal8Bit(qgetenv("TARN_TEST_POSTGRES"))).port();
  const QByteArray server = "0100007F:" + QByteArray::number(port, 16).rightJustified(4, '0').toUpper();
  std::vector<ServerSocket> sockets;
  QSet<QByteArray> known;  // the list may show one twice while others on the machine come and go
  QFile file("/proc/net/tcp");
  for (const QByteArray& line : (file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray()).split('\n')) {
    const QList<QByteArray> fields = line.simplified().split(' ');  // number, own end, other end, state, queues, timer
    const bool is_servers = fields.value(1) == server;
    const QByteArray ends = fields.value(1) + fields.value(2);
    if (fields.value(3) == "01" && (is_servers || fields.value(2) == server) && !known.contains(ends)) {
      known.insert(ends);
      const QByteArray timer = fields.value(5);
      sockets.push_back({is_servers, !fields.value(4).endsWith(":00000000"),
                         timer.startsWith("02:") ? timer.mid(3).toInt(nullptr, 16) / kTicks : -1});
    }
  }
  return sockets;
}

/// Stops the PostgreSQL server that the tests were given, until this object goes. The system goes on taking what is
/// sent to it: so a server looks that hangs.
class CServerPause {
 public:
  CServerPause() {
    const int server = qEnvironmentVariableIntValue("TARN_TEST_POSTGRES_PID");
    if (server <= 0) {
      qFatal("no server to stop");
    }
    Stop(server);  // first: from here on it starts no more processes
    for (const QString& entry : QDir("/proc").entryList(QDir::Dirs)) {
      const int process = entry.toInt();
      if (process > 0 && ParentOf(process) == server) {
        Stop(process);
      }
    }
  }
  ~CServerPause() { GoOn(); }
  CServerPause(const CServerPause&) = delete;
  CServerPause& operator=(const CServerPause&) = delete;

  /// Whether a client has sent something that the server leaves lying: so it waits.
  bool KeepsSomebodyWaiting() const {
    const auto sockets = ServerSockets();
    return std::any_of(sockets.begin(), sockets.end(),
                       [](const ServerSocket& socket) { return socket.is_servers && socket.has_unread; });
  }

  void GoOn() {
    for (const pid_t process : stopped_) {
      ::kill(process, SIGCONT);
    }
    stopped_.clear();
  }

 private:
  void Stop(pid_t process) {
    if (::kill(process, SIGSTOP) == 0) {
      stopped_.push_back(process);
    }
  }

  // The second field after the name, which may hold anything and stands in brackets.
  static int ParentOf(int process) {
    QFile file(QString("/proc/%1/stat").arg(process));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return stat.mid(stat.lastIndexOf(')') + 1).simplified().split(' ').value(1).toInt();
  }

  std::vector<pid_t> stopped_;
};

}  // namespace StoreTest
