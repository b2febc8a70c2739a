#include <QApplication>
#include <QDirIterator>
#include <QSvgRenderer>
#include <QtTest>

#include "qt/sharp_screens.h"
#include "view_public_def.h"

using TarnPlanView::CViewPublicDef;

// The plug-in's own pictures at the scale that QT_SCALE_FACTOR sets for the whole program.
class PlanIconsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void AllAreThereForBothSkins();
  void PixmapsHaveThePixelsOfTheScreen();
  void cleanupTestCase() { CViewPublicDef::ReleaseCachedIcons(); }
};

void PlanIconsTest::AllAreThereForBothSkins() {
  const QString folder = ":/Images/TarnPlanView/";
  for (const char* name : {"tree_main_group", "tree_main_group_sel", "tree_main_view", "tree_main_view_sel",
                           "bar_add_group", "bar_add_plan", "bar_edit", "bar_delete", "bar_search", "row_more"}) {
    QVERIFY2(QFile::exists(folder + name + ".svg") && QFile::exists(folder + name + "_d.svg"), name);
  }
  for (const char* name : {"tree_main_view_play", "tree_main_view_play_sel", "monitoring_window_add_resource"}) {
    QVERIFY2(QFile::exists(folder + name + ".svg"), name);
  }
  for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
    const QString path = files.next();
    QImage nothing = CViewPublicDef::GetHighDpiSvgPixmap(path).toImage();
    const QImage picture = nothing;
    nothing.fill(Qt::transparent);
    QVERIFY2(QSvgRenderer(path).isValid() && picture != nothing, qPrintable(path));
  }
}

void PlanIconsTest::PixmapsHaveThePixelsOfTheScreen() {
  const qreal ratio = qApp->devicePixelRatio();
  QCOMPARE(ratio, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
  const int pixels = qRound(20 * ratio);
  for (const QIcon& icon : {CViewPublicDef::GetPlanIcon(false, false), CViewPublicDef::GetPlanIcon(true, true),
                            CViewPublicDef::GetPlanGroupIcon(true)}) {
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
      const QPixmap pixmap = icon.pixmap(QSize(20, 20), mode);
      QCOMPARE(pixmap.size(), QSize(pixels, pixels));
      QCOMPARE(pixmap.devicePixelRatio(), ratio);
    }
  }
}

int main(int argc, char** argv) {
  TarnQt::UseSharpPictures();
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QApplication application(argc, argv);
  PlanIconsTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_plan_icons.moc"
