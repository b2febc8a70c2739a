#include "TarnUIDataController/skin_loader.h"

#include <QApplication>
#include <mutex>

#include "TarnUIDataController/skin.h"
#include "TarnUIDataController/skin_style.h"

namespace tarn_ui_data_controller {

class CSkinLoader::Private {
 public:
  mutable std::mutex mutex;  // guards the name alone
  QString name = QStringLiteral("redblack");
  Skin skin = Skin::Read(name);
};

CSkinLoader::CSkinLoader() : d_(new Private) {}

CSkinLoader::~CSkinLoader() = default;

QString CSkinLoader::GetCurrentSkin() const {
  const std::lock_guard<std::mutex> lock(d_->mutex);
  return d_->name;
}

bool CSkinLoader::LoadSkin(const QString& name) {
  const Skin skin = Skin::Read(name);
  if (!skin.IsValid()) {
    return false;
  }
  d_->skin = skin;
  {
    const std::lock_guard<std::mutex> lock(d_->mutex);
    d_->name = name;
  }
  if (qApp) {
    QApplication::setStyle(new SkinStyle);
    QApplication::setPalette(skin.Palette());
    qApp->setStyleSheet(skin.StyleSheet());
  }
  Q_EMIT SignalSkinChanged(name);
  return true;
}

QColor CSkinLoader::GetColor(const QString& name) const {
  return d_->skin.Color(name);
}

}  // namespace tarn_ui_data_controller
