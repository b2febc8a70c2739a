#include "site/import_form.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

namespace TarnClient {

namespace {

constexpr QSize kImportSize(560, 420);
constexpr int kMostExamples = 4;

bool IsPlain(const QString& name) {
  return std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
}

// By the letters of other scripts one sees whether the file was read as it was written.
QString ExamplesOf(const CameraImport& plan) {
  QStringList names;
  for (const auto& camera : plan.changes.cameras) {
    names.append(QString::fromStdString(camera.name.value_or(std::string())));
  }
  std::stable_partition(names.begin(), names.end(), [](const QString& name) { return !IsPlain(name); });
  return names.mid(0, kMostExamples).join(QStringLiteral(", "));
}

}  // namespace

CImportForm::CImportForm(const QString& file, const QString& encoding, const CameraImport& plan, QWidget* parent)
    : CFormDialog(QStringLiteral("import_form"), tr("Import cameras"), tr("Import"), parent), plan_(plan) {
  AddNote(tr("%1, read as %2").arg(file, encoding));
  if (plan.ChangesAnything()) {
    AddNote(tr("Cameras in it: %1").arg(ExamplesOf(plan)));
  }
  auto* counts = new QLabel(this);
  counts->setObjectName(QStringLiteral("import_counts"));
  counts->setTextFormat(Qt::PlainText);
  counts->setText(QStringList{tr("New cameras: %1").arg(plan.added), tr("New regions: %1").arg(plan.new_regions),
                              tr("Changed: %1").arg(plan.changed), tr("As they are already: %1").arg(plan.same),
                              tr("Left out: %1").arg(plan.left_out.size())}
                      .join(QLatin1Char('\n')));
  counts->setAccessibleName(counts->text());
  AddWidget(counts);
  if (!plan.left_out.isEmpty()) {
    AddLeftOut(plan.left_out);
  }
  ConfirmButton()->setEnabled(plan.ChangesAnything());
  if (!plan.ChangesAnything()) {
    AddNote(tr("There is nothing to import."));
  }
  connect(this, &CFormDialog::SignalConfirmed, this, &CImportForm::Send);
}

// Long lists are made as they come into sight.
void CImportForm::AddLeftOut(const QStringList& lines) {
  auto* list = new QListWidget(this);
  list->setObjectName(QStringLiteral("import_left_out"));
  list->setAccessibleName(tr("Lines that are left out"));
  list->setUniformItemSizes(true);
  list->addItems(lines);
  list->setCurrentRow(0);
  AddWidget(list, 1);
  resize(kImportSize);
}

void CImportForm::Send() {
  SendChanges(plan_.changes);
}

}  // namespace TarnClient
