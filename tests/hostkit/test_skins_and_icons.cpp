#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>
#include <cmath>
#include <thread>

#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/high_dpi_svg_icon.h"

using tarn_ui_data_controller::CSkinLoader;

namespace {

double Linear(double part) {
  return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
  return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one), b = Luminance(other);
  return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

const QString kTree = ":/Bolt/Public/TreePublic/Images/Public/TreePublic/";

QImage Drawn(const QIcon& icon, QIcon::Mode mode, int size) {
  return icon.pixmap(QSize(size, size), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

// The most opaque colour of a picture: what the eye takes for the icon's own.
QColor MainColor(const QImage& image) {
  QHash<QRgb, int> count;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 240) {
        ++count[image.pixel(x, y)];
      }
    }
  }
  QRgb most = 0;
  for (auto it = count.cbegin(); it != count.cend(); ++it) {
    most = it.value() > count.value(most) ? it.key() : most;
  }
  return QColor(most);
}

}  // namespace

class SkinsAndIconsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TextIsReadable_data();
  void TextIsReadable();
  void UnknownNamesChangeNothing();
  void EveryIconDraws_data();
  void EveryIconDraws();
  void IconsTellApartWithoutColour();
  void SvgIconHasBothModesAndStaysSharp();
  void PixmapsFitTheScreensScale();
};

void SkinsAndIconsTest::TextIsReadable_data() {
  QTest::addColumn<QString>("skin");
  QTest::newRow("dark") << "redblack";
  QTest::newRow("light") << "white";
}

void SkinsAndIconsTest::TextIsReadable() {
  QFETCH(QString, skin);
  CSkinLoader& loader = CSkinLoader::Instance();
  QSignalSpy changed(&loader, &CSkinLoader::SignalSkinChanged);
  QVERIFY(loader.LoadSkin(skin));
  QCOMPARE(changed.size(), 1);
  QVERIFY2(!qApp->styleSheet().contains('@'), "a colour of the style sheet is missing in this skin");
  QCOMPARE(QApplication::palette().color(QPalette::Text), loader.GetColor("text"));
  struct Pair {
    const char *front, *back;
    double least;
  };
  const Pair pairs[] = {{"text", "background", 4.5},
                        {"text", "surface", 4.5},
                        {"text", "raised", 4.5},
                        {"text", "hover", 4.5},
                        {"text_muted", "background", 4.5},
                        {"text_muted", "surface", 4.5},
                        {"accent_text", "accent", 4.5},
                        {"accent_text", "accent_hover", 4.5},
                        {"accent_on_surface", "surface", 4.5},
                        {"selection_text", "selection", 4.5},
                        {"success_text", "success", 4.5},
                        {"failure_text", "failure", 4.5},
                        {"warning_text", "warning", 4.5},
                        {"hint_text", "hint", 4.5},
                        {"wall_text", "wall_bar", 4.5},
                        {"wall_text", "wall_empty", 4.5},
                        {"wall_hint", "wall_empty", 4.5},
                        {"text", "wall", 4.5},
                        {"focus", "surface", 3.0},
                        {"focus", "background", 3.0},
                        {"control_border", "surface", 3.0}};
  for (const Pair& pair : pairs) {
    const QColor front = loader.GetColor(pair.front), back = loader.GetColor(pair.back);
    QVERIFY2(front.isValid() && back.isValid(), pair.front);
    QVERIFY2(Contrast(front, back) >= pair.least,
             qPrintable(QString("%1 on %2: %3").arg(pair.front, pair.back).arg(Contrast(front, back))));
  }
}

void SkinsAndIconsTest::UnknownNamesChangeNothing() {
  CSkinLoader& loader = CSkinLoader::Instance();
  QVERIFY(loader.LoadSkin("white"));
  QVERIFY(!loader.LoadSkin("no such skin"));
  QString seen_elsewhere;
  std::thread([&] { seen_elsewhere = loader.GetCurrentSkin(); }).join();
  QCOMPARE(seen_elsewhere, QString("white"));
  QVERIFY(!loader.GetColor("no such colour").isValid());
}

void SkinsAndIconsTest::EveryIconDraws_data() {
  QTest::addColumn<QString>("path");
  const QStringList tree = {"group",
                            "group_sel",
                            "view",
                            "view_sel",
                            "view_play",
                            "view_play_sel",
                            "camera",
                            "camera_offline",
                            "camera_alarm",
                            "camera_play",
                            "camera_alarm_play",
                            "camera_recording",
                            "camera_alarm_recording",
                            "user_group"};
  for (const QString& name : tree) {
    QTest::newRow(qPrintable(name)) << kTree + "tree_main_" + name + ".svg";
  }
  for (const char* number : {"1", "4", "9", "16"}) {
    QTest::newRow(number) << QString(":/Bolt/Tree/Images/Public/Control/Tree/DefaultView%1.png").arg(number);
  }
  QTest::newRow("search") << ":/TarnHost/icons/search.svg";
  QTest::newRow("empty") << ":/Images/TarnUIDataController/ResourceTree/default_no_data.svg";
  QTest::newRow("empty, dark") << ":/Images/TarnUIDataController/ResourceTree/default_no_data_d.svg";
  QTest::newRow("drag") << ":/Bolt/Preview/Images/Preview/monitoring_window_add_resource.svg";
  QTest::newRow("drag, host") << ":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg";
  QTest::newRow("wall") << ":/Bolt/Public/Draw/Images/Public/TreePublic/smart wall.svg";
}

void SkinsAndIconsTest::EveryIconDraws() {
  QFETCH(QString, path);
  QVERIFY(QFile::exists(path));
  if (path.endsWith(".svg")) {
    const QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    const int side = path.contains("no_data") ? 120 : 20;
    QCOMPARE(renderer.defaultSize(), QSize(side, side));
  }
  const QColor color = MainColor(Drawn(QIcon(path), QIcon::Normal, 60));
  QVERIFY2(color.isValid() && color != QColor(0, 0, 0), "nothing was drawn");
  if (path.contains("add_resource") || path.contains("no_data")) {
    return;  // with a ground of their own
  }
  const QString back = path.contains("_sel") ? "selection" : "surface";
  for (const char* skin : {"redblack", "white"}) {
    CSkinLoader::Instance().LoadSkin(skin);
    QVERIFY2(Contrast(color, CSkinLoader::Instance().GetColor(back)) >= 3.0, skin);
  }
}

// Colour alone must not carry a state: the shapes differ when only the opaque parts are looked at.
void SkinsAndIconsTest::IconsTellApartWithoutColour() {
  const auto shape = [](const QString& name) {
    return Drawn(QIcon(kTree + name), QIcon::Normal, 40).createAlphaMask();
  };
  const QStringList names = {"tree_main_view.svg",        "tree_main_view_play.svg",       "tree_main_group.svg",
                             "tree_main_camera.svg",      "tree_main_camera_offline.svg",  "tree_main_camera_alarm.svg",
                             "tree_main_camera_play.svg", "tree_main_camera_recording.svg"};
  for (int i = 0; i < names.size(); ++i) {
    for (int j = i + 1; j < names.size(); ++j) {
      const QImage a = shape(names[i]), b = shape(names[j]);
      int different = 0;
      for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
          different += a.pixelIndex(x, y) != b.pixelIndex(x, y);
        }
      }
      QVERIFY2(different >= 40, qPrintable(names[i] + " / " + names[j]));
    }
  }
}

void SkinsAndIconsTest::SvgIconHasBothModesAndStaysSharp() {
  const QString normal = kTree + "tree_main_view.svg", selected = kTree + "tree_main_view_sel.svg";
  const QIcon icon = WidgetKit::GetHighDpiSvgIcon(normal, selected, QSize());
  QCOMPARE(MainColor(Drawn(icon, QIcon::Selected, 20)), QColor("#ffffff"));
  QVERIFY(MainColor(Drawn(icon, QIcon::Normal, 20)) != QColor("#ffffff"));
  QSvgRenderer renderer(normal);
  QImage exact(60, 60, QImage::Format_ARGB32);
  exact.fill(Qt::transparent);
  QPainter painter(&exact);
  renderer.render(&painter);
  painter.end();
  QCOMPARE(MainColor(Drawn(icon, QIcon::Normal, 60)), MainColor(exact));
  QCOMPARE(Drawn(icon, QIcon::Normal, 60).createAlphaMask(), exact.createAlphaMask());
  QVERIFY(WidgetKit::GetHighDpiSvgIcon(QString(), QString(), QSize()).isNull());
}

// What a screen of each scale gets, by a window of its own: as many pixels as it shows, none of them stretched.
void SkinsAndIconsTest::PixmapsFitTheScreensScale() {
  const QIcon icon =
      WidgetKit::GetHighDpiSvgIcon(kTree + "tree_main_view.svg", kTree + "tree_main_view_sel.svg", QSize());
  QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
  for (const double scale : {1.0, 1.5, 2.0}) {
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Disabled}) {
      QImage canvas(QSize(20, 20) * scale, QImage::Format_ARGB32_Premultiplied);
      canvas.setDevicePixelRatio(scale);
      canvas.fill(Qt::transparent);
      QPainter painter(&canvas);
      icon.paint(&painter, QRect(0, 0, 20, 20), Qt::AlignCenter, mode);
      painter.end();
      const QImage exact = Drawn(icon, mode, qRound(20 * scale));
      QCOMPARE(exact.size(), canvas.size());
      canvas.setDevicePixelRatio(1);
      QCOMPARE(canvas.createAlphaMask(), exact.createAlphaMask());
    }
  }
}

QTEST_MAIN(SkinsAndIconsTest)
#include "test_skins_and_icons.moc"
