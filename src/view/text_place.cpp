// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/text_place.h"

#include <algorithm>
#include <cstring>

#include <QStringDecoder>

#include "platform/qt/qt_text.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace veltrin {
namespace {

constexpr unsigned char kFirstOfMany = 0x80;  // below it a byte is a letter

// What comes next in a text: its bytes and its units.
struct Step {
  std::size_t bytes = 0;
  int units = 0;
};

unsigned char byteAt(std::string_view text, std::size_t place) {
  return static_cast<unsigned char>(text[place]);
}

// A letter of several bytes, of which the longest have two units, a byte that is none, or
// the rest of the text when it ends within a letter.
Step letterAt(std::string_view text, std::size_t place) {
  const Utf8Front front = utf8Front(text.substr(place));
  if (front.kind == Utf8Front::Kind::Cut) return {front.bytes, 0};
  return {front.bytes, front.bytes == kLongestCharacter ? 2 : 1};
}

// A carriage return at the very end may be half of a line's end, which nobody sees yet.
Step stepAt(std::string_view text, std::size_t place) {
  const unsigned char first = byteAt(text, place);
  if (first == '\r') {
    if (place + 1 == text.size()) return {1, 0};
    return {text[place + 1] == '\n' ? std::size_t{2} : std::size_t{1}, 1};
  }
  return first < kFirstOfMany ? Step{1, 1} : letterAt(text, place);
}

// The byte behind so many units from `place` on.
std::size_t behind(std::string_view text, std::size_t place, int units) {
  while (units > 0 && place < text.size()) {
    const Step step = stepAt(text, place);
    if (step.units == 0) break;
    units -= step.units;
    place += step.bytes;
  }
  return place;
}

std::size_t find(std::string_view text, std::size_t from, std::size_t end, char wanted) {
  if (from >= end) return end;
  const void* found = std::memchr(text.data() + from, wanted, end - from);
  if (found == nullptr) return end;
  return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// The byte at which a line begins. Texts of megabytes have their line feeds leapt to.
std::size_t beginOf(std::string_view text, int line) {
  std::size_t place = 0;
  while (line > 0 && place < text.size()) {
    const std::size_t feed = find(text, place, text.size(), '\n');
    std::size_t end = find(text, place, feed, '\r');
    if (end + 1 >= feed) end = feed;
    place = std::min(end + 1, text.size());
    --line;
  }
  return place;
}

// Characters that would begin a new line on the screen though they end none of the text.
bool isForeignBreak(QChar character) {
  constexpr char16_t kBeginningOfFrame = 0xFDD0;
  constexpr char16_t kEndOfFrame = 0xFDD1;
  return character == QChar::ParagraphSeparator || character == QChar(kBeginningOfFrame) ||
         character == QChar(kEndOfFrame);
}

}  // namespace

ByteRange bytesAt(std::string_view text, TextPlace place, int units) {
  const std::size_t begin = behind(text, beginOf(text, place.line), place.column);
  return {begin, behind(text, begin, units) - begin};
}

std::size_t wholePart(std::string_view text) {
  if (text.ends_with('\r')) return text.size() - 1;
  for (std::size_t cut = 1; cut < kLongestCharacter && cut <= text.size(); ++cut) {
    const std::size_t place = text.size() - cut;
    if (byteAt(text, place) >= kFirstOfMany && letterAt(text, place).units == 0) return place;
  }
  return text.size();
}

std::string keepApart(std::string_view text, TextPlace place, ByteRange& taken) {
  const std::string_view rest = text.substr(taken.begin + taken.length);
  if (text.substr(0, taken.begin).ends_with('\r') && (rest.empty() || rest.starts_with('\n'))) {
    taken = {taken.begin - 1, taken.length + 1};
    return std::string(kLineBreak);
  }
  if (place.column == 0) return {};
  const ByteRange before = bytesAt(text, {place.line, place.column - 1}, 1);
  const bool isLetter = before.length != 1 || byteAt(text, before.begin) < kFirstOfMany;
  if (isLetter || before.begin + before.length != taken.begin) return {};
  taken = {before.begin, taken.length + before.length};
  return fromQt(QString(QChar(QChar::ReplacementCharacter)));
}

QString onScreen(std::string_view text) {
  QStringDecoder decoder(QStringDecoder::Utf8,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  QString shown = decoder.decode(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  std::replace_if(shown.begin(), shown.end(), isForeignBreak, QChar(QChar::ReplacementCharacter));
  return shown.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace('\r', '\n');
}

std::string offScreen(const QString& typed) {
  QString text = typed;
  const QString lineBreak = QString::fromLatin1(kLineBreak.data(), kLineBreak.size());
  return fromQt(text.replace(QChar::ParagraphSeparator, '\n').replace('\n', lineBreak));
}

}  // namespace veltrin
