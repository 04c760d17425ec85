#pragma once
// Text measures in user-perceived characters (grapheme clusters), and the entry filter:
// "®" followed by a regular expression, or a plain text that must occur in the message,
// compared case-insensitively under the user's locale.
#include <QString>

#include <memory>

#include <unicode/regex.h>

namespace tarnbeck {

// Number of grapheme clusters.
int graphemeCount(const QString& text);
// Grapheme clusters [from, to) of the text; indices past the end are clamped.
QString graphemeSlice(const QString& text, int from, int to);

// Case-insensitive "contains" under the locale: both texts normalised to NFC, case-folded
// (Turkish rules for tr and az), normalised to NFD; a hit that starts or ends inside a
// combining sequence does not count. An empty needle is never contained.
bool localizedCaseInsensitiveContains(const QString& haystack, const QString& needle);

// The registered sign that marks a filter as a regular expression.
inline constexpr char16_t kRegexFilterSign = u'\u00AE';

class EntryFilter {
 public:
  explicit EntryFilter(const QString& filter);
  ~EntryFilter();
  EntryFilter(const EntryFilter&) = delete;
  EntryFilter& operator=(const EntryFilter&) = delete;

  // Whether a message passes. The regular expression is searched in the range
  // [0, grapheme count) of UTF-16 units, so that in a message holding characters of
  // several units a match at its very end is missed.
  bool matches(const QString& message) const;
  bool isRegularExpression() const { return static_cast<bool>(pattern_); }

 private:
  QString plainText_;
  std::unique_ptr<icu::RegexPattern> pattern_;
  std::unique_ptr<icu::RegexMatcher> matcher_;
};

}  // namespace tarnbeck
