#include "settings/folder_field.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>

#include "MarUIControl/line_edit.h"
#include "MarUIControl/push_button.h"

namespace TarnClient {

namespace {

constexpr int kFieldHeight = 30;  // as the boxes above it

}  // namespace

CFolderField::CFolderField(const QString& label, const QString& usual_folder, QWidget* parent)
    : QWidget(parent), usual_folder_(usual_folder), edit_(new MarUIControl::CLineEdit(this)) {
  auto* choose = new MarUIControl::CPushButton(this);
  choose->setText(tr("Choose..."));
  choose->setAccessibleName(tr("Choose the folder"));
  choose->setObjectName(QStringLiteral("folder_choose"));
  edit_->setAccessibleName(label);
  edit_->setObjectName(QStringLiteral("folder_edit"));
  edit_->setPlaceholderText(QDir::toNativeSeparators(usual_folder_));
  edit_->setClearButtonEnabled(true);
  edit_->setMinimumHeight(kFieldHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(edit_, 1);
  row->addWidget(choose);
  setFocusProxy(edit_);
  connect(edit_, &QLineEdit::textChanged, this, &CFolderField::SignalChanged);
  connect(choose, &QAbstractButton::clicked, this, &CFolderField::Choose);
}

QString CFolderField::Folder() const {
  return QDir::fromNativeSeparators(edit_->text().trimmed());
}

void CFolderField::SetFolder(const QString& folder) {
  edit_->setText(QDir::toNativeSeparators(folder));
}

void CFolderField::Choose() {
  const QString from = Folder().isEmpty() ? usual_folder_ : Folder();
  const QString folder = QFileDialog::getExistingDirectory(this, edit_->accessibleName(), from);
  if (!folder.isEmpty()) {
    SetFolder(folder);
  }
}

}  // namespace TarnClient
