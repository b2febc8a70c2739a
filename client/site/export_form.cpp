#include "site/export_form.h"

#include <QHBoxLayout>
#include <QLabel>

#include "MarUIControl/switch_control.h"

namespace TarnClient {

CExportForm::CExportForm(QWidget* parent)
    : CFormDialog(QStringLiteral("export_form"), tr("Export cameras"), tr("Export..."), parent),
      passwords_(new MarUIControl::CSwitchControl(this)) {
  setMinimumWidth(420);
  passwords_->setObjectName(QStringLiteral("export_passwords"));
  AddNote(tr("Writes all cameras with regions, addresses and users into a table (CSV)."));
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(tr("Write the passwords, too, for everybody to read"), row);
  label->setObjectName(QStringLiteral("settings_label"));
  label->setBuddy(passwords_);
  passwords_->setAccessibleName(label->text());
  layout->addWidget(label, 1);
  layout->addWidget(passwords_);
  AddWidget(row);
  AddNote(
      tr("Without them, addresses in which a password may stand are left out, too. An import leaves both as they"
         " are."));
  connect(this, &CFormDialog::SignalConfirmed, this, [this] {
    Q_EMIT SignalChosen(passwords_->isToggled());
    accept();
  });
}

}  // namespace TarnClient
