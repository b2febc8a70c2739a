#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QToolTip>

#include "dialog_test.h"
#include "view_name_edit.h"

using TarnPlanView::CViewNameEdit;

namespace {
constexpr char kNothing[] = "-";
constexpr char kDefaultGroupName[] = "Orbis-ControlClient.99baf139876846ebb0412f61e6eca142.name";

double Luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double bright = qMax(Luminance(a), Luminance(b));
  return (bright + 0.05) / (qMin(Luminance(a), Luminance(b)) + 0.05);
}
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
  void ClosesWithTheFocus();
  void HintOverAnEmptyField();
  void ReadableInEverySkin();
  void StaysOnTheScreen();

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
  QCOMPARE(editor_->size(), QSize(288, 164));
  QCOMPARE(editor_->windowFlags() & ~Qt::WindowFlags(Qt::WindowFullscreenButtonHint),
           Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  editor_->SetMode(0);
  QCOMPARE(title->text() + ' ' + button_->text(), QString("AddTheGroupSOBHJhrgRz Add"));
  const QRegularExpression stamped(QString("^%1(\\d{14})$").arg(QRegularExpression::escape(kDefaultGroupName)));
  const auto match = stamped.match(field_->text());
  QVERIFY2(match.hasMatch(), qPrintable(field_->text()));
  QVERIFY(qAbs(QDateTime::fromString(match.captured(1), "yyyyMMddhhmmss").secsTo(QDateTime::currentDateTime())) < 60);
  editor_->SetMode(1);
  editor_->SetName("North gate");
  QCOMPARE(title->text() + ' ' + button_->text(), QString("TheEditorialTeamQVTMBMCmUa Save"));
  editor_->SetMode(2);
  QCOMPARE(title->text() + ' ' + button_->text(), QString("Orbis-ControlClient.CycleName.name Save"));
  editor_->SetMode(9);
  QCOMPARE(title->text() + ' ' + button_->text(), QString("Orbis-ControlClient.CycleName.name Save"));
  QCOMPARE(field_->text(), QString("North gate"));

  Show(0);
  QVERIFY(field_->width() >= 160);
  QCOMPARE(field_->height(), 32);
  QTest::keyClicks(field_, R"(a\/:*?"<|'%>b)");
  QCOMPARE(field_->text(), QString("ab"));
  QApplication::clipboard()->setText(QString("x").repeated(300));
  field_->paste();
  QCOMPARE(field_->text().size(), 256);
  // The whole name is selected, so that the first key replaces it.
  Show(1, "Old name");
  QTest::keyClicks(field_, "New");
  QCOMPARE(field_->text(), QString("New"));
}

void NameEditorTest::Confirm_data() {
  QTest::addColumn<int>("mode");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("reported");
  QTest::newRow("add") << 0 << "  Yard  "
                       << "add Yard";
  QTest::newRow("add what it was opened with") << 0 << "Gate"
                                               << "add Gate";
  QTest::newRow("rename") << 1 << "Yard "
                          << "rename Yard";
  QTest::newRow("rename to the same") << 1 << " Gate "
                                      << "";
  QTest::newRow("cycle") << 2 << "Yard"
                         << "cycle Yard";
  QTest::newRow("cycle to the same") << 2 << "Gate"
                                     << "";
  QTest::newRow("unknown mode") << 9 << "Yard"
                                << "";
  QTest::newRow("blanks") << 0 << "   " << kNothing;
  QTest::newRow("nothing") << 1 << "" << kNothing;
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

void NameEditorTest::ClosesWithTheFocus() {
  const auto lose_focus_at = [this](const QPoint& inside) {
    Show(1, "Gate");
    TarnTest::CDialogGround::PutCursor(editor_->mapToGlobal(inside));
    ground_->ActivateAnother();
    return !editor_->isVisible();
  };
  QVERIFY(!lose_focus_at(QPoint(1, 1)));
  QVERIFY(!lose_focus_at(QPoint(287, 163)));
  QVERIFY(lose_focus_at(QPoint(0, 80)));
  QVERIFY(lose_focus_at(QPoint(288, 80)));
  QVERIFY(lose_focus_at(QPoint(140, 0)));

  Show(1, "Gate");
  TarnTest::CDialogGround::PutCursor(editor_->mapToGlobal(QPoint(400, 400)));
  QTest::mouseClick(editor_->findChild<QWidget*>("view_name_frame"), Qt::LeftButton, {}, QPoint(5, 5));
  QVERIFY(editor_->isVisible());
  QTest::keyClick(field_, Qt::Key_Tab);  // there is nowhere to go to, and nothing to lose
  QVERIFY(editor_->isVisible());
  QTest::keyClick(field_, Qt::Key_Escape);
  QVERIFY(!editor_->isVisible());
}

void NameEditorTest::HintOverAnEmptyField() {
  Show(1, "Gate");
  QEvent enter(QEvent::Enter), leave(QEvent::Leave);
  QApplication::sendEvent(field_, &enter);
  QVERIFY(!QTest::qWaitFor([] { return QToolTip::isVisible(); }, 1200));
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
  QVERIFY(!QTest::qWaitFor([] { return QToolTip::isVisible(); }, 700));
}

void NameEditorTest::ReadableInEverySkin() {
  for (const char* skin : {"redblack", "white"}) {
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(skin);
    Show(1, "Gate");
    QCOMPARE(editor_->grab().toImage().pixelColor(4, 4), QColor(Qt::white));
    const QWidget* title = editor_->findChild<QWidget*>("ptr_name_label");
    QVERIFY(Contrast(title->palette().color(title->foregroundRole()), Qt::white) > 4.5);
    const QColor text = field_->palette().color(QPalette::Text);
    const QColor hint = field_->palette().color(QPalette::PlaceholderText);
    QVERIFY(Contrast(text, Qt::white) > 4.5 && Contrast(hint, Qt::white) > 4.5);
    QVERIFY(Contrast(text, hint) > 2);  // a hint must not pass for a name
  }
}

void NameEditorTest::StaysOnTheScreen() {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  editor_->move(screen.bottomRight() - QPoint(10, 10));
  Show(1, "Gate");
  QVERIFY(screen.contains(editor_->geometry()));
  editor_->hide();
  editor_->move(screen.center());
  Show(1, "Gate");
  QCOMPARE(editor_->pos(), screen.center());
}

QTEST_MAIN(NameEditorTest)
#include "test_name_editor.moc"
