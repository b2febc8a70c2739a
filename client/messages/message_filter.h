#pragma once

#include <QSortFilterProxyModel>

namespace TarnClient {

/// The messages that hold a text and are of a kind. Thread: GUI.
class CMessageFilter : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  static constexpr int kAllKinds = -1;

  using QSortFilterProxyModel::QSortFilterProxyModel;

  /// All words of `text` must stand in the message, in any order and case.
  void SetText(const QString& text);
  void SetKind(int kind);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  QStringList words_;
  int kind_ = kAllKinds;
};

}  // namespace TarnClient
