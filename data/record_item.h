#pragma once

#include <QMap>

#include "MarUIControl/standard_item.h"
#include "qt/answering_item.h"
#include "row_record.h"

namespace TarnPlanView {

struct ViewManagerParam;

/// A row that answers from the record it shares with its like in other models, and stores only what setData() changed.
/// To all who ask it is a row that holds everything itself. Thread: GUI.
class CRecordItem : public TarnQt::CAnsweringItem<MarUIControl::CStandardItem> {
 public:
  ~CRecordItem() override;

  QVariant data(int role = Qt::UserRole + 1) const override;
  void setData(const QVariant& value, int role = Qt::UserRole + 1) override;
  /// A plain row with all that this one shows.
  QStandardItem* clone() const override;
  void read(QDataStream& in) override;
  void write(QDataStream& out) const override;
  /// The base class's is not virtual: through a pointer to it only what this row stores itself goes.
  void clearData();

  /// The item as such a row; null when it is none.
  static const CRecordItem* Of(const QStandardItem* item);

  /// What the row was made from, whatever it shows now.
  const CRowRecord& Record() const { return *record_; }
  /// Whether the role was never set in this row, so that its value is the record's.
  bool IsFromRecord(int role) const;
  /// Whether nothing was ever set in this row: all that it shows is the record's.
  bool IsAsMade() const { return is_as_made_; }
  /// Puts what the row answers from its record into `values`, as QAbstractItemModel::itemData() gives it.
  void AddRecordData(QMap<int, QVariant>* values) const;
  /// Stores all that the row shows, and no notice is sent: for calls of Qt's that look at what is stored only.
  void StoreEverything();

 protected:
  CRecordItem(CRowRecord::Ptr record, const ViewManagerParam& param);

  /// The model's tree has the darker icons.
  bool IsDark() const { return is_dark_; }

 private:
  QVariant fromRecord(int role) const;

  const CRowRecord::Ptr record_;
  quint16 from_record_;  // a bit for each role that was not set
  const bool is_dark_;
  const bool item_mark_;
  bool is_as_made_ = true;
};

}  // namespace TarnPlanView
