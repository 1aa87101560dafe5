// Conditions and loops in a walk that never jumps. A "se" switches its
// block on and off by marking its tokens dark; a "ripeti" runs its body
// itself as many times as needed but one, and the walk that called runs it
// the last time; a "ripeti finche" runs its body until the condition fails
// and then marks it done, so that the walk that called passes over it.
// Marks stay in the tokens from frame to frame.
#include <cmath>
#include <string>

#include "language/evaluation/error_frame.h"
#include "language/tokenizer/marks.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"

namespace {

constexpr std::string_view WHILE_WITHOUT_BRACE =
    "1 - Manca una parentesi graffa chiusa '}' o il simbolo punto separato da spazi ' . ' alla fine della "
    "sequenza d'istruzioni";
constexpr std::string_view REPEAT_WITHOUT_BRACE =
    "1 - Manca una parentesi graffa chiusa '}' o il simbolo punto ' . ' alla fine della sequenza d'istruzioni";

// A "ripeti finche" that hasn't ended after this many passes is taken for an endless loop.
constexpr int WHILE_PASS_LIMIT = 250000;
constexpr std::string_view ENDLESS_WHILE =
    "Ciclo 'ripeti finche' fallito! Un ciclo 'finche' non è terminato dopo 250000 passaggi: molto probabilmente "
    "hai scritto un ciclo infinito. Controlla il tuo codice e riprova!";

bool holds_digit(std::string_view t) { return t.find_first_of("0123456789") != std::string_view::npos; }

// Whether `token`, with any DONE_MARK taken out, is exactly `text`.
bool is_without_done_mark(std::string_view token, std::string_view text) {
  if (token.size() < text.size()) return false;
  if (token.size() == text.size()) return token == text;
  return text_edit::contains(token, DONE_MARK) && without_done_mark(token) == text;
}

// Whether `token`, with any DARK_MARK taken out, is exactly `text`.
bool is_without_dark_mark(std::string_view token, std::string_view text) {
  if (token == text) return true;
  if (!text_edit::contains(token, DARK_MARK)) return false;
  std::string clean(token);
  text_edit::replace_all(clean, DARK_MARK, "");
  return clean == text;
}

// Whether the brace of a "se" opens a block that a false condition made
// dark; the marks are ASCII, found only at character starts.
bool opens_dark_block(std::string_view brace) {
  return brace.find(DONE_MARK) == std::string_view::npos ? brace.find("<--d-->{") != std::string_view::npos
                                                          : text_edit::contains(without_done_mark(brace), "<--d-->{");
}

}  // namespace

// ---------------------------------------------------------------------------
// [SECTION] se

void ProgramInstance::execute_if_ext(int j) {
  const int iff = j;
  const std::string res = tokenizza_boolean(iff);
  if (res == "error") return;

  // The brace that opens the block, and whether the block is dark at this moment. A condition's plan
  // knows its brace, the first token behind "se" that holds one, and once read whether it is dark.
  ConditionPlan* plan = condition_brace > iff ? &program.plans->conditions[static_cast<size_t>(iff)] : nullptr;
  int oo = plan ? condition_brace - iff : 1;
  // The brace is ASCII: a byte search finds it only at character starts.
  while (!plan && token_text(iff + oo).find('{') == std::string_view::npos) {
    if (j + ++oo >= static_cast<int>(program.tok.size())) return;
  }
  const int from = iff + oo;
  if (from >= program.totale_tok) return;
  bool attiva = false;
  if (plan && plan->brace_read) {
    attiva = plan->brace_dark;
  } else {
    attiva = opens_dark_block(token_text(from));
    if (plan) {
      plan->brace_read = true;
      plan->brace_dark = attiva;
    }
  }

  if (res == "1" && attiva) {
    if (const int ultimo_punto = block_end(from, true)) {
      for (int k = from; k <= ultimo_punto; ++k) {
        std::string text(token_text(k));
        if (text_edit::replace_first(text, DARK_MARK, "")) write_token(k, text);
      }
    }
  } else if (res != "1" && !attiva) {
    if (const int ultimo_punto = block_end(from, false)) {
      for (int k = from; k <= ultimo_punto; ++k) mark_token(k, DARK_MARK);
    }
  }
}

int ProgramInstance::block_end(int from, bool dark) const {
  const std::string_view open = dark ? "<--d-->{" : "{";
  const std::string_view close = dark ? "<--d-->}" : "}";
  int open_graf = 0, close_graf = 0;
  for (int iz = from; iz < static_cast<int>(program.tok.size()); ++iz) {
    const std::string_view t = token_text(iz);
    if (is_without_done_mark(t, open)) ++open_graf;
    if (is_without_done_mark(t, close)) ++close_graf;
    if (close_graf != 0 && close_graf == open_graf) return iz;
  }
  return 0;
}

void ProgramInstance::mark_token(int k, std::string_view mark) {
  const std::string_view t = token_text(k);
  if (text_edit::contains(t, mark)) return;
  std::string text(mark);
  text += t;
  write_token(k, text);
}

void ProgramInstance::write_token(int k, std::string_view text) {
  std::vector<std::vector<RValue>>& all_forms = program.plans->token_forms;
  if (all_forms.size() <= static_cast<size_t>(k)) all_forms.resize(std::max(program.tok.size(), static_cast<size_t>(k) + 1));
  std::vector<RValue>& forms = all_forms[static_cast<size_t>(k)];
  RValue& token = program.tok[static_cast<size_t>(k)];
  const auto reads = [](std::string_view form_text) {
    return [form_text](const RValue& form) { return form.string_view() == form_text; };
  };
  // The text the token has now is a form too: the programs that haven't written it yet hold that string.
  if (token.is(Kind::String) && std::ranges::none_of(forms, reads(token.string_view()))) forms.push_back(token);
  if (const auto form = std::ranges::find_if(forms, reads(text)); form != forms.end()) {
    token = *form;
    return;
  }
  forms.push_back(RValue::text(text));
  token = forms.back();
}

// ---------------------------------------------------------------------------
// [SECTION] ripeti per

void ProgramInstance::execute_repeat_ext(int j) {
  if (token_text(j) != "ripeti" || token_text(j + 1) != "per") return;
  const double n = string_is_real(calculate_string(*this, token_text(j + 2)));

  int k = j + 4;
  while (k < program.totale_tok && token_text(k) != "}") ++k;
  const int end = k < program.totale_tok ? loop_body_end(j + 4) : -1;
  if (end < 0) return loop_error(j, REPEAT_WITHOUT_BRACE);

  // The count is taken to the nearest whole number; the walk that called
  // runs the body the last time.
  const double passes = std::round(n) - 1;
  ripetizione = 1;
  for (double pass = 0; pass < passes; ++pass) {
    execute_function_ext(j + 4, end);
    ++ripetizione;
  }
}

int ProgramInstance::loop_body_end(int start) const {
  int opened = 0, closed = 0;
  for (int k = start; k < static_cast<int>(program.tok.size()); ++k) {
    const std::string_view t = token_text(k);
    if (text_edit::contains(t, "{")) ++opened;
    if (text_edit::contains(t, "}") && !holds_digit(t)) ++closed;
    if (opened == closed && k != start) return k;
  }
  return -1;
}

void ProgramInstance::loop_error(int j, std::string_view cause) {
  const std::string_view causes[] = {cause};
  stop_run_with_error(error_frame("Errore nell'istruzione iterativa:", faulty_tokens(j), causes, "\r\n\t"));
}

// ---------------------------------------------------------------------------
// [SECTION] ripeti finche

void ProgramInstance::execute_while_ext(int j) {
  if (token_text(j) != "finche") return;
  int k = j + 4;
  while (k < program.totale_tok && !is_without_dark_mark(token_text(k), "}")) ++k;
  const int end = k < program.totale_tok ? loop_body_end(j + 4) : -1;
  if (end < 0) return loop_error(j, WHILE_WITHOUT_BRACE);

  // The body is live again for this arrival.
  for (int t = j + 4; t < end; ++t) {
    std::string text(token_text(t));
    if (text_edit::replace_all(text, DONE_MARK, "")) write_token(t, text);
  }

  ripetizione = 1;
  for (int tenta = 0;; ++tenta) {
    execute_function_ext(j + 4, end);
    const std::string truth = tokenizza_boolean(j);
    if (truth == "0") return deactivate_while(j, end);
    // A condition without its brace has shown its message once; it would
    // show it again at every pass.
    if (truth == "error") return;
    ++ripetizione;
    // The walk that called then runs the body once more.
    if (tenta == WHILE_PASS_LIMIT) return stop_run_with_message(std::string(ENDLESS_WHILE));
  }
}

void ProgramInstance::deactivate_while(int j, int end) {
  for (int t = j + 4; t < end; ++t) mark_token(t, DONE_MARK);
}
