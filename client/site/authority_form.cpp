#include "site/authority_form.h"

#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <utility>

#include "TarnHost/camera_address.h"
#include "host_calls/ask.h"
#include "site/site_call.h"

namespace TarnClient {

namespace {

constexpr qint64 kLargestFile = 1024 * 1024;
constexpr QSize kAuthorityFormSize(600, 440);

}  // namespace

CAuthorityForm::CAuthorityForm(const std::string& pem, QWidget* parent)
    : CFormDialog(QStringLiteral("authority_form"), tr("Certificates"), tr("Save"), parent),
      text_(new QPlainTextEdit(this)) {
  text_->setObjectName(QStringLiteral("authority_text"));
  text_->setAccessibleName(tr("Certificates (PEM)"));
  text_->setPlainText(QString::fromStdString(pem));
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabChangesFocus(true);
  AddNote(
      tr("Who vouches for cameras with encrypted streams (rtsps): certificates in PEM form, for all desks. Without"
         " any, those that each desk's system trusts count."));
  AddWidget(text_, 1);
  QPushButton* file = NewButton("authority_file_btn", tr("From a file..."));
  QWidget* files = new QWidget(this);
  QHBoxLayout* row = new QHBoxLayout(files);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(file);
  row->addStretch(1);
  AddWidget(files);
  connect(file, &QPushButton::clicked, this, &CAuthorityForm::ReadFile);
  connect(this, &CFormDialog::SignalConfirmed, this, &CAuthorityForm::Save);
  resize(kAuthorityFormSize);
  text_->setFocus(Qt::OtherFocusReason);
}

void CAuthorityForm::ReadFile() {
  const QString path = QFileDialog::getOpenFileName(this, windowTitle(), QString(),
                                                    tr("Certificates (*.pem *.crt *.cer);;All files (*)"));
  if (path.isEmpty()) {
    return;
  }
  using Content = std::pair<QString, QString>;  // text, error
  HostCalls::Ask([path] {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
      return Content({}, file.errorString());
    }
    return Content(QString::fromUtf8(file.read(kLargestFile)), {});
  }).Then(this, [this](const Content& content) {
    ShowFault(content.second);
    if (content.second.isEmpty()) {
      text_->setPlainText(content.first);
    }
  });
}

void CAuthorityForm::Save() {
  const QString pem = text_->toPlainText().trimmed();
  const QString why = TarnHost::WhyNoAuthority(pem);
  ShowFault(why);
  if (!why.isEmpty()) {
    return;
  }
  SetBusy(true);
  SendCameraAuthority(pem.toStdString(), this, [this](const SiteCallResult& result) { CloseIfDone(result); });
}

}  // namespace TarnClient
