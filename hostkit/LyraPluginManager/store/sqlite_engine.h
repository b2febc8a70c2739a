#pragma once

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// A store in one SQLite file, or in memory.
class CSqliteEngine : public CSqlEngine {
 public:
  /// Marks a file as a plan store, at a fixed place of the file.
  static constexpr int32_t kApplicationId = 0x5461726e;
  static constexpr int kPatience = 5000;  // ms that a write waits for other processes

  /// `place` names the store in messages; by default the file itself.
  explicit CSqliteEngine(const QString& file, const QString& place = {});

  void Open() override;
  void BeginWrite() override;
  void BeginRead() override;
  bool MayHaveChanged() override;
  bool IsFilled() override;
  QString BytesType() const override { return QStringLiteral("BLOB"); }
  void SetPatience(int milliseconds) override;

 private:
  void Configure(QSqlDatabase* database) const override;
  CStoreError::Kind KindOf(const QSqlError& error) const override;

  const QString file_;
  int patience_ = kPatience;
  int64_t data_version_ = -1;
};

}  // namespace TarnHost::Store
