// The code of objects. A program gives an object code of its own with
//
//   palla esegue al suo interno questo codice
//   { ... }
//
// Stage 28 cuts that code out of the program's text and keeps it by the
// object's name; the first element of the object to start makes its tokens
// (tokenization_obj), which every later element of the object takes over.
#include "language/tokenizer/text_edit.h"
#include "language/tokenizer/token_cut.h"
#include "language/tokenizer/tokenizer.h"

namespace {

constexpr int OBJECT_SLOTS = 100;  // objects 1 to 99

}  // namespace

void Tokenizer::parsing_codice_oggetto(size_t ap) {
  p_.ogg.assign(OBJECT_SLOTS, "not_set");
  p_.contenuto_ogg.assign(OBJECT_SLOTS, std::string());
  p_.tok_ogg.assign(OBJECT_SLOTS, {});
  p_.plans_ogg.assign(OBJECT_SLOTS, nullptr);
  p_.tot_ogg = 1;
  const std::vector<std::string>& tok = tok_p_;
  for (size_t ab = 2; ab <= ap && ab < tok.size(); ++ab) {
    if (!text_edit::contains(tok[ab], "esegue_al_suo_interno_questo_codice")) continue;
    if (p_.tot_ogg >= OBJECT_SLOTS) break;
    const auto f = static_cast<size_t>(p_.tot_ogg);
    p_.ogg[f] = tok[ab - 1];
    // The code runs from behind the block's brace to the brace that closes it.
    for (size_t k = ab + 3, opened = 1, closed = 0; k <= ap && k < tok.size(); ++k) {
      if (text_edit::contains(tok[k], "{")) ++opened;
      if (text_edit::contains(tok[k], "}")) ++closed;
      if (opened == closed) break;
      p_.contenuto_ogg[f] += tok[k];
    }
    ++p_.tot_ogg;
  }
  // An empty block stays in the program, and does nothing there.
  for (int f = 1; f < p_.tot_ogg; ++f) {
    const std::string& code = p_.contenuto_ogg[static_cast<size_t>(f)];
    if (!code.empty()) text_edit::replace_first(message_, code, "");
  }
}

ObjectCodeTokens Tokenizer::run_object_code(const std::string& code) {
  message_ = code;
  LanguageGlobals& globals = language_globals();
  if (text_edit::contains(message_, "ottieni_particella") ||
      text_edit::contains(message_, "ottieni_generatore_di_particelle")) {
    globals.particelle = true;
  }
  apply_keywords(false);
  join_function_names();
  last_text_passes();
  first_token_cut();
  rebuild_text();
  argument_keys();
  // No blocks are put back: the element's head has them.
  square_brackets();
  blanks_beside_brackets();
  operators_rewrite(false);
  condition_rewrite(true);
  keys_again();

  // The final cut, kept in order from index 0.
  std::vector<RValue>& tok = p_.tok;
  const size_t last = final_cut();
  std::vector<RValue> kept;
  for (size_t i = 0; i <= last && i < tok.size(); ++i) {
    if (!tok[i].string_view().empty()) kept.push_back(std::move(tok[i]));
  }
  tok = std::move(kept);
  p_.INIZIA = p_.DISEGNA = -1;
  bool runnable = true;
  for (size_t i = 0; i < tok.size(); ++i) runnable = final_token_steps(i) && runnable;
  return {std::move(tok), p_.INIZIA, p_.DISEGNA, !runnable};
}

ObjectCodeTokens tokenization_obj(const std::string& code) {
  TokenProgram scratch;
  return Tokenizer(scratch, "", "").run_object_code(code);
}
