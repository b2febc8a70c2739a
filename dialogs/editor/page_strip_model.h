#pragma once

#include <QAbstractListModel>

#include "plan_document.h"

namespace TarnPlanView {

/// The document's pages as rows of a list. Thread: GUI.
class CPageStripModel : public QAbstractListModel {
  Q_OBJECT
 public:
  enum Role {
    SplitRole = Qt::UserRole,
    DwellRole,  // the text
  };

  CPageStripModel(CPlanDocument* document, QObject* parent);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

  /// Whether a window of a row's page holds something.
  bool IsFilled(const QModelIndex& index, int window_no) const;

 private:
  void OnDocument(int change, int page);
  int FilledOn(int page) const;

  CPlanDocument* const document_;
};

}  // namespace TarnPlanView
