#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>
#include <thread>

#include "TarnHost/log_sink.h"
#include "marlog/marlog.h"

class LogSinkTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void cleanup();
  void ThreadsWriteWholeLines();
  void RotatesAndKeepsThreeOlderFiles();
  void ListenerMayWriteItself();
  void UnwritableFileIsReported();

 private:
  QString Path() const { return dir_.filePath("logs/client.log"); }
  static QStringList Lines(const QString& path);

  QTemporaryDir dir_;
};

void LogSinkTest::cleanup() {
  TarnHost::LogSink::SetListener({});
  TarnHost::LogSink::Close();
  QDir(dir_.filePath("logs")).removeRecursively();
}

QStringList LogSinkTest::Lines(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)
                                        : QStringList();
}

void LogSinkTest::ThreadsWriteWholeLines() {
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

void LogSinkTest::RotatesAndKeepsThreeOlderFiles() {
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
  QVERIFY(Lines(Path()).last().contains(" 099 "));
  QVERIFY(Lines(Path() + ".1").last() < Lines(Path()).first());
}

void LogSinkTest::ListenerMayWriteItself() {
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

void LogSinkTest::UnwritableFileIsReported() {
  QFile blocker(dir_.filePath("blocker"));
  QVERIFY(blocker.open(QIODevice::WriteOnly));
  QVERIFY(!TarnHost::LogSink::OpenFile(dir_.filePath("blocker/client.log")));
}

QTEST_GUILESS_MAIN(LogSinkTest)
#include "test_log_sink.moc"
