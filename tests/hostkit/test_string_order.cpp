#include <QtTest>
#include <algorithm>
#include <clocale>
#include <random>
#include <thread>

#include "MarUIControl/standard_item_model.h"

namespace {

bool Less(const QString& left, const QString& right, int mode = 2) {
  return MarUIControl::CStandardItemModel::CustomStringCompare(left, right, mode);
}

QString U(const char* utf8) {
  return QString::fromUtf8(utf8);
}

QStringList Sorted(QStringList texts, int mode) {
  std::sort(texts.begin(), texts.end(), [mode](const QString& a, const QString& b) { return Less(a, b, mode); });
  return texts;
}

}  // namespace

class StringOrderTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // A bare machine: numbers must be compared by value even there.
  void initTestCase() {
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
  }

  void OrdersNames_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("numbers by value") << 2 << QStringList{"Plan 1", "plan 2", "Plan 10", "PLAN 11", "Plan 100"};
    QTest::newRow("case decides ties only") << 2 << QStringList{"GATE", "Gate", "gate", "Gate 2"};
    QTest::newRow("accents before case") << 2 << QStringList{"Cafe", "cafe", U("CAFÉ"), U("Café"), U("café"), "cafe 2"};
    QTest::newRow("blank first") << 2 << QStringList{"", "1", "a"};
    QTest::newRow("by code point") << 0 << QStringList{"Plan 10", "Plan 2", "plan 1", U("\uE000"), U("\U0001F600")};
    QTest::newRow("folded") << 1 << QStringList{"a10", "A2", "b", "Z"};
    QTest::newRow("numbers in Chinese names") << 2 << QStringList{U("门口 2"), U("门口 10")};
  }

  void OrdersNames() {
    QFETCH(int, mode);
    QFETCH(QStringList, expected);
    QStringList shuffled = expected;
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
      std::shuffle(shuffled.begin(), shuffled.end(), random);
      QCOMPARE(Sorted(shuffled, mode), expected);
    }
  }

  void IsAStrictWeakOrder() {
    const QStringList texts = {
        "",    "a",    "A",          "a1",        "a01",           "A1", "a 1",       "a-1",  "\t", "10",   "2", "02",
        "2.5", U("ä"), U("a\u0308"), U("\u200F"), U("\U0001F600"), "z",  "a\xc2\xa0", U("ﬁ"), "fi", U("ß"), "ss"};
    for (const int mode : {0, 1, 2}) {
      for (const QString& a : texts) {
        QVERIFY(!Less(a, a, mode));
        for (const QString& b : texts) {
          QVERIFY(!(Less(a, b, mode) && Less(b, a, mode)));
          const bool tie = a == b || mode == 1;
          QVERIFY2(tie || Less(a, b, mode) || Less(b, a, mode), qPrintable(a + " / " + b));
          for (const QString& c : texts) {
            QVERIFY(!(Less(a, b, mode) && Less(b, c, mode)) || Less(a, c, mode));
          }
        }
      }
    }
  }

  // Keys are kept by address, so texts that come and go at one address must not be mixed up.
  void ReusedMemoryIsNotTakenForTheOldText() {
    const QString middle = QString::number(500000);
    for (int i = 0; i < 400000; ++i) {
      const auto number = static_cast<int>(qint64{i} * 7919 % 1000000);
      const QString text = QString::number(number);
      QCOMPARE(Less(text, middle), number < 500000);
    }
    QString changing = QStringLiteral("b");
    for (const char letter : {'a', 'c', 'a', 'd'}) {
      changing[0] = QLatin1Char(letter);
      QCOMPARE(Less(changing, QStringLiteral("b")), letter == 'a');
    }
    QChar raw[] = {'a', 'a'};
    const QString view = QString::fromRawData(raw, 2);
    QVERIFY(Less(view, QStringLiteral("ab")));
    raw[0] = 'z';
    QVERIFY(!Less(view, QStringLiteral("ab")));
  }

  void ThreadsDoNotDisturbEachOther() {
    QStringList texts;
    for (int i = 0; i < 2000; ++i) {
      texts << QStringLiteral("Plan %1").arg(i);
    }
    std::vector<QStringList> results(4);
    std::vector<std::thread> threads;
    for (QStringList& result : results) {
      threads.emplace_back([&result, texts] {
        result = texts;
        std::reverse(result.begin(), result.end());
        result = Sorted(result, 2);
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    for (const QStringList& result : results) {
      QCOMPARE(result, texts);
    }
  }
};

QTEST_GUILESS_MAIN(StringOrderTest)
#include "test_string_order.moc"
