#include "core/text/like.h"

namespace suizo::text {

LikePattern::LikePattern(std::u16string_view pattern) {
  std::size_t i = 0;
  while (i < pattern.size() && valid_) {
    const char16_t c = pattern[i];
    switch (c) {
      case u'*':
        // A run of stars is one star: fewer restart points, same language.
        if (tokens_.empty() || tokens_.back().kind != Kind::kStar) {
          tokens_.push_back({Kind::kStar, 0});
        }
        ++i;
        break;
      case u'?':
        tokens_.push_back({Kind::kAnyUnit, 0});
        ++i;
        break;
      case u'#':
        tokens_.push_back({Kind::kDigit, 0});
        ++i;
        break;
      case u'[':
        i = ParseList(pattern, i);
        break;
      default:
        tokens_.push_back({Kind::kUnit, c});
        ++i;
    }
  }
  if (!valid_) {
    tokens_.clear();
    ranges_.clear();
  }
}

// Reads the list that opens at `open`; gives the place after its "]".
std::size_t LikePattern::ParseList(std::u16string_view pattern, std::size_t open) {
  Token token{Kind::kList, 0};
  token.first = static_cast<unsigned>(ranges_.size());
  std::size_t i = open + 1;
  if (i < pattern.size() && pattern[i] == u'!') {
    token.kind = Kind::kNotList;
    ++i;
  }
  const std::size_t start = i;
  for (;;) {
    if (i >= pattern.size()) {
      valid_ = false;
      return i;
    }
    const char16_t c = pattern[i];
    if (c == u']' && i > start) break;
    const bool range = i + 2 < pattern.size() && pattern[i + 1] == u'-' && pattern[i + 2] != u']';
    if (range) {
      const char16_t high = pattern[i + 2];
      if (high < c) {
        valid_ = false;
        return i;
      }
      ranges_.emplace_back(c, high);
      i += 3;
    } else {
      ranges_.emplace_back(c, c);
      ++i;
    }
  }
  token.count = static_cast<unsigned>(ranges_.size()) - token.first;
  tokens_.push_back(token);
  return i + 1;
}

bool LikePattern::TokenMatches(const Token& token, char16_t c) const {
  switch (token.kind) {
    case Kind::kUnit:
      return c == token.unit;
    case Kind::kAnyUnit:
      return true;
    case Kind::kDigit:
      return c >= u'0' && c <= u'9';
    case Kind::kList:
    case Kind::kNotList: {
      bool in = false;
      for (unsigned k = token.first; k < token.first + token.count && !in; ++k) {
        in = c >= ranges_[k].first && c <= ranges_[k].second;
      }
      return in == (token.kind == Kind::kList);
    }
    case Kind::kStar:
      break;
  }
  return false;
}

bool LikePattern::Matches(std::u16string_view text) const {
  if (!valid_) return false;
  // Every token but "*" takes exactly one unit, so on a mismatch it is
  // enough to let the latest "*" take one unit more: linear in practice and
  // never recursive.
  const std::size_t n = tokens_.size();
  std::size_t t = 0;  // next token
  std::size_t s = 0;  // next unit of text
  std::size_t star = n;
  std::size_t star_text = 0;
  while (s < text.size()) {
    if (t < n && tokens_[t].kind == Kind::kStar) {
      star = t++;
      star_text = s;
    } else if (t < n && TokenMatches(tokens_[t], text[s])) {
      ++t;
      ++s;
    } else if (star < n) {
      t = star + 1;
      s = ++star_text;
    } else {
      return false;
    }
  }
  while (t < n && tokens_[t].kind == Kind::kStar) ++t;
  return t == n;
}

bool Like(std::u16string_view text, std::u16string_view pattern) {
  return LikePattern(pattern).Matches(text);
}

}  // namespace suizo::text
