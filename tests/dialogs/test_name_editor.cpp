#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolTip>

#include "dialog_test.h"
#include "view_name_edit.h"

using TarnPlanView::CViewNameEdit;

namespace {

constexpr char kNothing[] = "-";
constexpr char kDefaultGroupName[] = "Orbis-ControlClient.99baf139876846ebb0412f61e6eca142.name";

/// Counts the ticks of an object's timers before it hears of them.
class CTicks : public QObject {
 public:
  explicit CTicks(QObject* of) { of->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Timer ? 1 : 0;
    return false;
  }
  int count = 0;
};

}  // namespace

class NameEditorTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void ModesAndTyping();
  void Confirm_data();
  void Confirm();
  void EditorMayDieInItsSignal();
  void ClosesWithTheFocusAndStaysOnTheScreen();
  void HintOverAnEmptyField();

 private:
  void Show(int mode, const QString& name = QString()) {
    editor_->hide();
    TarnTest::CDialogGround::Activate(ground_->Window());
    editor_->SetMode(mode);
    editor_->SetName(name);
    editor_->show();
    QVERIFY(QTest::qWaitForWindowActive(editor_));
    QTRY_VERIFY(field_->hasFocus());
  }

  std::unique_ptr<TarnTest::CDialogGround> ground_;
  QPointer<CViewNameEdit> editor_;
  QLineEdit* field_ = nullptr;
  QPushButton* button_ = nullptr;
};

void NameEditorTest::init() {
  ground_ = std::make_unique<TarnTest::CDialogGround>();
  editor_ = new CViewNameEdit(ground_->Window());
  field_ = editor_->findChild<QLineEdit*>("ptr_name_edit");
  button_ = editor_->findChild<QPushButton*>("ptr_save_btn");
}

void NameEditorTest::cleanup() {
  delete editor_;
  ground_.reset();
}

void NameEditorTest::ModesAndTyping() {
  const auto* title = editor_->findChild<QLabel*>("ptr_name_label");
  const auto words = [&](int mode) {
    editor_->SetMode(mode);
    return title->text() + ' ' + button_->text();
  };
  QCOMPARE(words(0), QString("AddTheGroupSOBHJhrgRz Add"));
  QVERIFY2(field_->text().startsWith(kDefaultGroupName), qPrintable(field_->text()));
  const auto stamp = QDateTime::fromString(field_->text().mid(qstrlen(kDefaultGroupName)), "yyyyMMddhhmmss");
  QVERIFY(qAbs(stamp.secsTo(QDateTime::currentDateTime())) < 60);
  editor_->SetName("North gate");
  QCOMPARE(words(1), QString("TheEditorialTeamQVTMBMCmUa Save"));
  for (const int mode : {2, 9}) {
    QCOMPARE(words(mode), QString("Orbis-ControlClient.CycleName.name Save"));
  }
  QCOMPARE(field_->text(), QString("North gate"));

  Show(0);
  QTest::keyClicks(field_, R"(a\/:*?"<|'%>b)");
  QCOMPARE(field_->text(), QString("ab"));
  field_->setAccessibleDescription("Its own");
  QTest::keyClick(field_, '/');
  QTRY_VERIFY(field_->accessibleDescription().startsWith("None of these"));
  QTest::keyClick(field_, 'c');
  QCOMPARE(field_->accessibleDescription(), QString("Its own"));
  QApplication::clipboard()->setText(QString("x").repeated(300));
  field_->paste();
  QCOMPARE(field_->text().size(), 256);
  QTRY_COMPARE(field_->accessibleDescription(), QString("Not more than 256 characters."));
  // The whole name is selected, so that the first key replaces it.
  Show(1, "Old name");
  QTest::keyClicks(field_, "New");
  QCOMPARE(field_->text(), QString("New"));
}

void NameEditorTest::Confirm_data() {
  QTest::addColumn<int>("mode");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("reported");
  const auto row = [](int mode, const char* typed, const char* reported) {
    QTest::newRow(qPrintable(QString("%1 in mode %2").arg(typed).arg(mode)))
        << mode << QString(typed) << QString(reported);
  };
  row(0, "  Yard  ", "add Yard");
  row(0, "Gate", "add Gate");
  row(1, "Yard ", "rename Yard");
  row(1, " Gate ", "");  // what it was opened with
  row(2, "Yard", "cycle Yard");
  row(2, "Gate", "");
  row(9, "Yard", "");
  row(0, "   ", kNothing);
  row(1, "", kNothing);
}

void NameEditorTest::Confirm() {
  QFETCH(int, mode);
  QFETCH(QString, typed);
  QFETCH(QString, reported);
  QStringList said;
  connect(editor_, &CViewNameEdit::SignalAddPlanViewGroup, this, [&](const QString& name) { said << "add " + name; });
  connect(editor_, &CViewNameEdit::SignalEditPlanViewGroup, this,
          [&](const QString& name) { said << "rename " + name; });
  connect(editor_, &CViewNameEdit::SignalEditCycleName, this, [&](const QString& name) { said << "cycle " + name; });
  for (const bool by_key : {false, true}) {
    Show(mode, "Gate");
    field_->setText(typed);
    by_key ? QTest::keyClick(field_, Qt::Key_Return) : QTest::mouseClick(button_, Qt::LeftButton);
    QCOMPARE(editor_->isVisible(), reported == kNothing);
    QCOMPARE(ground_->TakeMessage(), QString(reported == kNothing ? "TheNameIsRequired 1" : ""));
    QCOMPARE(said.join(','), reported == kNothing ? QString() : reported);
    QCOMPARE(field_->text(), typed);
    said.clear();
  }
}

void NameEditorTest::EditorMayDieInItsSignal() {
  connect(editor_, &CViewNameEdit::SignalAddPlanViewGroup, ground_->Window(), [this] { delete editor_; });
  Show(0, "Yard");
  editor_->OnClickedBtn();
  QVERIFY(!editor_);
}

void NameEditorTest::ClosesWithTheFocusAndStaysOnTheScreen() {
  for (const QPoint place : {QPoint(1, 1), QPoint(287, 163), QPoint(0, 80), QPoint(288, 80), QPoint(140, 0)}) {
    Show(1, "Gate");
    TarnTest::CDialogGround::PutCursor(editor_->mapToGlobal(place));
    ground_->ActivateAnother();
    QCOMPARE(editor_->isVisible(), QRect(1, 1, 287, 163).contains(place));
  }
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  for (const QPoint place : {screen.bottomRight() - QPoint(10, 10), screen.center()}) {
    editor_->hide();
    editor_->move(place);
    Show(1, "Gate");
    QVERIFY(screen.contains(editor_->geometry()));
    QCOMPARE(editor_->pos() == place, place == screen.center());
  }
  TarnTest::CDialogGround::PutCursor(editor_->mapToGlobal(QPoint(-300, -300)));
  QTest::mouseClick(editor_->findChild<QWidget*>("view_name_frame"), Qt::LeftButton, {}, QPoint(5, 5));
  QTest::keyClick(field_, Qt::Key_Tab);  // there is nowhere to go to, and nothing to lose
  QVERIFY(editor_->isVisible());
  QTest::keyClick(field_, Qt::Key_Escape);
  QVERIFY(!editor_->isVisible());
}

void NameEditorTest::HintOverAnEmptyField() {
  Show(1, "Gate");
  QEvent enter(QEvent::Enter), leave(QEvent::Leave);
  const CTicks ticks(editor_);
  QApplication::sendEvent(field_, &enter);
  QTRY_VERIFY(ticks.count > 1);
  QVERIFY(!QToolTip::isVisible());
  TarnTest::CDialogGround::PutCursor(field_->mapToGlobal(QPoint(10, 5)));
  field_->clear();
  QTRY_VERIFY(QToolTip::isVisible());
  QCOMPARE(QToolTip::text(), QString(R"(Rule 1 256 \/:*?"<|'%>)"));
  // It goes with the cursor while that stays over the empty field, and makes way for what is typed.
  const auto hint_at = [] {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (window->inherits("QTipLabel") && window->isVisible()) {
        return window->x();
      }
    }
    return -1;
  };
  const int first = hint_at();
  TarnTest::CDialogGround::PutCursor(QCursor::pos() + QPoint(30, 0));
  QTRY_COMPARE(hint_at(), first + 30);
  QTest::keyClicks(field_, "Y");
  QTRY_VERIFY(!QToolTip::isVisible());
  field_->clear();
  QTRY_VERIFY(QToolTip::isVisible());
  QApplication::sendEvent(field_, &leave);
  QTRY_VERIFY(!QToolTip::isVisible());
}

QTEST_MAIN(NameEditorTest)
#include "test_name_editor.moc"
