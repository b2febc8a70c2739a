#include "qt/x11_display.h"

#include <QGuiApplication>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QtGui/qguiapplication_platform.h>
#else
#include <QX11Info>
#endif

// Last: it defines words that others use.
#include <X11/XKBlib.h>

namespace TarnQt::X11Display {

namespace {

/// Null where the display is none of X11.
Display* Connection() {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->display() : nullptr;
#else
  return QX11Info::isPlatformX11() ? QX11Info::display() : nullptr;
#endif
}

}  // namespace

// The program that blends windows owns a selection named after the screen.
bool CanBlend() {
  Display* const display = Connection();
  if (display == nullptr) {
    return true;
  }
  const QByteArray selection = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
  return XGetSelectionOwner(display, XInternAtom(display, selection.constData(), False)) != None;
}

std::optional<unsigned int> KeyboardLights() {
  Display* const display = Connection();
  unsigned int lights = 0;
  if (display == nullptr || XkbGetIndicatorState(display, XkbUseCoreKbd, &lights) != 0) {
    return std::nullopt;
  }
  return lights;
}

}  // namespace TarnQt::X11Display
