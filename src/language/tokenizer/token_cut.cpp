#include "language/tokenizer/token_cut.h"

namespace {

// The cut, over any token container with `clear_at(k)` and `append(k, c)`.
template <class Sink>
size_t cut(std::string_view text, std::string_view separators, Sink& sink) {
  size_t k = 0;
  sink.start(0);
  bool string_token = false;  // the current token begins with a double quote
  int quotes = 0;             // double quotes in the current token
  size_t token_length = 0;
  for (const char c : text) {
    // Separators and quotes are ASCII, so a byte of a longer character never
    // matches them: going by bytes cuts exactly where going by characters does.
    if (token_length == 0) string_token = c == '"';
    sink.append(k, c);
    ++token_length;
    if (c == '"') ++quotes;
    const bool ends = (!string_token && separators.find(c) != std::string_view::npos) ||
                      (string_token && quotes == 2 && c == '"');
    if (ends) {
      ++k;
      sink.start(k);
      string_token = false;
      quotes = 0;
      token_length = 0;
    }
  }
  return k;
}

struct StringSink {
  std::vector<std::string>& tokens;
  void start(size_t k) {
    if (tokens.size() <= k) tokens.resize(k + 1);
    tokens[k].clear();
  }
  void append(size_t k, char c) { tokens[k].push_back(c); }
};

// Builds each token in a scratch text, then stores it as a value once.
struct ValueSink {
  std::vector<RValue>& tokens;
  std::string current;
  size_t index = 0;
  bool open = false;
  void start(size_t k) {
    flush();
    if (tokens.size() <= k) tokens.resize(k + 1);
    index = k;
    open = true;
  }
  void append(size_t, char c) { current.push_back(c); }
  void flush() {
    if (!open) return;
    tokens[index] = RValue::text(current);
    current.clear();
    open = false;
  }
};

}  // namespace

size_t cut_tokens(std::string_view text, std::string_view separators, std::vector<std::string>& tokens) {
  StringSink sink{tokens};
  return cut(text, separators, sink);
}

size_t cut_tokens(std::string_view text, std::string_view separators, std::vector<RValue>& tokens) {
  ValueSink sink{tokens, {}};
  const size_t last = cut(text, separators, sink);
  sink.flush();
  return last;
}

size_t compact_tokens(std::vector<RValue>& tokens, size_t last) {
  std::vector<RValue> kept;
  kept.reserve(last + 1);
  for (size_t i = 0; i <= last && i < tokens.size(); ++i) {
    const RValue& t = tokens[i];
    if (t.is(Kind::String) && t.string_view().empty()) continue;
    kept.push_back(std::move(tokens[i]));
  }
  const size_t n = kept.size();
  if (tokens.size() < n + 1) tokens.resize(n + 1);
  tokens[0] = RValue::undefined();
  if (n == 0) return 0;
  for (size_t i = 1; i < n; ++i) tokens[i] = std::move(kept[i]);
  tokens[n] = std::move(kept[0]);
  return n;
}

size_t compact_tokens(std::vector<std::string>& tokens, size_t last) {
  std::vector<std::string> kept;
  for (size_t i = 0; i <= last && i < tokens.size(); ++i) {
    if (!tokens[i].empty()) kept.push_back(std::move(tokens[i]));
  }
  const size_t n = kept.size();
  std::fill(tokens.begin(), tokens.end(), std::string());
  if (tokens.size() < n + 1) tokens.resize(n + 1);
  if (n == 0) return 0;
  for (size_t i = 1; i < n; ++i) tokens[i] = std::move(kept[i]);
  tokens[n] = std::move(kept[0]);
  return n;
}
