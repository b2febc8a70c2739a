#pragma once

#include <memory>

#include "store/database_thread.h"
#include "store/reader_connection.h"

namespace TarnHost::Store {

/// Reads what the catalog does not hold over a connection of its own, so that no one waits behind somebody's write.
/// Throws CStoreError. Thread: any; the connection lives on a thread of its own and is made again after it was lost.
class CPlanReader {
 public:
  CPlanReader(CReaderConnection::Opener open, std::shared_ptr<CAnswering> answering);

  /// Answers work(repository), which refers to nothing of the caller's.
  template <class Work>
  auto Read(Work work, CDatabaseThread::Patience patience) {
    return thread_.Call([connection = connection_, work] { return connection->Read(work); }, patience);
  }
  /// Closes the connection some time soon; the next read makes another. For a store in a file, whose log stays as long
  /// as anybody has it open.
  void Release();

  /// Later reads fail. Then, on Thread(), as CDatabaseThread has it.
  void BeginStop();
  /// Breaks off what waits for the server.
  void Cut() { watch_->Cut(); }
  CDatabaseThread& Thread() { return thread_; }

 private:
  const std::shared_ptr<CConnectionWatch> watch_;
  const std::shared_ptr<CReaderConnection> connection_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
