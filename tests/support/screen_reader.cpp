#include "screen_reader.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#include <QVector>

namespace TarnTest {

namespace {

struct Event {
  QAccessible::Event kind;
  QAccessible::Role role;
  QString name;
};

QVector<Event> events;

void Note(QAccessibleEvent* event) {
  const QAccessibleInterface* object = event->accessibleInterface();
  if (object) {
    events.append({event->type(), object->role(), object->text(QAccessible::Name)});
  }
}

// Qt sends events only while the platform says that someone listens; without a desktop none does.
void SetListening(bool listening) {
  QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(listening);
}

}  // namespace

CScreenReader::CScreenReader() {
  events.clear();
  SetListening(true);
  QAccessible::installUpdateHandler(&Note);
}

CScreenReader::~CScreenReader() {
  QAccessible::installUpdateHandler(nullptr);
  SetListening(false);
}

QStringList CScreenReader::Heard(QAccessible::Event kind, QAccessible::Role role) const {
  QStringList names;
  for (const Event& event : qAsConst(events)) {
    if (event.kind == kind && event.role == role) {
      names << event.name;
    }
  }
  return names;
}

QStringList CScreenReader::Heard(QAccessible::Event kind) const {
  QStringList names;
  for (const Event& event : qAsConst(events)) {
    if (event.kind == kind) {
      names << event.name;
    }
  }
  return names;
}

void CScreenReader::Forget() {
  events.clear();
}

}  // namespace TarnTest
