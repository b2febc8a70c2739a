#pragma once

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QSharedData>
#include <QString>
#include <QVariant>
#include <QVector>
#include <atomic>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/collation_key.h"
#include "plan_rules/code_table.h"

namespace TarnPlanView {

class CLevelPlaces;

/// What the rows of one plan or group share, in every model: the host's record, and its name and code as rows give
/// them. Never changes once made; a row that is changed keeps the difference itself. Goes with the last row that holds
/// it. Thread: any.
class CRowRecord : public QSharedData {
 public:
  using Ptr = QExplicitlySharedDataPointer<const CRowRecord>;

  static Ptr Of(const view_plugin_protocol::PlanGroup& group);
  static Ptr Of(const view_plugin_protocol::PlanBasicInfo& plan);
  /// One record for each, in the same order.
  template <class Source>
  static QVector<Ptr> OfAll(const QList<Source>& records);

  ~CRowRecord();
  CRowRecord(const CRowRecord&) = delete;
  CRowRecord& operator=(const CRowRecord&) = delete;

  bool IsGroup() const { return is_group_; }
  const QString& Name() const { return name_; }
  /// Made each time from the host's record: few need it as a text.
  QString Code() const;
  bool HasCode() const { return has_code_; }
  /// Of the code.
  view_plugin_protocol::CodeNumber Number() const { return number_; }
  /// What the name is compared by; made when it is first asked for.
  const MarUIControl::CollationKey& NameKey() const;
  int Family() const;
  /// An ItemType, by the family of the record.
  int ItemType() const { return item_type_; }
  /// The host's record, a PlanGroup or PlanBasicInfo.
  const QVariant& Host() const { return host_; }
  /// Of a plan's record only.
  const view_plugin_protocol::PlanBasicInfo& Plan() const;
  /// Of a group's record only.
  const view_plugin_protocol::PlanGroup& Group() const;

 private:
  template <class Source>
  CRowRecord(const Source& record, int item_type, bool is_group);

  // Small ones first: they stand where the count of holders leaves room.
  const qint16 item_type_;
  const bool is_group_;
  const bool has_code_;
  const QVariant host_;
  const QString name_;
  const view_plugin_protocol::CodeNumber number_;
  mutable std::atomic<const MarUIControl::CollationKey*> name_key_{nullptr};
};

/// The records of an answer of the host, made where it came in: on the thread that waited for it.
struct ChildRecords {
  QList<view_plugin_protocol::PlanGroup> groups;
  QList<view_plugin_protocol::PlanBasicInfo> plans;
  QVector<CRowRecord::Ptr> of_groups, of_plans;
  std::shared_ptr<const CLevelPlaces> places;  // of them all, groups first; null before PlaceAll()

  static ChildRecords Of(const QList<view_plugin_protocol::PlanGroup>& groups,
                         const QList<view_plugin_protocol::PlanBasicInfo>& plans);
  /// Orders them, for the trees that will sort their rows.
  void PlaceAll();
};

template <class Source>
QVector<CRowRecord::Ptr> CRowRecord::OfAll(const QList<Source>& records) {
  QVector<Ptr> made;
  made.reserve(records.size());
  for (const Source& record : records) {
    made.append(Of(record));
  }
  return made;
}

}  // namespace TarnPlanView
