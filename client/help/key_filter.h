#pragma once

#include <QSortFilterProxyModel>

namespace TarnClient {

/// The keys whose group, meaning or names hold all words. Thread: GUI.
class CKeyFilter : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  explicit CKeyFilter(QObject* parent = nullptr);

  void SetText(const QString& text);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  QStringList words_;
};

}  // namespace TarnClient
