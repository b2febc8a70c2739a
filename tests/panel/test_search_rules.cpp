#include <QtTest>

#include "hit_line.h"
#include "last_searches.h"
#include "search_course.h"
#include "search_memory.h"

using namespace TarnPlanView;

// What the search page decides without a widget: which answer counts, and what of a path is seen.
class SearchRulesTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void TakesTheNewestAnswer();
  void FitsTheLineOfAHit_data();
  void FitsTheLineOfAHit();
  void MarksWhatWasSearched();
  void KeepsTheLastSearches();
};

void SearchRulesTest::TakesTheNewestAnswer() {
  const auto answered = [](SearchCourse& course) {
    const auto question = course.OnAnswer();
    return question ? question->text + (question->typed ? " typed" : " wanted") : QString("nothing");
  };
  SearchCourse course;
  QCOMPARE(answered(course), QString("nothing"));
  QVERIFY(course.Ask("ga", true) && course.IsUnderWay());
  QVERIFY(course.Ask("gate", true));
  QVERIFY(!course.Ask("gate", true));  // it is on its way
  QCOMPARE(answered(course), QString("gate typed"));
  QVERIFY(course.Ask("gate", true));    // the same once more
  QVERIFY(!course.Ask("gate", false));  // Return while it is under way: the hits get the keyboard
  course.OnFailed();
  QVERIFY(course.HasFailed());
  QCOMPARE(answered(course), QString("gate wanted"));
  QVERIFY(course.HasFailed());  // for the page that is shown now
  QVERIFY(course.Ask("gates", false) && !course.HasFailed());
  course.Leave();
  course.OnFailed();
  QVERIFY(!course.HasFailed() && !course.IsUnderWay());
  QCOMPARE(answered(course), QString("nothing"));
  course.AskAgain("gate");  // hits that are on show: the keyboard stays where it is
  QCOMPARE(answered(course), QString("gate typed"));
  QVERIFY(course.Ask("gate", false));
  course.AskAgain("gate");  // what is on its way may be of before
  QCOMPARE(answered(course), QString("gate wanted"));
}

void SearchRulesTest::FitsTheLineOfAHit_data() {
  QTest::addColumn<QString>("groups");
  QTest::addColumn<QString>("shown");
  QTest::addColumn<int>("width");
  QTest::addColumn<QString>("line");
  const auto add = [](const char* name, const char* groups, const char* shown, int width, const char* line) {
    QTest::newRow(name) << groups << shown << width << QString::fromUtf8(line);
  };
  add("all of it", "Public,Gates,North", "", 22, "Public / Gates / North");
  add("root and innermost stay", "Public,Gates,West,North", "", 22, u8"Public / \u2026 / North");
  add("as many of the lower ones as fit", "Public,Annex,Gates,North", "", 26, u8"Public / \u2026 / Gates / North");
  add("the innermost alone", "Public,Gates,North", "", 12, u8"\u2026 / North");
  add("however long it is", "Public,Gates,North of the bridge", "", 12, u8"\u2026 / North of the bridge");
  add("only the root", "Public", "", 3, "Public");
  add("with its camera", "Public,Gates", "shows CAM 17", 29, u8"Public / Gates \u00b7 shows CAM 17");
  add("the camera keeps its half", "Public,Gates,North", "shows CAM 017 Weighbridge", 27,
      u8"\u2026 / North \u00b7 shows CAM 017 Weighbridge");
  add("a short camera leaves the rest", "Public,Gates,West,North", "shows 7", 32,
      u8"Public / \u2026 / North \u00b7 shows 7");
}

void SearchRulesTest::FitsTheLineOfAHit() {
  QFETCH(QString, groups);
  QFETCH(QString, shown);
  QFETCH(int, width);
  QFETCH(QString, line);
  const auto width_of = [](const QString& text) { return text.size(); };
  QCOMPARE(WholeLine(FittedLine(groups.split(','), shown, width, width_of)), line);
}

void SearchRulesTest::MarksWhatWasSearched() {
  QCOMPARE(PlacesOf("ga", "Gate GA, saga", 0), QVector<int>({0, 5, 11}));
  QCOMPARE(PlacesOf("aa", "aaaa", 0), QVector<int>({0, 2}));
  QCOMPARE(PlacesOf("s", "shows Silo", 6), QVector<int>({6}));  // the camera's name alone
  QCOMPARE(PlacesOf("", "Gate", 0), QVector<int>());
}

void SearchRulesTest::KeepsTheLastSearches() {
  QCOMPARE(WithSearch({"a", "Gate", "b"}, "gate"), QStringList({"gate", "a", "b"}));
  QStringList many;
  for (int i = 0; i < 12; ++i) {
    many = WithSearch(many, QString::number(i));
  }
  QVERIFY(many.size() == kMostLastSearches && many.first() == "11" && many.last() == "2");
}

QTEST_APPLESS_MAIN(SearchRulesTest)
#include "test_search_rules.moc"
