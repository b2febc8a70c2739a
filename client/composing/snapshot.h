#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

namespace TarnClient {

/// Pictures of cameras kept in files.
struct SnapshotResult {
  QString path;   // of the file; empty when there is none
  QString error;  // for the user; empty when it was kept
};

/// "CAM 001 Gate 2026-03-02 14-03-07.png": without what file systems do not take.
QString SnapshotName(const QString& camera, const QDateTime& taken);

/// Where snapshots go while the user has chosen no other folder.
QString DefaultSnapshotFolder();

/// Makes the folder where that is missing. A file that is there already stays: the new one gets a number. Thread: any;
/// blocks.
SnapshotResult WriteSnapshot(const QImage& picture, const QString& folder, const QString& name);

}  // namespace TarnClient
