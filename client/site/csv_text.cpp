#include "site/csv_text.h"

#include <algorithm>
#include <array>

#include "qt/text_decoding.h"

namespace TarnClient {

namespace {

bool DecodeAs(const char* name, const QByteArray& bytes, QString* text) {
  const auto decoded = TarnQt::DecodedText(name, bytes);
  const auto is_none_of_a_text = [](QChar c) {
    const bool is_break = c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
    return c == QChar::ReplacementCharacter || (c.category() == QChar::Other_Control && !is_break);
  };
  if (!decoded || std::any_of(decoded->begin(), decoded->end(), is_none_of_a_text)) {
    return false;
  }
  *text = *decoded;
  return true;
}

// Of a text in UTF-16 without a mark every other byte is mostly zero.
const char* Utf16Of(const QByteArray& bytes) {
  int zeros_first = 0, zeros_second = 0;
  for (int at = 0; at + 1 < bytes.size(); at += 2) {
    zeros_first += int(bytes[at] == '\0');
    zeros_second += int(bytes[at + 1] == '\0');
  }
  if (zeros_first == 0 && zeros_second == 0) {
    return nullptr;
  }
  return zeros_second >= zeros_first ? "UTF-16LE" : "UTF-16BE";
}

/// What stands between cells: that of the candidates which the first line has most of.
QChar SeparatorOf(const QString& text) {
  const QString candidates = QStringLiteral(",;\t");
  std::array<int, 3> counts{};
  bool is_quoted = false;
  for (const QChar c : text) {
    is_quoted = is_quoted != (c == QLatin1Char('"'));
    if (!is_quoted && (c == QLatin1Char('\n') || c == QLatin1Char('\r'))) {
      break;
    }
    const int place = candidates.indexOf(c);
    if (!is_quoted && place >= 0) {
      ++counts[static_cast<size_t>(place)];
    }
  }
  return candidates[static_cast<int>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

/// Takes a text apart character by character.
class CSplitter {
 public:
  explicit CSplitter(QChar separator) : separator_(separator) {}

  void Take(QChar c) {
    if (state_ == kQuoted) {
      TakeQuoted(c);
    } else if (c == QLatin1Char('"') && state_ == kClosed) {
      cell_ += c;  // a doubled one
      state_ = kQuoted;
    } else if (c == QLatin1Char('"') && cell_.isEmpty() && state_ == kOpen) {
      state_ = kQuoted;
      quote_line_ = line_;
    } else if (c == separator_) {
      EndCell();
    } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
      EndLine(c);
    } else if (state_ == kOpen) {
      cell_ += c;
    } else if (c.isSpace()) {
      state_ = kBehind;  // blanks between a quote and a comma are borne
    } else if (faulty_line_ == 0) {
      faulty_line_ = line_;
    }
    last_ = c;
  }

  void End() {
    if (!cell_.isEmpty() || !row_.cells.isEmpty() || state_ != kOpen) {
      EndRow();
    }
  }

  QString Fault() const {
    if (state_ == kQuoted) {
      return CCsvText::tr("The quote that opens in line %1 is never closed.").arg(quote_line_);
    }
    if (faulty_line_ > 0) {
      return CCsvText::tr("In line %1 something stands behind a closing quote.").arg(faulty_line_);
    }
    return QString();
  }

  std::vector<CCsvText::Row> rows;

 private:
  enum State { kOpen, kQuoted, kClosed, kBehind };

  void TakeQuoted(QChar c) {
    if (c == QLatin1Char('"')) {
      state_ = kClosed;
      return;
    }
    line_ += int(c == QLatin1Char('\n') || (last_ == QLatin1Char('\r')));
    cell_ += c;
  }

  // A carriage return and a line feed are one break.
  void EndLine(QChar c) {
    const bool is_second_half = c == QLatin1Char('\n') && last_ == QLatin1Char('\r');
    if (is_second_half) {
      return;
    }
    EndRow();
    ++line_;
    row_.line = line_;
  }

  void EndCell() {
    row_.cells.append(cell_);
    cell_.clear();
    state_ = kOpen;
  }

  void EndRow() {
    EndCell();
    const bool is_blank =
        std::all_of(row_.cells.begin(), row_.cells.end(), [](const QString& cell) { return cell.trimmed().isEmpty(); });
    if (!is_blank) {
      rows.push_back(row_);
    }
    row_.cells.clear();
  }

  const QChar separator_;
  CCsvText::Row row_{{}, 1};
  QString cell_;
  QChar last_;
  State state_ = kOpen;
  int line_ = 1, quote_line_ = 0, faulty_line_ = 0;
};

bool NeedsQuotes(const QString& cell) {
  const auto is_special = [](QChar c) { return QStringLiteral(",;\t\"\r\n").contains(c); };
  return std::any_of(cell.begin(), cell.end(), is_special) || cell != cell.trimmed();
}

}  // namespace

// Nearly every text in one of them can be read as the other, too.
const char* CCsvText::OlderEncodingOf(QLocale::Language client, QLocale::Language system) {
  if (client == QLocale::Chinese || system == QLocale::Chinese) {
    return "GB18030";
  }
  return "windows-1252";
}

bool CCsvText::Read(const QByteArray& bytes, const char* older, QString* why) {
  QString text;
  rows_.clear();
  if (!Decode(bytes, older, &text)) {
    *why = tr("The file is no text in UTF-8, UTF-16 or %1.").arg(QLatin1String(older));
    return false;
  }
  return Split(text, why);
}

// A mark at the beginning decides, then whether the text can be read that way: other texts are hardly ever UTF-8.
bool CCsvText::Decode(const QByteArray& bytes, const char* older, QString* text) {
  const auto is_text = [&](const char* name, const QByteArray& content) {
    encoding_ = QLatin1String(name);
    return DecodeAs(name, content, text);
  };
  if (bytes.startsWith("\xef\xbb\xbf")) {
    return is_text("UTF-8", bytes.mid(3));
  }
  if (bytes.startsWith("\xff\xfe")) {
    return is_text("UTF-16LE", bytes.mid(2));
  }
  if (bytes.startsWith("\xfe\xff")) {
    return is_text("UTF-16BE", bytes.mid(2));
  }
  if (const char* utf16 = Utf16Of(bytes)) {
    return is_text(utf16, bytes);
  }
  return is_text("UTF-8", bytes) || is_text(older, bytes);
}

bool CCsvText::Split(const QString& text, QString* why) {
  CSplitter splitter(SeparatorOf(text));
  for (const QChar c : text) {
    splitter.Take(c);
  }
  *why = splitter.Fault();
  if (!why->isEmpty()) {
    return false;
  }
  splitter.End();
  rows_ = std::move(splitter.rows);
  return true;
}

QByteArray CCsvText::Write(const std::vector<QStringList>& rows) {
  QString text = QString(QChar(QChar::ByteOrderMark));
  for (const QStringList& row : rows) {
    QStringList cells;
    for (QString cell : row) {
      if (NeedsQuotes(cell)) {
        cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
      }
      cells.append(cell);
    }
    text += cells.join(QLatin1Char(',')) + QStringLiteral("\r\n");
  }
  return text.toUtf8();
}

}  // namespace TarnClient
