#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabBar>

#include "app/client_translator.h"
#include "client_desk.h"

// Which of its two words the client uses for what is played.
class WordingTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void OneWordIsUsedThroughout_data();
  void OneWordIsUsedThroughout();
  void WithoutAnswerTheHostsDefaultHolds();

 private:
  QStringList ShownTexts() const;
};

// All that the window and what belongs to it say, whether in sight or not.
QStringList WordingTest::ShownTexts() const {
  QStringList texts;
  const auto add = [&texts](const QObject* from) {
    for (const char* property : {"text", "toolTip", "accessibleName", "accessibleDescription", "placeholderText",
                                 "windowTitle", "title", "statusTip", "whatsThis"}) {
      texts << from->property(property).toString();
    }
  };
  add(window_.get());
  for (const QObject* part : window_->findChildren<QObject*>()) {
    if (const auto* tabs = qobject_cast<const QTabBar*>(part)) {
      for (int tab = 0; tab < tabs->count(); ++tab) {
        texts << tabs->tabText(tab);
      }
    }
    add(part);
  }
  texts << Tip();
  texts.removeAll(QString());
  return texts;
}

void WordingTest::OneWordIsUsedThroughout_data() {
  QTest::addColumn<int>("mode");
  QTest::addColumn<QString>("language");
  QTest::addColumn<QString>("word");
  QTest::addColumn<QString>("other");
  const QString plan = QStringLiteral("\\bplans?\\b"), view = QStringLiteral("\\bviews?\\b");
  const QString plan_zh = QString::fromUtf8("预案"), view_zh = QString::fromUtf8("视图");
  QTest::newRow("plans") << 1 << "en" << plan << view;
  QTest::newRow("views") << 0 << "en" << view << plan;
  QTest::newRow("plans in Chinese") << 1 << "zh_CN" << plan_zh << view_zh;
  QTest::newRow("views in Chinese") << 0 << "zh_CN" << view_zh << plan_zh;
}

void WordingTest::OneWordIsUsedThroughout() {
  QFETCH(int, mode);
  QFETCH(QString, language);
  QFETCH(QString, word);
  QFETCH(QString, other);
  TarnClient::CClientTranslator texts;
  QVERIFY(texts.load(QStringLiteral(":/TarnClient/translations/tarn_%1.qm").arg(language)));
  texts.SetSaysView(mode == 0);
  QCoreApplication::installTranslator(&texts);
  Open({{"load_all", 1}, {"show_mode", mode}, {"timed_play", 1}, {"creation_info", 1}});
  window_->OpenSettings();
  window_->SaveAs();
  window_->Save();
  Play("Public A plan 2");
  window_->SaveAs();
  window_->Family(0).Panel()->EditPlanByIndex(Row("Public A plan 2"));
  TarnTest::CPlanFixture::Drain();
  QTRY_VERIFY(window_->Family(0).Panel()->IsEditorOpen());
  const QRegularExpression wanted(word, QRegularExpression::CaseInsensitiveOption);
  const QRegularExpression unwanted(other, QRegularExpression::CaseInsensitiveOption);
  int said = 0;
  for (QString text : ShownTexts()) {
    text.remove(QRegularExpression(
        "(Public A|Public B|A1|Own C|C1|Public root|Own root) plan( \\d+)?"));  // names of the site's plans
    text.remove(QRegularExpression("^Plans($| / )"));                           // of its root
    QVERIFY2(!unwanted.match(text).hasMatch(), qPrintable(text));
    said += wanted.match(text).hasMatch() ? 1 : 0;
  }
  QVERIFY2(said > 15, qPrintable(QString::number(said)));
  CloseDesk();
  QCoreApplication::removeTranslator(&texts);
}

void WordingTest::WithoutAnswerTheHostsDefaultHolds() {
  Open({{"show_mode", 1}});
  TarnClient::CClientTranslator texts;
  QVERIFY(texts.load(":/TarnClient/translations/tarn_en.qm"));
  texts.TakeWording();
  QCOMPARE(texts.translate("TarnClient::CMainWindow", "Plans"), QString("Plans"));
  fixture_.Services().Fail("GetPlanConfig");
  texts.TakeWording();
  QCOMPARE(texts.translate("TarnClient::CMainWindow", "Plans"), QString("Views"));
  QCOMPARE(texts.translate("TarnClient::WindowFace", "No camera"), QString("No camera"));
}

QTEST_MAIN(WordingTest)
#include "test_wording.moc"
