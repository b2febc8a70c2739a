#include <QtTest>

#include "commands/free_name.h"
#include "commands/row_commands.h"
#include "plan_rules/families.h"

using namespace TarnClient;

// What decides about the client's entries of the row menu.
class RowCommandsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void RightsDecide();
  void CopiesGetTheNextFreeName();
};

void RowCommandsTest::RightsDecide() {
  const auto letters = [](RowKind kind, int family, const QList<int>& rights, bool playing) {
    RowSituation row;
    row.kind = kind;
    row.family = family;
    for (const int right : rights) {
      row.rights.Add(static_cast<view_plugin_protocol::Right>(right));
    }
    row.playing = playing;
    row.why_no_new_plan = "why";
    QString found;
    for (int command = 0; command < kRowCommands; ++command) {
      const RowCommandState state = StateOf(static_cast<RowCommand>(command), row);
      const QChar letter = QStringLiteral("npdmrwso").at(command);
      found += !state.shown ? QChar('-') : state.IsEnabled() ? letter : letter.toUpper();
    }
    return found;
  };
  using namespace view_plugin_protocol;
  QCOMPARE(letters(RowKind::Plan, PublicFamily, {5, 6, 7}, true), QString("Npdmrwso"));
  QCOMPARE(letters(RowKind::Plan, PublicFamily, {}, false), QString("NpDMRwSo"));
  QCOMPARE(letters(RowKind::Plan, PublicFamily, {5}, false), QString("NpdMRwSo"));
  QCOMPARE(letters(RowKind::Plan, PublicFamily, {6}, false), QString("NpDmrwSo"));
  QCOMPARE(letters(RowKind::Group, OwnFamily, {}, true), QString("Np--rwso"));
  QCOMPARE(letters(RowKind::Root, PublicFamily, {5, 6, 7}, false), QString("Np------"));
  QCOMPARE(letters(RowKind::None, OwnFamily, {5, 6, 7}, true), QString("NPDMRWSO"));
}

void RowCommandsTest::CopiesGetTheNextFreeName() {
  QCOMPARE(NameOfCopy("Gate", {"Gate"}), QString("Gate (2)"));
  QCOMPARE(NameOfCopy("Gate", {"Gate", "gate (2)", "Gate (4)"}), QString("Gate (3)"));
  QCOMPARE(NameOfCopy("Gate (2)", {"Gate", "Gate (2)"}), QString("Gate (3)"));
  QCOMPARE(NameOfCopy("Gate (b)", {"Gate (b)"}), QString("Gate (b) (2)"));
  const QString longest(256, 'x');
  QCOMPARE(NameOfCopy(longest, {longest}), QString(252, 'x') + " (2)");
  const QString pair = QString::fromUtf8("\xF0\x9F\x9A\x80");  // one character of two units
  QCOMPARE(NameOfCopy(QString(251, 'x') + pair + "yyy", {}), QString(251, 'x') + " (2)");
}

QTEST_APPLESS_MAIN(RowCommandsTest)
#include "test_row_commands.moc"
