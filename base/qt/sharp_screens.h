#pragma once

#include <QGuiApplication>

namespace TarnQt {

/// Pictures are drawn with the pixels of screens that show several for one; of itself since Qt 6.
inline void UseSharpPictures() {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
}

/// The same and windows scaled as the screen has it; before there is an application object.
inline void UseSharpScreens() {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
#endif
  UseSharpPictures();
  // A factor of 1.5 is not rounded up to 2, which takes the window beyond the screen.
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

}  // namespace TarnQt
