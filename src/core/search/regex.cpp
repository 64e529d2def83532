#include "core/search/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <cstdint>
#include <iterator>
#include <limits>
#include <new>

#include "core/text/utf16.h"

namespace suizo::search {
namespace {

// The JIT's own stack starts small and may grow to this; a match that needs
// more is run again by the interpreter.
constexpr std::size_t kJitStackStart = 32 * 1024;
constexpr std::size_t kJitStackMax = 8 * 1024 * 1024;

std::string ErrorText(int code) {
  PCRE2_UCHAR buffer[256];
  const int n = pcre2_get_error_message(code, buffer, std::size(buffer));
  if (n < 0) return "error " + std::to_string(code);
  return text::ToUtf8(
      std::u16string_view(reinterpret_cast<const char16_t*>(buffer), static_cast<std::size_t>(n)));
}

PCRE2_SPTR Units(std::u16string_view s) {
  // An empty view may have no storage; the engine wants a pointer all the same.
  static constexpr char16_t kEmpty[1] = {0};
  return reinterpret_cast<PCRE2_SPTR>(s.data() != nullptr ? s.data() : kEmpty);
}

}  // namespace

RegexError::RegexError(const std::string& message, std::size_t offset)
    : std::runtime_error(message), offset_(offset) {}

struct Regex::State {
  pcre2_code* code = nullptr;
  pcre2_match_data* matchData = nullptr;
  pcre2_match_context* matchContext = nullptr;
  pcre2_jit_stack* jitStack = nullptr;
  bool jit = false;

  ~State() {
    pcre2_jit_stack_free(jitStack);
    pcre2_match_context_free(matchContext);
    pcre2_match_data_free(matchData);
    pcre2_code_free(code);
  }
};

Regex::Regex(std::u16string_view pattern, bool useJit) : state_(std::make_unique<State>()) {
  pcre2_compile_context* context = pcre2_compile_context_create(nullptr);
  if (context == nullptr) throw std::bad_alloc();
  pcre2_set_newline(context, PCRE2_NEWLINE_ANYCRLF);
  // Code units, not UTF: lone surrogates are text too. A pattern may not
  // switch UTF on by a leading "(*UTF)" either. ALT_CIRCUMFLEX lets "^" stand
  // after a final line end, as every line start is one.
  const std::uint32_t options =
      PCRE2_MULTILINE | PCRE2_ALT_CIRCUMFLEX | PCRE2_NEVER_UTF | PCRE2_NEVER_UCP;
  int error = 0;
  PCRE2_SIZE offset = 0;
  state_->code = pcre2_compile(Units(pattern), pattern.size(), options, &error, &offset, context);
  pcre2_compile_context_free(context);
  if (state_->code == nullptr) {
    throw RegexError(
        "regular expression: " + ErrorText(error) + " at unit " + std::to_string(offset), offset);
  }
  // Without JIT support the interpreter serves, more slowly but alike.
  state_->jit = useJit && pcre2_jit_compile(state_->code, PCRE2_JIT_COMPLETE) == 0;
  state_->matchData = pcre2_match_data_create_from_pattern(state_->code, nullptr);
  state_->matchContext = pcre2_match_context_create(nullptr);
  if (state_->matchData == nullptr || state_->matchContext == nullptr) throw std::bad_alloc();
  // A long line under NOT backtracks a lot; the answer must not depend on a
  // limit, as it did not in the engine the searches were made for.
  constexpr auto kUnlimited = std::numeric_limits<std::uint32_t>::max();
  pcre2_set_match_limit(state_->matchContext, kUnlimited);
  pcre2_set_depth_limit(state_->matchContext, kUnlimited);
  pcre2_set_heap_limit(state_->matchContext, kUnlimited);
  if (state_->jit) {
    state_->jitStack = pcre2_jit_stack_create(kJitStackStart, kJitStackMax, nullptr);
    if (state_->jitStack != nullptr) {
      pcre2_jit_stack_assign(state_->matchContext, nullptr, state_->jitStack);
    }
  }
}

Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;
Regex::~Regex() = default;

bool Regex::jit() const {
  return state_->jit;
}

int Regex::Run(std::u16string_view text, std::size_t start) const {
  const std::uint32_t noJit = state_->jit ? 0 : PCRE2_NO_JIT;
  int rc = pcre2_match(state_->code, Units(text), text.size(), start, noJit, state_->matchData,
                       state_->matchContext);
  if (rc == PCRE2_ERROR_JIT_STACKLIMIT) {
    rc = pcre2_match(state_->code, Units(text), text.size(), start, PCRE2_NO_JIT, state_->matchData,
                     state_->matchContext);
  }
  if (rc < 0 && rc != PCRE2_ERROR_NOMATCH) {
    throw RegexError("regular expression: matching failed: " + ErrorText(rc), 0);
  }
  return rc;
}

bool Regex::Test(std::u16string_view text) const {
  return Run(text, 0) >= 0;
}

std::optional<Regex::Match> Regex::Find(std::u16string_view text, std::size_t start) const {
  if (start > text.size() || Run(text, start) < 0) return std::nullopt;
  const PCRE2_SIZE* ovector = pcre2_get_ovector_pointer(state_->matchData);
  return Match{ovector[0], ovector[1] > ovector[0] ? ovector[1] - ovector[0] : 0};
}

}  // namespace suizo::search
