#pragma once

#include <QString>

namespace TarnHost::Store {

/// A store's file while it is being made beside its place. What was not put in place goes with the object.
class CNewStoreFile {
 public:
  /// Makes an empty file that no one else takes for a left-over. Throws CStoreError when there can be none.
  explicit CNewStoreFile(const QString& target);
  ~CNewStoreFile();
  CNewStoreFile(const CNewStoreFile&) = delete;
  CNewStoreFile& operator=(const CNewStoreFile&) = delete;

  const QString& Path() const { return path_; }

  /// Gives the file its name, so that it survives a power cut. False when something of that name was quicker.
  bool Publish() const;
  /// The same in the place of what has the name by now. Throws CStoreError.
  void Replace() const;

  /// Removes what programs left beside `target` that ended while they made it: files of that form which no one holds
  /// and which have been there for a while.
  static void RemoveLeftOvers(const QString& target);

 private:
  const QString target_, path_;
  int held_ = -1;
};

}  // namespace TarnHost::Store
