// The tokeniser's pipeline: 41 stages in a fixed order.
//
// The order is the design. Several stages work only because an earlier one
// left a marker or a blank in a certain place, and many that look
// superfluous must stay where they are. Each rewrite works on the whole text
// of its moment, left to right, without overlap, and never rescans what it
// wrote.
#include "language/tokenizer/tokenization.h"

#include <array>

#include "language/tokenizer/tokenizer.h"
#include "runtime/Code/Conversions.h"

LanguageGlobals& language_globals() {
  static LanguageGlobals globals;
  return globals;
}

TokenizationResult tokenization(TokenProgram& program, const std::string& working_directory) {
  return Tokenizer(program, working_directory, working_directory + "code.txt").run();
}

TokenizationResult tokenization_of_file(TokenProgram& program, const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
  return Tokenizer(program, folder, path).run();
}

std::string token_listing(const TokenProgram& program) {
  std::string out = "INIZIA " + std::to_string(program.INIZIA) + "\nDISEGNA " + std::to_string(program.DISEGNA) +
                    "\ntotale_tok " + std::to_string(program.totale_tok) + "\n";
  for (int i = 0; i <= program.totale_tok && i < static_cast<int>(program.tok.size()); ++i) {
    const RValue& t = program.tok[static_cast<size_t>(i)];
    out += std::to_string(i) + "\t";
    if (t.is(Kind::String)) out += t.string_view();
    else if (t.is(Kind::Undefined) || t.is(Kind::Unset)) out += "<undefined>";
    else out += value_to_text(t);
    out += "\n";
  }
  return out;
}

namespace {

// Stages 1 to 40 in the order they run; stage 41 ends the pipeline and can stop the start.
constexpr std::array<void (Tokenizer::*)(), 40> STAGES = {
    &Tokenizer::read_program,                 // 1: code.txt into one text, "#" ending each line
    &Tokenizer::serve_include,                // 2: the first "includi" is replaced by the file it names
    &Tokenizer::guard_braces_and_join_words,  // 3
    &Tokenizer::add_mandatory_blocks,         // 4: "INIZIA", "CICLO CONTINUO" and the default window header
    &Tokenizer::clear_token_arrays,           // 5
    &Tokenizer::tighten_brackets,             // 6
    &Tokenizer::join_continued_lines,         // 7: "$" at a line end joins two lines
    &Tokenizer::remove_line_comments,         // 8: before strings are protected, so "//" in a string cuts too
    &Tokenizer::remove_block_comments,        // 9
    &Tokenizer::mark_line_break_words,        // 10
    &Tokenizer::protect_strings,              // 11: signs inside strings are held as markers
    &Tokenizer::genitive_and_commas,          // 12: ", " separates arguments, "," alone is a decimal point
    &Tokenizer::classify_brackets,            // 13: arithmetic brackets become square
    &Tokenizer::mark_logical_or,              // 14
    &Tokenizer::first_operators,              // 15
    &Tokenizer::join_phrases,                 // 16
    &Tokenizer::object_attributes,            // 17: "X del ..." becomes an attribute token
    &Tokenizer::space_conditions,             // 18
    &Tokenizer::blocks_and_spacing,           // 19: a full stop standing apart closes a block
    &Tokenizer::fixed_phrases,                // 20
    &Tokenizer::key_and_mouse_phrases,        // 21
    &Tokenizer::notes_sounds_fonts,           // 22: sound names become asset numbers
    &Tokenizer::punctuation_and_comparisons,  // 23
    &Tokenizer::join_keywords,                // 24: the keyword table: phrases become single words
    &Tokenizer::line_starts,                  // 25
    &Tokenizer::custom_argument_lists,        // 26: the rest of a line behind "argomenti" becomes one string
    &Tokenizer::guard_decimal_points,         // 27
    &Tokenizer::functions_and_objects,        // 28: custom and external functions, object code
    &Tokenizer::last_text_passes,             // 29
    &Tokenizer::first_token_cut,              // 30: cut, clean, compact, substitute single tokens
    &Tokenizer::rebuild_text,                 // 31: the tokens joined again, the first one left out
    &Tokenizer::argument_keys,                // 32
    &Tokenizer::blocks_again,                 // 33: puts "INIZIA" back in front
    &Tokenizer::square_brackets,              // 34
    &Tokenizer::blanks_beside_brackets,       // 35
    &Tokenizer::operators_and_brackets,       // 36
    &Tokenizer::condition_words,              // 37: "%" becomes a division by 100
    &Tokenizer::keys_again,                   // 38
    &Tokenizer::last_operators,               // 39
    &Tokenizer::final_token_cut,              // 40
};

}  // namespace

void Tokenizer::run_stages(int last) {
  for (int stage = 1; stage <= last && stage <= 40; ++stage) (this->*STAGES[static_cast<size_t>(stage - 1)])();
}

TokenizationResult Tokenizer::run() {
  run_stages(40);
  // 41: string tokens get their characters back; a literal division by zero ends the start.
  return final_token_loop() ? TokenizationResult::Ready : TokenizationResult::DivisionByZero;
}

// Custom functions are taken out of the text and stored as functions of
// their own (with their argument names) once the language runs them; until
// then their definitions stay in the token program as words.
void Tokenizer::parsing_funzioni_personalizzate() {}

// Imported external functions ("importa funzione esterna") are defined here
// through external_define, and their names listed in the program's
// funzioni_esterne, once the family that calls them exists. Until then a
// program imports none.
void Tokenizer::parsing_funzioni_esterne() { p_.funzioni_esterne.clear(); }

// The code of each object ("crea un oggetto ... esegue_al_suo_interno_questo_codice")
// is cut out here and kept for its instances, once instances run programs
// of their own.
void Tokenizer::parsing_codice_oggetto() {}
