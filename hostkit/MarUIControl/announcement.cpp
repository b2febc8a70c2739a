#include "announcement.h"

#include <QAccessibleObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace MarUIControl {

namespace {

constexpr int kKeptMs =
    10000;  // a reader asks for the text after it heard of it, and when it has said what came before

class AnnouncementInterface : public QAccessibleObject {
 public:
  AnnouncementInterface(QObject* object, const QString& text) : QAccessibleObject(object), text_(text) {}

  QAccessible::Role role() const override { return QAccessible::Notification; }
  QAccessible::State state() const override { return QAccessible::State(); }
  QString text(QAccessible::Text kind) const override { return kind == QAccessible::Name ? text_ : QString(); }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(object()->parent()); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }

 private:
  const QString text_;
};

QString TextOf(QWidget* widget) {
  const QAccessibleInterface* known = QAccessible::queryAccessibleInterface(widget);
  QStringList parts{known ? known->text(QAccessible::Name) : QString(), widget->accessibleDescription()};
  parts.removeAll(QString());
  return parts.join(QStringLiteral(". "));
}

}  // namespace

void Announce(QWidget* widget) {
  const QString text = TextOf(widget);
  if (text.isEmpty()) {
    return;
  }
  auto* object = new QObject(widget->window());
  QTimer::singleShot(kKeptMs, object, &QObject::deleteLater);
  auto* announcement = new AnnouncementInterface(object, text);
  QAccessible::registerAccessibleInterface(announcement);
  QAccessibleEvent shown(announcement, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&shown);
}

}  // namespace MarUIControl
