#include "TarnUIDataController/skin.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace tarn_ui_data_controller {

namespace {

QByteArray ReadResource(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return {};
  }
  return file.readAll();
}

}  // namespace

Skin Skin::Read(const QString& name) {
  Skin skin;
  const QByteArray json = ReadResource(QStringLiteral(":/TarnHost/skins/%1.json").arg(name));
  const QJsonObject colors = QJsonDocument::fromJson(json).object();
  for (auto color = colors.begin(); color != colors.end(); ++color) {
    skin.colors_.insert(color.key(), QColor(color.value().toString()));
  }
  return skin;
}

QPalette Skin::Palette() const {
  QPalette palette;
  palette.setColor(QPalette::Window, Color(QStringLiteral("background")));
  palette.setColor(QPalette::WindowText, Color(QStringLiteral("text")));
  palette.setColor(QPalette::Base, Color(QStringLiteral("surface")));
  palette.setColor(QPalette::AlternateBase, Color(QStringLiteral("background")));
  palette.setColor(QPalette::Text, Color(QStringLiteral("text")));
  palette.setColor(QPalette::Button, Color(QStringLiteral("raised")));
  palette.setColor(QPalette::ButtonText, Color(QStringLiteral("text")));
  palette.setColor(QPalette::BrightText, Color(QStringLiteral("accent_text")));
  palette.setColor(QPalette::Highlight, Color(QStringLiteral("selection")));
  palette.setColor(QPalette::HighlightedText, Color(QStringLiteral("selection_text")));
  palette.setColor(QPalette::Link, Color(QStringLiteral("accent_on_surface")));
  palette.setColor(QPalette::ToolTipBase, Color(QStringLiteral("raised")));
  palette.setColor(QPalette::ToolTipText, Color(QStringLiteral("text")));
  palette.setColor(QPalette::PlaceholderText, Color(QStringLiteral("text_muted")));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, Color(QStringLiteral("text_disabled")));
  }
  return palette;
}

QString Skin::StyleSheet() const {
  QString sheet = QString::fromUtf8(ReadResource(QStringLiteral(":/TarnHost/skins/skin.qss")));
  QStringList names = colors_.keys();
  // The longest names first: "@text" must not eat the beginning of "@text_muted".
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) { return a.size() > b.size(); });
  for (const QString& name : qAsConst(names)) {
    sheet.replace(QLatin1Char('@') + name, Color(name).name());
  }
  return sheet;
}

}  // namespace tarn_ui_data_controller
