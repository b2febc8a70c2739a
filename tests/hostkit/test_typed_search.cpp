#include <QSignalSpy>
#include <QtTest>

#include "WidgetKit/new_search_line.h"
#include "WidgetKit/typed_search.h"

using WidgetKit::CNewSearchLine;
using WidgetKit::TypedSearch;

// When a field that searches as one types has its search done.
class TypedSearchTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void DecidesWhenToSearch();
  void SaysWhatIsEnough();
  void FieldSearchesOnceTypingPauses();
};

// One letter an event: "t" and a text typed, "s" and one set by the program, "p" a pause, "r" Return, "f" the
// hits are gone, "o" no pause counts any more. Answers: "w" the
// pause begins, "d" it is dropped, "!" searched, "." nothing.
void TypedSearchTest::DecidesWhenToSearch() {
  const struct {
    QStringList events;
    QString steps;
  } rows[] = {
      {{"tg", "tga", "tgat", "p", "p"}, "dww!."},
      {{"tga", "tg", "p"}, "wd."},                      // too short by now
      {{"tga", "p", "tgat", "tga", "p"}, "w!wd."},      // back to what is shown already
      {{"tga", "r", "p"}, "w!."},                       // once, and at once
      {{"tga", "p", "r"}, "w!!"},                       // the user wants it again
      {{"tga", "p", "t", "tga", "p"}, "w!dw!"},         // emptied: what was shown is gone
      {{"tga", "tga ", "p"}, "w.!"},                    // a blank is no other text
      {{"sgate", "p", "tgates", "p"}, "d.w!"},          // what the program puts there waits for Return
      {{"tga", "p", "f", "tg", "tga", "p"}, "w!.dw!"},  // not what is shown any more
      {{"tga", "o", "p"}, "w.."},
      {{"tg", "r"}, "d!"},  // Return searches for one letter, too
  };
  for (const auto& row : rows) {
    TypedSearch search;
    QString steps;
    for (const QString& event : row.events) {
      TypedSearch::Step step = TypedSearch::Step::Nothing;
      if (event == "p") {
        step = search.OnPause();
      } else if (event == "r") {
        step = search.OnRequest();
      } else if (event == "f") {
        search.ForgetSearched();
      } else if (event == "o") {
        search.DropWait();
      } else {
        step = search.OnText(event.mid(1), event.startsWith('t'));
      }
      steps += QStringLiteral(".wd!").at(static_cast<int>(step));
    }
    QVERIFY2(steps == row.steps, qPrintable(row.events.join(' ') + ": " + steps));
  }
}

void TypedSearchTest::SaysWhatIsEnough() {
  for (const char* text : {u8"ga", u8" 17", u8"\u95E8", u8" \u95E8 ", u8"\U00020000", u8"\uBB38", u8"\u30C9"}) {
    QVERIFY2(TypedSearch::IsEnough(QString::fromUtf8(text)), text);
  }
  for (const char* text : {"", "  ", "g", " g ", "7", u8"\u00DC"}) {
    QVERIFY2(!TypedSearch::IsEnough(QString::fromUtf8(text)), text);
  }
}

void TypedSearchTest::FieldSearchesOnceTypingPauses() {
  CNewSearchLine field;
  QStringList searched;
  connect(&field, &CNewSearchLine::SignalSearch, &field,
          [&] { searched << field.text() + (field.IsTypedSearch() ? " typed" : " wanted"); });
  QSignalSpy leave(&field, &CNewSearchLine::SignalLeave), to_hits(&field, &CNewSearchLine::SignalToHits);
  QTest::keyClick(&field, Qt::Key_Down);
  QCOMPARE(to_hits.size(), 0);  // not before it was asked for
  field.SetSearchesAsTyped(true);
  QTest::keyClicks(&field, "gate");
  QCOMPARE(searched, QStringList());
  QTRY_COMPARE(searched, QStringList("gate typed"));
  QTest::keyClicks(&field, "s");
  QTest::keyClick(&field, Qt::Key_Return);
  QCOMPARE(searched, QStringList({"gate typed", "gates wanted"}));
  QTest::keyClicks(&field, " ");
  QTest::keyClick(&field, Qt::Key_Down);
  QCOMPARE(to_hits.size(), 1);
  QTest::keyClick(&field, Qt::Key_Backspace);
  QTest::keyClick(&field, Qt::Key_Backspace);
  QTest::keyClick(&field, Qt::Key_Down);  // before the pause is over: the hits on show are others
  QCOMPARE(searched, QStringList({"gate typed", "gates wanted", "gate wanted"}));
  QCOMPARE(to_hits.size(), 1);
  QTest::keyClicks(&field, "7");
  QTest::keyClick(&field, Qt::Key_Escape);
  QVERIFY(field.text().isEmpty() && leave.size() == 1);
  QTest::keyClicks(&field, "ab");
  QTRY_COMPARE(searched.size(), 4);
  QCOMPARE(searched.last(), QString("ab typed"));  // and nothing for what Esc has taken away
}

QTEST_MAIN(TypedSearchTest)
#include "test_typed_search.moc"
