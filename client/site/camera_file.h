#pragma once

#include <QCoreApplication>
#include <QString>
#include <optional>

#include "site/camera_csv.h"

namespace TarnClient {

/// Cameras in a file: what is read of it, and writing it. Takes its time; for any thread but the GUI's.
class CCameraFile {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CCameraFile)
 public:
  struct Read {
    std::optional<CameraImport> plan;
    QString encoding, error;  // the error where there is no plan
  };

  /// Compares the file with the site as it is now.
  static Read PlanOf(const QString& file);
  /// Writes all cameras over what was there, all or nothing; a file with passwords is its owner's alone. Answers the
  /// text for the user, of a failure in `failed`.
  static QString Write(const QString& file, bool with_passwords, bool* failed);
};

}  // namespace TarnClient
