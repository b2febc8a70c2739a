#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TarnHost/log_sink.h"
#include "marlog/marlog.h"

class LogSinkTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void cleanup() {
    TarnHost::LogSink::SetListener({});
    TarnHost::LogSink::Close();
    QDir(dir_.filePath("logs")).removeRecursively();
  }

  void ThreadsWriteWholeLines() {
    QVERIFY(TarnHost::LogSink::OpenFile(Path()));
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back([thread] {
        for (int i = 0; i < 500; ++i) {
          marlog::Write("LyraClientInfo", marlog::Info, "[%s(%d)] - %s", "thread", thread, "\u95e8\n100%");
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    const QStringList lines = Lines(Path());
    QCOMPARE(lines.size(), 2000);
    for (const QString& line : lines) {
      QVERIFY2(line.contains(" I LyraClientInfo [thread(") && line.endsWith(QString::fromUtf8("\u95e8\\n100%")),
               qPrintable(line));
    }
  }

  void RotatesAndKeepsThreeOlderFiles() {
    QVERIFY(TarnHost::LogSink::OpenFile(Path()));
    const std::string text(64 * 1024, 'x');
    for (int i = 0; i < 100; ++i) {
      marlog::Write("LyraClientError", marlog::Error, "%03d %s", i, text.c_str());
    }
    const QDir folder(dir_.filePath("logs"));
    QCOMPARE(folder.entryList(QDir::Files, QDir::Name),
             QStringList({"client.log", "client.log.1", "client.log.2", "client.log.3"}));
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files)) {
      QVERIFY2(file.size() <= 1024 * 1024, qPrintable(file.fileName()));
    }
    QCOMPARE(QFile::permissions(Path()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QVERIFY(Lines(Path()).last().contains(" 099 "));
    QVERIFY(Lines(Path() + ".1").last() < Lines(Path()).first());
  }

  void ListenerMayWriteItself() {
    QStringList heard;
    TarnHost::LogSink::SetListener([&heard](const QString& module, int level, const QString& line) {
      heard << QString("%1/%2/%3").arg(module).arg(level).arg(line);
      if (heard.size() == 1) {
        marlog::Write("second", marlog::Info, "from the listener");
      }
    });
    marlog::Write("first", marlog::Error, "code 0x%08x", 0x1f);
    QCOMPARE(heard, QStringList({"first/3/code 0x0000001f", "second/1/from the listener"}));
  }

  void UnwritableFileIsReported() {
    QFile blocker(dir_.filePath("blocker"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QVERIFY(!TarnHost::LogSink::OpenFile(dir_.filePath("blocker/client.log")));
  }

  void TakesWhateverWasNamed_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a file of others' making") << "file" << true;
    QTest::newRow("a pipe") << "pipe" << true;
    QTest::newRow("a pipe without a reader") << "silent pipe" << false;
    QTest::newRow("a device") << "device" << true;
  }

  // With Qt's own messages going to the log, as in the client. What takes for ever here ends with the test's time
  // limit.
  void TakesWhateverWasNamed() {
    QFETCH(QString, kind);
    QFETCH(bool, opens);
    QByteArray path = QFile::encodeName(dir_.filePath("named-" + kind));
    int reader = -1;
    if (kind == "file") {
      QFile file(QFile::decodeName(path));
      QVERIFY(file.open(QIODevice::WriteOnly) && file.write("first\n") == 6);
    } else if (kind == "device") {
      reader = ::posix_openpt(O_RDWR | O_NOCTTY);  // a terminal of the test's own
      QVERIFY(reader >= 0 && ::grantpt(reader) == 0 && ::unlockpt(reader) == 0);
      path = ::ptsname(reader);
    } else {
      QCOMPARE(::mkfifo(path.constData(), 0644), 0);
      reader = kind == "pipe" ? ::open(path.constData(), O_RDONLY | O_NONBLOCK) : -1;
    }
    const auto rights = [&path] {
      struct stat status {};
      return ::stat(path.constData(), &status) == 0 ? status.st_mode & 0777 : mode_t{0};
    };
    QCOMPARE(::chmod(path.constData(), 0644), 0);
    QtMessageHandler old = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
      marlog::Write("Qt", marlog::Warning, "%s", qUtf8Printable(message));
    });
    const bool opened = TarnHost::LogSink::OpenFile(QFile::decodeName(path));
    marlog::Write("LyraClientInfo", marlog::Info, "a line");
    qInstallMessageHandler(old);
    QCOMPARE(opened, opens);
    QCOMPARE(rights(), mode_t{0644});
    if (kind == "file") {
      QCOMPARE(Lines(QFile::decodeName(path)).size(), 2);
    }
    if (reader >= 0) {
      QByteArray taken(256, '\0');
      taken.resize(int(qMax<ssize_t>(0, ::read(reader, taken.data(), size_t(taken.size())))));
      QVERIFY2(taken.trimmed().endsWith("a line"), taken);
      ::close(reader);
      marlog::Write("LyraClientInfo", marlog::Info, "into the void");  // and the process lives on
    }
  }

 private:
  QString Path() const { return dir_.filePath("logs/client.log"); }
  static QStringList Lines(const QString& path);

  QTemporaryDir dir_;
};

QStringList LogSinkTest::Lines(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
                                        : QStringList();
}

QTEST_GUILESS_MAIN(LogSinkTest)
#include "test_log_sink.moc"
