#include "MarUIControl/control_accessibility.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QVariant>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/location_combo_box.h"
#include "MarUIControl/switch_control.h"
#include "announcement.h"
#include "item_view_accessibility.h"

namespace MarUIControl {

namespace {

constexpr char kRoleProperty[] = "accessible_role";
constexpr char kQuietProperty[] = "accessible_quiet_description";

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

/// Says what the widget's user has set.
class RoleInterface : public QAccessibleWidget {
 public:
  RoleInterface(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = role() == QAccessible::StaticText;
    return state;
  }
  QString text(QAccessible::Text kind) const override {
    const QVariant quiet = widget()->property(kQuietProperty);
    if (kind == QAccessible::Description && quiet.isValid()) {
      return quiet.toString();
    }
    return QAccessibleWidget::text(kind);
  }
};

/// Says "radio button, checked" of what is a plain button to Qt.
class ButtonInterface : public QAccessibleWidget {
 public:
  ButtonInterface(QAbstractButton* button, QAccessible::Role role) : QAccessibleWidget(button, role) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = Button()->isCheckable();
    state.checked = Button()->isChecked();
    return state;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      Button()->click();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  QAbstractButton* Button() const { return static_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* WithOwnRole(QWidget* widget) {
  const auto role = widget->property(kRoleProperty).value<QAccessible::Role>();
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    return new ButtonInterface(button, role);
  }
  return new RoleInterface(widget, role);
}

QAccessibleInterface* MakeInterface(const QString& class_name, QObject* object) {
  // Asked once for each class from the object's own up to QObject: the first that is known decides.
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget && widget->property(kRoleProperty).isValid()) {
    return WithOwnRole(widget);
  }
  if (class_name == QLatin1String(CSwitchControl::staticMetaObject.className())) {
    return new SwitchInterface(static_cast<CSwitchControl*>(object));
  }
  if (class_name == QLatin1String(CLocationComboBox::staticMetaObject.className())) {
    return new ComboBoxInterface(static_cast<CLocationComboBox*>(object));
  }
  if (class_name == QLatin1String("QTreeView") || class_name == QLatin1String("QListView")) {
    return MakeItemViewInterface(static_cast<QAbstractItemView*>(object));
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

void AnnounceAlert(QWidget* widget) {
  InstallControlAccessibility();
  if (!QAccessible::isActive()) {
    return;
  }
  QAccessibleEvent event(widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
  Announce(widget);
}

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) {
  InstallControlAccessibility();
  widget->setProperty(kRoleProperty, QVariant::fromValue(role));
}

void SetQuietDescription(QWidget* widget, const QString& text) {
  widget->setProperty(kQuietProperty, text);
}

}  // namespace MarUIControl
