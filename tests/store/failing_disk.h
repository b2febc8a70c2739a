#pragma once

#include <QString>

namespace StoreTest {

/// A disk on which a chosen write or sync of a file, or of one beside it whose name begins with it, fails: linked into
/// a test program, it stands before the system's own calls. At most one at a time. Thread: any.
class CFailingDisk {
 public:
  enum Fault {
    kFailsOnce,  // with an error of the disk; later ones do what they should
    kTornOnce,   // half of the bytes are written, the rest fails
    kStaysFull,  // no room, and none for all that follows
    kNone        // counts only
  };

  /// `number` counts from 1.
  CFailingDisk(const QString& file, Fault fault, int number);
  ~CFailingDisk();
  CFailingDisk(const CFailingDisk&) = delete;
  CFailingDisk& operator=(const CFailingDisk&) = delete;

  /// How many there were so far.
  static int Count();
};

}  // namespace StoreTest
