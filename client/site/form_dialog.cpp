#include "site/form_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/line_edit.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"

namespace TarnClient {

namespace {

constexpr int kFieldHeight = 30;

}  // namespace

CFormDialog::CFormDialog(const QString& name, const QString& title, const QString& confirm_text, QWidget* parent)
    : QDialog(parent),
      name_(name),
      fields_(new QWidget(this)),
      layout_(new QVBoxLayout(fields_)),
      fault_(new QLabel(this)) {
  setObjectName(name);
  setProperty("formDialog", true);
  setWindowTitle(title);
  setModal(true);
  setAttribute(Qt::WA_DeleteOnClose);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(4);
  fault_->setObjectName(QStringLiteral("form_fault"));
  fault_->setTextFormat(Qt::PlainText);
  fault_->setWordWrap(true);
  fault_->hide();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(20, 20, 20, 16);
  layout->setSpacing(12);
  layout->addWidget(fields_, 1);
  layout->addWidget(fault_);
  layout->addLayout(BuildButtons(confirm_text));
}

MarUIControl::CLineEdit* CFormDialog::NewField(const char* name, int longest) {
  auto* field = new MarUIControl::CLineEdit(this);
  field->setObjectName(QString::fromLatin1(name));
  field->setMaxLineEditLength(longest);
  field->setMinimumHeight(kFieldHeight);
  return field;
}

QPushButton* CFormDialog::NewButton(const char* name, const QString& text) {
  auto* button = new MarUIControl::CPushButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(text);
  button->setAutoDefault(false);
  return button;
}

QBoxLayout* CFormDialog::BuildButtons(const QString& confirm_text) {
  auto* row = new QHBoxLayout;
  confirm_ = new MarUIControl::CPrimaryButton(this);
  confirm_->setObjectName(name_ + QStringLiteral("_confirm_btn"));
  confirm_->setText(confirm_text);
  confirm_->setDefault(true);
  cancel_ = NewButton("form_cancel_btn", tr("Cancel"));
  row->addStretch();
  row->addWidget(confirm_);
  row->addWidget(cancel_);
  connect(confirm_, &QPushButton::clicked, this, &CFormDialog::SignalConfirmed);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void CFormDialog::AddField(const QString& label, QWidget* field, const QList<QWidget*>& beside) {
  auto* text = new QLabel(label, fields_);
  text->setObjectName(QStringLiteral("settings_label"));
  text->setBuddy(field);
  field->setAccessibleName(label);
  if (qobject_cast<QLineEdit*>(field)) {
    field->setMinimumHeight(kFieldHeight);
  }
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(field, 1);
  for (QWidget* widget : beside) {
    widget->setMinimumHeight(kFieldHeight);
    row->addWidget(widget);
  }
  stops_ << field << beside;
  if (!layout_->isEmpty()) {
    layout_->addSpacing(6);
  }
  layout_->addWidget(text);
  layout_->addLayout(row);
}

void CFormDialog::AddNote(const QString& text) {
  auto* note = new QLabel(text, fields_);
  note->setObjectName(QStringLiteral("settings_note"));
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  layout_->addSpacing(4);
  layout_->addWidget(note);
  layout_->addSpacing(4);
}

void CFormDialog::AddWidget(QWidget* widget, int stretch) {
  layout_->addWidget(widget, stretch);
  for (QWidget* part : QList<QWidget*>{widget} + widget->findChildren<QWidget*>()) {
    if (part->focusPolicy() & Qt::TabFocus) {
      stops_ << part;
    }
  }
}

// Tab follows what is seen, not the order in which the parts were made.
void CFormDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  const QList<QWidget*> stops = stops_ + QList<QWidget*>{confirm_, cancel_};
  for (int place = 1; place < stops.size(); ++place) {
    setTabOrder(stops[place - 1], stops[place]);
  }
}

void CFormDialog::ShowFault(const QString& text) {
  RenewFault(text);
  if (!text.isEmpty()) {
    ReadOut(fault_);
  }
}

void CFormDialog::RenewFault(const QString& text) {
  fault_->setText(text);
  fault_->setVisible(!text.isEmpty());
}

void CFormDialog::ReadOut(QLabel* label) {
  MarUIControl::AnnounceAlert(label);
}

void CFormDialog::SendChanges(const TarnHost::CameraChanges& changes) {
  SetBusy(true);
  SendSiteChanges(changes, this, [this](const SiteCallResult& result) { CloseIfDone(result); });
}

void CFormDialog::CloseIfDone(const SiteCallResult& result) {
  SetBusy(false);
  if (result.ok) {
    accept();
  } else {
    ShowFault(QString::fromStdString(result.response.error_info));
  }
}

// What was typed in last has the keys again when there is something to mend.
void CFormDialog::SetBusy(bool busy) {
  if (busy && fields_->isEnabled()) {
    typed_in_ = focusWidget();
  }
  fields_->setEnabled(!busy);
  confirm_->setEnabled(!busy);
  if (!busy && typed_in_) {
    typed_in_->setFocus(Qt::OtherFocusReason);
  }
}

}  // namespace TarnClient
