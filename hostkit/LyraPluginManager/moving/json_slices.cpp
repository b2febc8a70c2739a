#include "moving/json_slices.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <cstring>

namespace TarnHost::Moving {
namespace {

using Take = std::function<std::optional<JsonFault>(const JsonSlice&)>;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Reads on from where it stands; throws the fault.
class CScanner {
 public:
  CScanner(const char* text, qint64 size) : text_(text), size_(size) {
    if (size >= 3 && std::memcmp(text, "\xef\xbb\xbf", 3) == 0) {
      at_ = 3;
    }
  }

  void TakeObject(const Take& take) {
    Expect('{');
    if (Skip('}')) {
      return TakeEnd();
    }
    do {
      const QString key = TakeKey();
      Expect(':');
      if (Skip('[')) {
        TakeList(key, take);
      } else {
        TakeOne(key, -1, take);
      }
    } while (Skip(','));
    Expect('}');
    TakeEnd();
  }

 private:
  [[noreturn]] void Fail(const QString& text) const { throw JsonFault{text, at_}; }

  char Next() {
    while (at_ < size_ && IsBlank(text_[at_])) {
      ++at_;
    }
    if (at_ == size_) {
      Fail(QStringLiteral("the file ends too soon; it was cut"));
    }
    return text_[at_];
  }

  bool Skip(char wanted) {
    const bool is_there = Next() == wanted;
    at_ += int(is_there);
    return is_there;
  }

  void Expect(char wanted) {
    if (!Skip(wanted)) {
      Fail(QStringLiteral("'%1' is missing").arg(QLatin1Char(wanted)));
    }
  }

  void TakeEnd() {
    while (at_ < size_ && IsBlank(text_[at_])) {
      ++at_;
    }
    if (at_ < size_) {
      Fail(QStringLiteral("something stands behind the end"));
    }
  }

  QString TakeKey() {
    Next();
    const qint64 begin = at_;
    SkipValue();
    const QJsonValue key =
        QJsonDocument::fromJson('[' + QByteArray(text_ + begin, int(at_ - begin)) + ']').array().at(0);
    if (!key.isString()) {
      at_ = begin;
      Fail(QStringLiteral("a name in quotes is missing"));
    }
    return key.toString();
  }

  void TakeList(const QString& key, const Take& take) {
    int place = 0;
    if (Skip(']')) {
      return;
    }
    do {
      TakeOne(key, place++, take);
    } while (Skip(','));
    Expect(']');
  }

  void TakeOne(const QString& key, int place, const Take& take) {
    Next();
    const qint64 begin = at_;
    SkipValue();
    const JsonSlice slice{key, place, QByteArray::fromRawData(text_ + begin, static_cast<int>(at_ - begin)), begin};
    if (auto fault = take(slice)) {
      throw JsonFault(*fault);
    }
  }

  // To its end, by quotes and brackets alone.
  void SkipValue() {
    const qint64 begin = at_;
    int depth = 0;
    do {
      const char c = Next();
      if (c == '"') {
        SkipText();
      } else if (c == '{' || c == '[') {
        ++depth;
        ++at_;
      } else if (c == '}' || c == ']') {
        if (--depth < 0) {
          Fail(QStringLiteral("a value is missing"));
        }
        ++at_;
      } else if (depth > 0) {
        ++at_;
      } else {
        SkipWord();
      }
      if (at_ - begin > kLargestSlice) {
        at_ = begin;
        Fail(QStringLiteral("an entry has more than %1 MB").arg(kLargestSlice / (1024 * 1024)));
      }
    } while (depth > 0);
  }

  void SkipText() {
    for (++at_; at_ < size_ && text_[at_] != '"'; ++at_) {
      at_ += int(text_[at_] == '\\');
    }
    if (at_ >= size_) {
      at_ = size_;
      Fail(QStringLiteral("the file ends too soon; it was cut"));
    }
    ++at_;
  }

  void SkipWord() {
    const qint64 begin = at_;
    while (at_ < size_ && !IsBlank(text_[at_]) && std::strchr(",]}\"[{:", text_[at_]) == nullptr) {
      ++at_;
    }
    if (at_ == begin) {
      Fail(QStringLiteral("a value is missing"));
    }
  }

  const char* const text_;
  const qint64 size_;
  qint64 at_ = 0;
};

}  // namespace

std::optional<JsonFault> ForEachSlice(const char* text, qint64 size, const Take& take) {
  try {
    CScanner(text, size).TakeObject(take);
    return std::nullopt;
  } catch (const JsonFault& fault) {
    return fault;
  }
}

qint64 LineAt(const char* text, qint64 at) {
  return 1 + std::count(text, text + at, '\n');
}

}  // namespace TarnHost::Moving
