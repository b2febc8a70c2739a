#include "settings/settings_dialog.h"

#include <TarnPlanView/default_load_view_display.h>

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "WidgetKit/new_location_combo_box.h"

namespace TarnClient {

using TarnPlanView::CDefaultLoadViewDisplay;

namespace {

constexpr int kWidth = 400;

}  // namespace

CSettingsDialog::CSettingsDialog(TarnPlanView::CStandardViewController* controller, QWidget* parent)
    : QDialog(parent), default_view_(new CDefaultLoadViewDisplay(this)) {
  setObjectName(QStringLiteral("settings_dialog"));
  setWindowTitle(tr("Settings"));
  setMinimumWidth(kWidth);
  auto* note = new QLabel(tr("Opens when the client starts. The plans of a group play in turn."), this);
  note->setObjectName(QStringLiteral("settings_note"));
  note->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(20, 20, 20, 16);
  layout->setSpacing(8);
  layout->addWidget(default_view_);
  layout->addWidget(note);
  layout->addSpacing(12);
  layout->addWidget(BuildButtons());
  connect(default_view_, &CDefaultLoadViewDisplay::SignalChoiceChanged, this, &CSettingsDialog::Renew);
  default_view_->SetViewController(controller);
  // Later than the rows: they may come in the middle of a load.
  read_again_.setSingleShot(true);
  connect(&read_again_, &QTimer::timeout, this, &CSettingsDialog::Read);
  connect(default_view_->GetLocationComboBox()->LocationModel(), &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex& above) {
            if (!is_read_ && !above.isValid()) {
              read_again_.start(0);
            }
          });
  Read();
  default_view_->setFocus(Qt::OtherFocusReason);
}

// What the user has chosen meanwhile is left alone.
void CSettingsDialog::Read() {
  is_read_ = default_view_->ReadDefaultView();
  if (is_read_ && !default_view_->GetLocationComboBox()->GetCurrentIndex().isValid()) {
    default_view_->SelectView(default_view_->GetResourceType(), default_view_->GetIndexCode());
  }
  Renew();
}

QWidget* CSettingsDialog::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  save_ = new MarUIControl::CPrimaryButton(row);
  save_->setObjectName(QStringLiteral("settings_save_btn"));
  save_->setText(tr("Save"));
  save_->setDefault(true);
  auto* close = new MarUIControl::CPushButton(row);
  close->setObjectName(QStringLiteral("settings_close_btn"));
  close->setText(tr("Close"));
  close->setAutoDefault(false);
  layout->addStretch();
  layout->addWidget(save_);
  layout->addWidget(close);
  connect(save_, &QPushButton::clicked, this, &CSettingsDialog::Save);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void CSettingsDialog::Save() {
  if (default_view_->SaveChosenView()) {
    accept();
  }
}

void CSettingsDialog::Renew() {
  save_->setEnabled(default_view_->IsChanged());
}

}  // namespace TarnClient
