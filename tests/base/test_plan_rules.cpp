#include <QtTest>
#include <memory>
#include <random>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_rules/audience.h"
#include "plan_rules/code_table.h"
#include "plan_rules/families.h"
#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/plan_sign.h"
#include "plan_rules/rights.h"
#include "plan_rules/splits.h"
#include "qt/pattern_validator.h"

using namespace view_plugin_protocol;

Q_DECLARE_METATYPE(NameFault)
Q_DECLARE_METATYPE(Viewer)

class PlanRulesTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void Names_data();
  void Names();
  void Splits();
  void Families();
  void Audiences_data();
  void Audiences();
  void Rights();
  void SignsOfPlans();
  void NumbersOfCodes();
  void TableOfCodesEqualsAPlainList();
};

void PlanRulesTest::NumbersOfCodes() {
  const std::pair<const char*, bool> rows[] = {{"0", true},
                                               {"1", true},
                                               {"9223372036854775807", true},
                                               {"9223372036854775808", false},
                                               {"99999999999999999999", false},
                                               {"01", false},
                                               {"-1", false},
                                               {"", false},
                                               {"root", false}};
  for (const auto& [code, is_exact] : rows) {
    QCOMPARE(NumberOfCode(QString(code)).IsExact(), is_exact);
    QCOMPARE(NumberOfCode(std::string(code)).IsExact(), is_exact);
  }
  QCOMPARE(NumberOfCode(QString("41")).Later(1).value, NumberOfCode(std::string("42")).value);
}

// Few numbers, so that several stand under each, and tables so small that rows of slots reach past the end.
void PlanRulesTest::TableOfCodesEqualsAPlainList() {
  std::mt19937 random(7);
  std::vector<int> things(3000);
  for (int round = 0; round < 200; ++round) {
    CCodeTable<int*> table;
    std::vector<std::pair<quint64, int*>> list;
    for (int& thing : things) {
      const CodeNumber number{random() % 12};
      if (list.size() > random() % 30) {
        const auto is_it = [&](const auto& held) { return held.first == number.value; };
        const auto found = std::find_if(list.begin(), list.end(), is_it);
        int* const taken = table.Take(number, [](const int*) { return true; });
        QCOMPARE(taken, found == list.end() ? nullptr : found->second);
        if (taken) {
          list.erase(found);
        }
      } else {
        table.Insert(number, &thing);
        list.emplace_back(number.value, &thing);
      }
    }
    for (quint64 number = 0; number < 12; ++number) {
      std::vector<int*> seen, wanted;
      table.ForEach({number}, [&](int* held) { seen.push_back(held); });
      for (const auto& [other, thing] : list) {
        if (other == number) {
          wanted.push_back(thing);
        }
      }
      QVERIFY(seen == wanted);
    }
  }
}

void PlanRulesTest::Names_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<NameFault>("fault");
  QTest::addColumn<bool>("typed");
  const QString longest(kLongestName, 'x');
  QTest::newRow("plain") << "Gate 1" << NameFault::None << true;
  QTest::newRow("longest") << longest << NameFault::None << true;
  QTest::newRow("too long") << longest + "x" << NameFault::TooLong << false;
  QTest::newRow("too long, with a forbidden character") << longest + ":" << NameFault::ForbiddenCharacter << false;
  QTest::newRow("empty") << "" << NameFault::Empty << true;
  QTest::newRow("blanks") << "   " << NameFault::Empty << true;
  QTest::newRow("not typed, but taken") << "5% o'clock" << NameFault::None << false;
  QTest::newRow("control character") << "a\tb" << NameFault::ControlCharacter << true;
  for (const char c : QByteArray("\\/:*?\"<>|")) {
    QTest::addRow("with %c", c) << QString("a%1b").arg(c) << NameFault::ForbiddenCharacter << false;
  }
}

void PlanRulesTest::Names() {
  QFETCH(QString, name);
  QTEST(FaultOfName(name), "fault");
  int at = 0;
  const std::unique_ptr<QValidator> validator(TarnQt::MakePatternValidator(TypedNamePattern(), nullptr));
  QTEST(validator->validate(name, at) != QValidator::Invalid, "typed");
}

void PlanRulesTest::Splits() {
  const QMap<int, int> windows{{1, 1}, {2, 4}, {4, 9}, {8, 16}};
  for (int split = -1; split <= 2 * kMostWindowsOfPage; ++split) {
    QCOMPARE(WindowsOfSplit(split), windows.value(split, 1));
    QCOMPARE(IsKnownSplit(split), windows.contains(split));
    QVERIFY(WindowsOfSplit(split) <= kMostWindowsOfPage);
  }
}

void PlanRulesTest::Families() {
  for (const Family family : {PublicFamily, OwnFamily, ReceivedFamily}) {
    QVERIFY(IsFamily(family) && IsRootCode(RootOf(family)));
    QCOMPARE(FamilyOfRoot(RootOf(family)), family);
  }
  QVERIFY(!IsFamily(-1) && !IsFamily(3) && !IsRootCode(0) && !IsRootCode(-3) && !IsRootCode(1));
}

// A row of user 2 below a group that is limited to user groups 7 and 8, and who sees it.
void PlanRulesTest::Audiences_data() {
  QTest::addColumn<int>("family");
  QTest::addColumn<int>("user");
  QTest::addColumn<Viewer>("viewer");
  QTest::addColumn<bool>("seen");
  const Viewer in_none, in_one{false, {1, 8}}, in_others{false, {1, 9}}, configures{true, {}};
  QTest::newRow("public, in a user group") << int(PublicFamily) << 3 << in_one << true;
  QTest::newRow("public, in other user groups") << int(PublicFamily) << 3 << in_others << false;
  QTest::newRow("public, in none") << int(PublicFamily) << 3 << in_none << false;
  QTest::newRow("public, configures") << int(PublicFamily) << 3 << configures << true;
  QTest::newRow("own, of the user, in none") << int(OwnFamily) << 2 << in_none << true;
  QTest::newRow("own, of another, in a user group") << int(OwnFamily) << 3 << in_one << false;
  QTest::newRow("own, of another, configures") << int(OwnFamily) << 3 << configures << false;
  QTest::newRow("received, in none") << int(ReceivedFamily) << 3 << in_none << true;
}

void PlanRulesTest::Audiences() {
  QFETCH(int, family);
  QFETCH(int, user);
  QFETCH(Viewer, viewer);
  struct {
    int32_t family, owner;
  } const row{family, 2};
  QTEST(IsVisibleTo(row, user, [&] { return IsAdmitted(viewer, {7, 8}); }), "seen");
  QVERIFY(IsAdmitted(viewer, {}));  // not limited
}

void PlanRulesTest::Rights() {
  QSet<QString> texts;
  for (const Right right : kRights) {
    QVERIFY(IsRight(right) && !LackOf(right).isEmpty());
    texts.insert(LackOf(right));
  }
  QCOMPARE(texts.size(), int(std::size(kRights)));
  QVERIFY(!IsRight(AddRight - 1) && !IsRight(DeleteRight + 1));
}

void PlanRulesTest::SignsOfPlans() {
  const auto row = [](bool timed, int pages, bool timed_play = true) {
    PlanBasicInfo plan;
    plan.auto_run = timed;
    plan.page_count = pages;
    return TextOf(SignOf(plan, timed_play));
  };
  QCOMPARE(row(false, 1), QString());
  QCOMPARE(row(false, 0), QString());
  QCOMPARE(row(true, 1), QString("automatic"));
  QCOMPARE(row(true, 1, false), QString());  // it never starts
  QCOMPARE(row(false, 3), QString("tour, 3 page(s)"));
  QCOMPARE(row(true, 2), QString("automatic, tour, 2 page(s)"));

  GetPlanDetailResponse plan;
  plan.auto_run = true;
  plan.start_time = "19:00:00";
  plan.end_time = "21:05:30";
  plan.pages.resize(3);
  QCOMPARE(TextOf(SignOf(plan, true)), QString("automatic 19:00-21:05:30, tour, 3 page(s)"));
  plan.end_time = "05:00:00";
  QVERIFY(TextOf(SignOf(plan, true)).startsWith("automatic 19:00-05:00, over midnight: never starts"));
  plan.end_time = plan.start_time;
  QVERIFY(TextOf(SignOf(plan, true)).startsWith("automatic 19:00-19:00: never starts"));
  plan.end_time.clear();
  QCOMPARE(TextOf(SignOf(plan, true)), QString("automatic, tour, 3 page(s)"));
  plan.pages.resize(1);
  QVERIFY(SignOf(plan, false).IsEmpty() && !SignOf(plan, true).IsEmpty());
}

QTEST_GUILESS_MAIN(PlanRulesTest)
#include "test_plan_rules.moc"
