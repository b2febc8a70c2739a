#include <QApplication>
#include <QDirIterator>
#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>

#include "view_public_def.h"

using TarnPlanView::CViewPublicDef;

namespace {

const QString kFolder = QStringLiteral(":/Images/TarnPlanView/");

bool DrawsSomething(const QPixmap& pixmap) {
  const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 0) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

// The plug-in's own pictures at the scale that QT_SCALE_FACTOR sets for the whole program.
class PlanIconsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void AllAreThereForBothSkins();
  void PixmapsHaveThePixelsOfTheScreen();
  void cleanupTestCase() { CViewPublicDef::ReleaseCachedIcons(); }
};

void PlanIconsTest::AllAreThereForBothSkins() {
  for (const char* name : {"tree_main_group", "tree_main_group_sel", "tree_main_view", "tree_main_view_sel",
                           "bar_add_group", "bar_add_plan", "bar_edit", "bar_delete", "bar_search", "row_more"}) {
    for (const char* skin : {"", "_d"}) {
      const QString path = kFolder + name + skin + ".svg";
      QVERIFY2(QFile::exists(path), qPrintable(path));
    }
  }
  for (const char* name : {"tree_main_view_play", "tree_main_view_play_sel", "monitoring_window_add_resource"}) {
    QVERIFY2(QFile::exists(kFolder + name + ".svg"), name);
  }
  for (QDirIterator files(kFolder, QDir::Files); files.hasNext();) {
    const QString path = files.next();
    QVERIFY2(QSvgRenderer(path).isValid(), qPrintable(path));
    QVERIFY2(DrawsSomething(CViewPublicDef::GetHighDpiSvgPixmap(path)), qPrintable(path));
  }
}

void PlanIconsTest::PixmapsHaveThePixelsOfTheScreen() {
  const qreal ratio = qApp->devicePixelRatio();
  QCOMPARE(ratio, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
  const QSize pixels(qRound(20 * ratio), qRound(20 * ratio));
  for (const bool dark : {false, true}) {
    for (const bool playing : {false, true}) {
      for (const QIcon& icon : {CViewPublicDef::GetPlanIcon(dark, playing), CViewPublicDef::GetPlanGroupIcon(dark)}) {
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) {
          const QPixmap pixmap = icon.pixmap(QSize(20, 20), mode);
          QCOMPARE(pixmap.size(), pixels);
          QCOMPARE(pixmap.devicePixelRatio(), ratio);
        }
      }
    }
  }
}

int main(int argc, char** argv) {
  QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QApplication application(argc, argv);
  PlanIconsTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_plan_icons.moc"
