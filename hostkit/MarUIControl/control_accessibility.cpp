#include "MarUIControl/control_accessibility.h"

#include <QAccessibleWidget>

#include "MarUIControl/location_combo_box.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/switch_control.h"

namespace MarUIControl {

namespace {

/// Says "check box, checked".
class SwitchInterface : public QAccessibleWidget {
 public:
  explicit SwitchInterface(CSwitchControl* control) : QAccessibleWidget(control, QAccessible::CheckBox) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = static_cast<const CSwitchControl*>(widget())->isToggled();
    return state;
  }
  QStringList actionNames() const override { return {toggleAction()}; }
  void doAction(const QString& name) override {
    if (name == toggleAction() && widget()->isEnabled()) {
      static_cast<CSwitchControl*>(widget())->click();
    }
  }
};

/// Says "combo box, <text of the closed box>".
class ComboBoxInterface : public QAccessibleWidget {
 public:
  explicit ComboBoxInterface(CLocationComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) {
      return Box()->CurrentText();
    }
    return QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = Box()->IsPopupVisible();
    state.collapsed = !state.expanded;
    state.hasPopup = true;
    return state;
  }
  QStringList actionNames() const override { return {showMenuAction()}; }
  void doAction(const QString& name) override {
    if (name == showMenuAction()) {
      Box()->ShowPopup();
    }
  }

 private:
  CLocationComboBox* Box() const { return static_cast<CLocationComboBox*>(widget()); }
};

QAccessibleInterface* MakeInterface(const QString& class_name, QObject* object) {
  // Asked once for each class from the object's own up to QObject: the first that is known decides.
  if (class_name == QLatin1String(CSwitchControl::staticMetaObject.className())) {
    return new SwitchInterface(static_cast<CSwitchControl*>(object));
  }
  if (class_name == QLatin1String(CLocationComboBox::staticMetaObject.className())) {
    return new ComboBoxInterface(static_cast<CLocationComboBox*>(object));
  }
  if (class_name == QLatin1String(COfferStrip::staticMetaObject.className())) {
    return new QAccessibleWidget(static_cast<COfferStrip*>(object), QAccessible::AlertMessage);
  }
  return nullptr;
}

}  // namespace

void InstallControlAccessibility() {
  static bool installed = false;
  if (!installed) {
    installed = true;
    QAccessible::installFactory(MakeInterface);
  }
}

// Readers on Linux wait for an alert to be shown, those elsewhere for the alert itself.
void AnnounceAlert(QWidget* widget) {
  for (const QAccessible::Event what : {QAccessible::ObjectShow, QAccessible::Alert}) {
    QAccessibleEvent event(widget, what);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace MarUIControl
