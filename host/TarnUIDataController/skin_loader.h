#pragma once

#include <QColor>
#include <QObject>
#include <QString>

#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace tarn_ui_data_controller {

/// The client's skin: its name ("redblack" or "white"), style sheet and named colours. Thread: GUI, but for
/// GetCurrentSkin(), which any thread may ask.
class TARN_HOST_EXPORT CSkinLoader : public QObject, public Wren::Base::CSingleton<CSkinLoader> {
  Q_OBJECT
 public:
  ~CSkinLoader() override;

  /// The name of the skin in use; "redblack" before any was loaded. Thread: any.
  QString GetCurrentSkin() const;
  /// Loads the skin's style sheet and palette into the application, then emits SignalSkinChanged(). False for an
  /// unknown name: the skin stays.
  bool LoadSkin(const QString& name);
  /// A colour by its name in the skin ("text", "background", "accent", ...); invalid for an unknown name.
  QColor GetColor(const QString& name) const;

 Q_SIGNALS:
  /// Style sheet, palette and colours are the new skin's by now.
  void SignalSkinChanged(const QString& name);

 private:
  friend class Wren::Base::CSingleton<CSkinLoader>;
  CSkinLoader();

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace tarn_ui_data_controller
