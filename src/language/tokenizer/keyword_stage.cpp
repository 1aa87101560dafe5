// Stage 24: the keyword table. Every phrase of the table becomes one word in
// the program text, and a string that is exactly a two-word keyword takes
// the joined form too.
//
// This is the tokeniser's costly stage: five whole-text rewrites for each of
// 467 entries. Most entries don't occur in a program, and a rewrite of an
// absent phrase changes nothing, so each entry is first tested against the
// three-byte sequences of the text: a phrase with a sequence the text lacks
// can't be in it, and its rewrites are skipped. The text is tested with
// blanks, "_" and "§space§" all read as one blank, which the rewrites of this
// stage only trade for each other: a phrase absent by that test stays absent
// however they change the text.
#include <algorithm>
#include <bitset>

#include "language/tokenizer/keyword_table.h"
#include "language/tokenizer/text_edit.h"
#include "language/tokenizer/tokenizer.h"

namespace {

// Which three-byte sequences a text holds, by a 16-bit hash: a "no" is sure,
// a "yes" may be a collision.
class TrigramFilter {
 public:
  explicit TrigramFilter(std::string_view text) {
    for (size_t i = 0; i + 3 <= text.size(); ++i) bits_.set(hash(text.data() + i));
  }
  bool may_contain(std::string_view needle) const {
    for (size_t i = 0; i + 3 <= needle.size(); ++i) {
      if (!bits_.test(hash(needle.data() + i))) return false;
    }
    return true;
  }

 private:
  static size_t hash(const char* p) {
    const auto b = [p](int i) { return static_cast<uint32_t>(static_cast<unsigned char>(p[i])); };
    return ((b(0) * 0x9E3779B1u) ^ (b(1) * 0x85EBCA77u) ^ (b(2) * 0xC2B2AE3Du)) >> 16;
  }
  std::bitset<65536> bits_;
};

// Blanks, "_" and "§space§" read as one blank.
std::string blank_form(std::string_view text) {
  std::string s(text);
  text_edit::replace_all(s, "§space§", " ");
  std::replace(s.begin(), s.end(), '_', ' ');
  return s;
}

}  // namespace

// An object's code takes the table as the program's start left it.
void Tokenizer::apply_keywords(bool fill_table) {
  LanguageGlobals& globals = language_globals();
  if (fill_table) {
    p_.ctrl_keyword.assign(ctrl_keyword_table.begin(), ctrl_keyword_table.end());
    // Checked where the table is filled, right behind the entry of the effects on an element.
    if (text_edit::contains(message_, "ottieni generatore di particelle") ||
        text_edit::contains(message_, "ottieni particella")) {
      globals.particelle = true;
    }
    globals.ctrl_keyword = p_.ctrl_keyword;
  } else {
    p_.ctrl_keyword = globals.ctrl_keyword;
  }

  const TrigramFilter present(blank_form(message_));
  for (std::string& entry : p_.ctrl_keyword) {
    const std::string spaced = entry;
    // The entry keeps only its first blank joined, so an entry of three words keeps its second blank.
    text_edit::replace_first(entry, " ", "_");
    // A single word without "_" rewrites nothing; an absent phrase neither.
    if (entry.find('_') == std::string::npos || !present.may_contain(blank_form(spaced))) continue;
    std::string joined = spaced;
    std::replace(joined.begin(), joined.end(), ' ', '_');
    if (joined != spaced) text_edit::replace_all(message_, spaced, joined);
    std::string quoted_spaced = entry;
    text_edit::replace_first(quoted_spaced, "_", "§space§");
    text_edit::replace_all(message_, "\"" + quoted_spaced + "\"", "\"" + entry + "\"");
  }

  // Keys written with a blank after the bracket or before the colon. These
  // rewrites only take such blanks away, so a text without "( " or " :"
  // needs none of them.
  const bool open_blank = text_edit::contains(message_, "( ");
  const bool blank_colon = text_edit::contains(message_, " :");
  if (!open_blank && !blank_colon) return;
  const TrigramFilter keys_present(blank_form(message_));
  for (const std::string& k : p_.ctrl_keyword) {
    if (!keys_present.may_contain(blank_form(k))) continue;
    if (open_blank) {
      text_edit::replace_all(message_, "( " + k + ": ", "(" + k + ": ");
      text_edit::replace_all(message_, "( " + k + " :", "(" + k + ": ");
    }
    if (blank_colon) text_edit::replace_all(message_, "(" + k + " :", "(" + k + ": ");
  }
}
