#pragma once

#include <QString>
#include <memory>

namespace TarnHost::Store {

/// A database file and its log as they stand under their names.
struct SqliteFileState {
  struct Entry {
    quint64 device = 0, inode = 0;                     // inode 0: there is none
    qint64 size = 0, modified_ns = 0, changed_ns = 0;  // content; content, rights or name
    std::shared_ptr<const int> pin{};                  // as long as this is remembered, no other file gets the number

    bool IsThere() const { return inode != 0; }
    bool IsSameFile(const Entry& other) const { return device == other.device && inode == other.inode; }
    bool operator==(const Entry& other) const {
      return IsSameFile(other) && size == other.size && modified_ns == other.modified_ns &&
             changed_ns == other.changed_ns;
    }
  };

  Entry file, log;

  static SqliteFileState Of(const QString& file);
  bool operator==(const SqliteFileState& other) const { return file == other.file && log == other.log; }
};

/// Whether file and folder are meant to be written by this user.
bool IsWritableFile(const QString& file);
bool IsInWritableFolder(const QString& file);

}  // namespace TarnHost::Store
