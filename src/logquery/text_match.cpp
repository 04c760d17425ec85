#include "logquery/text_match.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstring>

namespace tarnbeck {
namespace {

icu::UnicodeString alias(const QString& text) {
  return icu::UnicodeString(false, reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()));
}

// ASCII text without a CR LF pair has one grapheme per code unit.
bool isSimpleAscii(const QString& text) {
  const char16_t* units = reinterpret_cast<const char16_t*>(text.utf16());
  const qsizetype n = text.size();
  for (qsizetype i = 0; i < n; ++i) {
    if (units[i] >= 0x80) return false;
    if (units[i] == u'\r' && i + 1 < n && units[i + 1] == u'\n') return false;
  }
  return true;
}

icu::BreakIterator& characterIterator() {
  thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::BreakIterator>(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  }();
  return *iterator;
}

bool isCombining(UChar32 c) {
  return u_getCombiningClass(c) != 0 || (U_GET_GC_MASK(c) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_MC_MASK)) != 0;
}

icu::UnicodeString comparableForm(const icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
  const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
  if (U_FAILURE(status)) return text;
  icu::UnicodeString composed = nfc->normalize(text, status);
  const char* language = icu::Locale::getDefault().getLanguage();
  const bool turkic = std::strcmp(language, "tr") == 0 || std::strcmp(language, "az") == 0;
  composed.foldCase(turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
  icu::UnicodeString decomposed = nfd->normalize(composed, status);
  return U_FAILURE(status) ? composed : decomposed;
}

}  // namespace

int graphemeCount(const QString& text) {
  if (isSimpleAscii(text)) return static_cast<int>(text.size());
  icu::UnicodeString unicode = alias(text);
  icu::BreakIterator& iterator = characterIterator();
  iterator.setText(unicode);
  int count = 0;
  iterator.first();
  while (iterator.next() != icu::BreakIterator::DONE) ++count;
  return count;
}

QString graphemeSlice(const QString& text, int from, int to) {
  if (to <= from) return QString();
  if (isSimpleAscii(text)) {
    const int n = static_cast<int>(text.size());
    from = std::min(from, n);
    to = std::min(to, n);
    return text.mid(from, to - from);
  }
  icu::UnicodeString unicode = alias(text);
  icu::BreakIterator& iterator = characterIterator();
  iterator.setText(unicode);
  int32_t startUnit = -1, endUnit = -1;
  int index = 0;
  int32_t at = iterator.first();
  for (;;) {
    if (index == from) startUnit = at;
    if (index == to) {
      endUnit = at;
      break;
    }
    int32_t next = iterator.next();
    if (next == icu::BreakIterator::DONE) break;
    at = next;
    ++index;
  }
  if (startUnit < 0) return QString();
  if (endUnit < 0) endUnit = static_cast<int32_t>(text.size());
  return text.mid(startUnit, endUnit - startUnit);
}

bool localizedCaseInsensitiveContains(const QString& haystack, const QString& needle) {
  if (needle.isEmpty()) return false;
  const icu::UnicodeString hay = comparableForm(alias(haystack));
  const icu::UnicodeString pin = comparableForm(alias(needle));
  if (pin.isEmpty()) return false;
  for (int32_t from = 0;;) {
    const int32_t hit = hay.indexOf(pin, from);
    if (hit < 0) return false;
    const int32_t end = hit + pin.length();
    const bool startsInside = hit > 0 && isCombining(hay.char32At(hit));
    const bool endsInside = end < hay.length() && isCombining(hay.char32At(end));
    if (!startsInside && !endsInside) return true;
    from = hit + 1;
  }
}

EntryFilter::EntryFilter(const QString& filter) {
  plainText_ = filter;
  if (!filter.isEmpty() && filter.at(0).unicode() == kRegexFilterSign) {
    plainText_ = filter.mid(1);
    UErrorCode status = U_ZERO_ERROR;
    UParseError where;
    std::unique_ptr<icu::RegexPattern> compiled(icu::RegexPattern::compile(alias(plainText_), 0, where, status));
    if (U_SUCCESS(status) && compiled) {
      matcher_.reset(compiled->matcher(status));
      if (U_SUCCESS(status) && matcher_) {
        pattern_ = std::move(compiled);
      } else {
        matcher_.reset();
      }
    }
  }
}

EntryFilter::~EntryFilter() = default;

bool EntryFilter::matches(const QString& message) const {
  if (!pattern_) return localizedCaseInsensitiveContains(message, plainText_);
  const icu::UnicodeString input = alias(message);
  UErrorCode status = U_ZERO_ERROR;
  matcher_->reset(input);
  matcher_->region(0, graphemeCount(message), status);
  if (U_FAILURE(status)) return false;
  const bool found = matcher_->find(status);
  return U_SUCCESS(status) && found;
}

}  // namespace tarnbeck
