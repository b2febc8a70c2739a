#include "users/check_list.h"

namespace TarnClient {

namespace {

constexpr int kRow = 28, kMostRows = 6, kLeastRows = 2;

}  // namespace

CCheckList::CCheckList(const char* name, const QString& label, const QStringList& items, const QStringList& checked,
                       QWidget* parent)
    : QListWidget(parent) {
  setObjectName(QString::fromLatin1(name));
  setAccessibleName(label);
  setProperty("checkList", true);
  for (const QString& text : items) {
    auto* item = new QListWidgetItem(text, this);
    item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setSizeHint(QSize(0, kRow));
    if (checked.contains(text)) {
      item->setCheckState(Qt::Checked);
    } else {
      item->setCheckState(Qt::Unchecked);
    }
  }
  setFixedHeight(kRow * qBound(kLeastRows, count(), kMostRows) + 2 * frameWidth() + 4);
}

QStringList CCheckList::Checked() const {
  QStringList names;
  for (int row = 0; row < count(); ++row) {
    if (item(row)->checkState() == Qt::Checked) {
      names << item(row)->text();
    }
  }
  names.sort();
  return names;
}

}  // namespace TarnClient
