#pragma once

#include <QIODevice>
#include <QStringList>

#include "moving/site_records.h"

namespace TarnHost::Moving {

/// Writes a site's file part by part, so that no more than one plan stands in memory: Begin(), then each Write() once,
/// in the order of the declarations, plans one by one, then End(). Passwords are in none of it; an address in which one
/// may stand is withheld. What the device does with the bytes is the caller's to look at. Thread: any.
class CSiteFileWriter {
 public:
  explicit CSiteFileWriter(QIODevice& device) : device_(device) {}

  void Begin(const SiteRecords& site, const QString& root_name);
  void Write(const PlanRecord& plan);
  void End();

  /// A line for each camera of which an address was withheld.
  const QStringList& Withheld() const { return withheld_; }

 private:
  template <class Record>
  void WriteList(const char* key, const std::vector<Record>& records);
  QJsonObject Json(const UserRecord& user) const;
  QJsonObject Json(const UserGroupRecord& group) const;
  QJsonObject Json(const RegionRecord& region) const;
  QJsonObject Json(const CameraRecord& camera);
  QJsonObject Json(const GroupRecord& group) const;
  QJsonObject Address(const QString& url, const CameraRecord& camera);

  QIODevice& device_;
  QStringList withheld_;
  bool is_first_plan_ = true;
};

}  // namespace TarnHost::Moving
