#pragma once

#include <QIODevice>
#include <QStringList>

#include "moving/site_records.h"

namespace TarnHost::Moving {

/// What was read of a file: its records, and a line for each entry that breaks a rule and is left out.
struct SiteFile {
  SiteRecords records;
  QStringList left_out;
};

/// The largest file that is read; what is in it stands in memory once.
constexpr qint64 kLargestFile = 512LL * 1024 * 1024;

/// Reads the text of a site's file. Throws CStoreError with one line when it is none, was cut, or is of a newer
/// version: then nothing of it is to be taken. Pure. Thread: any.
SiteFile ReadSiteText(const char* text, qint64 size);
/// The same of a file.
SiteFile ReadSiteFile(const QString& path);

}  // namespace TarnHost::Moving
