#include <QToolTip>
#include <QtTest>

#include "client_desk.h"

/// A window that lives through a change of skin looks like one that was opened in it: no icon, expander, tip or row
/// keeps a colour of the skin before.
class SkinChangeTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void cleanup() { CloseDesk(); }
  void LooksAsIfOpenedInIt_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("to light") << "redblack"
                              << "white";
    QTest::newRow("to dark") << "white"
                             << "redblack";
  }
  void LooksAsIfOpenedInIt() {
    QFETCH(QString, before);
    QFETCH(QString, after);
    skin_ = before;
    OpenWithThingsToSee();
    const QImage old = window_->grab().toImage();
    tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin(after);
    const QImage changed = Settled();
    const QColor old_tip = QToolTip::palette().color(QPalette::ToolTipBase);
    CloseDesk();

    skin_ = after;
    OpenWithThingsToSee();
    const QImage opened = Settled();
    QVERIFY(old != opened);
    QCOMPARE(changed.size(), opened.size());
    QVERIFY2(changed == opened, qPrintable(WhereTheyDiffer(changed, opened)));
    QCOMPARE(old_tip, QToolTip::palette().color(QPalette::ToolTipBase));
  }

 private:
  void OpenWithThingsToSee() {
    Open();
    Tree()->expand(Row("Public A"));
    Tree()->setCurrentIndex(Row("Public A"));  // selected, with an expander, and others without a selection
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip("Saved Gate", 0, window_.get());
    QTRY_COMPARE(Tip(), QString("Saved Gate"));
  }
  QImage Settled() {
    QCoreApplication::processEvents();
    return window_->grab().toImage();
  }
  static QString WhereTheyDiffer(const QImage& one, const QImage& other) {
    QRect where;
    for (int y = 0; y < one.height(); ++y) {
      for (int x = 0; x < one.width(); ++x) {
        if (one.pixel(x, y) != other.pixel(x, y)) {
          where |= QRect(x, y, 1, 1);
        }
      }
    }
    return QStringLiteral("%1 x %2 at %3, %4").arg(where.width()).arg(where.height()).arg(where.x()).arg(where.y());
  }
};

QTEST_MAIN(SkinChangeTest)
#include "test_skin_change.moc"
