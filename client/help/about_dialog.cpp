#include "help/about_dialog.h"

#include <QClipboard>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "MarUIControl/push_button.h"

namespace TarnClient {

namespace {

constexpr char kProgram[] = "TarnPlanView";  // as the application's display name, it would stand behind every title
constexpr int kMostWidth = 420;              // of a value; a longer one wraps

QLabel* NewValue(const QString& text, const QString& name, QWidget* parent) {
  auto* value = new QLabel(text, parent);
  value->setTextFormat(Qt::PlainText);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  value->setWordWrap(true);
  value->setMinimumWidth(qMin(kMostWidth, value->fontMetrics().horizontalAdvance(text) + 4));
  value->setMaximumWidth(kMostWidth);
  value->setAccessibleName(QStringLiteral("%1: %2").arg(name, text));
  return value;
}

}  // namespace

CAboutDialog::CAboutDialog(const StoreFacts& store, QWidget* parent) : QDialog(parent), lines_(AboutLines(store)) {
  setObjectName(QStringLiteral("about_dialog"));
  setWindowTitle(tr("About this program"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* title = new QLabel(QString::fromLatin1(kProgram), this);
  title->setObjectName(QStringLiteral("about_title"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 20, 24, 16);
  layout->setSpacing(14);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(title);
  layout->addWidget(BuildLines());
  layout->addWidget(BuildButtons());
}

QWidget* CAboutDialog::BuildLines() {
  auto* table = new QWidget(this);
  auto* layout = new QFormLayout(table);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setHorizontalSpacing(24);
  for (const auto& [name, value] : lines_) {
    auto* label = new QLabel(name, table);
    label->setObjectName(QStringLiteral("about_name"));
    layout->addRow(label, NewValue(value, name, table));
  }
  return table;
}

QWidget* CAboutDialog::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* copy = new MarUIControl::CPushButton(row);
  copy->setObjectName(QStringLiteral("about_copy_btn"));
  copy->setText(tr("Copy"));
  auto* close = new MarUIControl::CPushButton(row);
  close->setObjectName(QStringLiteral("about_close_btn"));
  close->setText(tr("Close"));
  close->setDefault(true);
  close->setFocus(Qt::OtherFocusReason);
  layout->addWidget(copy);
  layout->addStretch();
  layout->addWidget(close);
  connect(copy, &QPushButton::clicked, this, &CAboutDialog::Copy);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void CAboutDialog::Copy() const {
  QStringList texts{QString::fromLatin1(kProgram)};
  for (const auto& [name, value] : lines_) {
    texts << QStringLiteral("%1: %2").arg(name, value);
  }
  QGuiApplication::clipboard()->setText(texts.join(QLatin1Char('\n')));
}

}  // namespace TarnClient
