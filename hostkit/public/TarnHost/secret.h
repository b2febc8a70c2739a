#pragma once

#include <algorithm>
#include <string>
#include <utility>

class QDebug;

namespace TarnHost {

/// A password. It gives itself to who asks with Reveal() and to no one else: nothing prints it, and its text is wiped
/// when it goes. Thread: any, each object by itself.
class CSecret {
 public:
  CSecret() = default;
  /// UTF-8, any characters. What the caller had it in is the caller's to wipe.
  explicit CSecret(std::string text) : text_(std::move(text)) {}
  CSecret(const CSecret&) = default;
  /// Leaves the other one empty and wiped.
  CSecret(CSecret&& other) noexcept : text_(other.text_) { other.Wipe(); }
  /// What it held before is wiped.
  CSecret& operator=(CSecret other) noexcept {
    text_.swap(other.text_);
    return *this;
  }
  /// Wipes it.
  ~CSecret() { Wipe(); }

  /// Whether there is none.
  bool IsEmpty() const { return text_.empty(); }
  /// The password itself: for signing in, and for a file or field that the user wants it in.
  const std::string& Reveal() const { return text_; }

  /// By the bytes: letters that are composed in another way make another text.
  friend bool operator==(const CSecret& left, const CSecret& right) { return left.text_ == right.text_; }
  /// Likewise.
  friend bool operator!=(const CSecret& left, const CSecret& right) { return left.text_ != right.text_; }

 private:
  // By way of a volatile pointer, or the compiler leaves out what no one reads any more.
  void Wipe() {
    volatile char* bytes = text_.data();
    std::for_each(bytes, bytes + text_.size(), [](volatile char& byte) { byte = 0; });
    text_.clear();
  }

  std::string text_;
};

QDebug operator<<(QDebug, const CSecret&) = delete;
template <class Stream>
Stream& operator<<(Stream&, const CSecret&) = delete;

}  // namespace TarnHost
