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

// Stages 1 to 40 in the order they run; stage 41 ends the pipeline and can
// stop the start. Each line says what the stage does and, after the "|",
// which later stage relies on it.
constexpr std::array<void (Tokenizer::*)(), 40> STAGES = {
    // 1: code.txt into one text, "#" ending each line | every later stage reads "#" as the line end
    &Tokenizer::read_program,
    // 2: the first "includi" is replaced by the file it names | the included text goes through all the rest
    &Tokenizer::serve_include,
    // 3: a blank after "{" at a line end, and three phrases joined | 19 finds "{" apart; 28 finds the joined phrases
    &Tokenizer::guard_braces_and_join_words,
    // 4: "INIZIA", "CICLO CONTINUO" and the default window header put in when missing | 41 takes the blocks' positions
    &Tokenizer::add_mandatory_blocks,
    // 5: the token arrays emptied | 30 and 40 fill them from nothing
    &Tokenizer::clear_token_arrays,
    // 6: blanks inside round brackets taken away | 13 sees each bracket next to its neighbour
    &Tokenizer::tighten_brackets,
    // 7: "$" at a line end joins two lines | an expression split over lines becomes one token in 30
    &Tokenizer::join_continued_lines,
    // 8: "//" comments cut to the line end, before strings are protected, so "//" in a string cuts too | 11
    &Tokenizer::remove_line_comments,
    // 9: "/* ... */" comments cut | 11 never meets a quote inside a comment
    &Tokenizer::remove_block_comments,
    // 10: "(a capo)" becomes a line-break marker, tabs go | 41 turns the marker back in strings
    &Tokenizer::mark_line_break_words,
    // 11: signs inside strings held as markers | every rewrite after it leaves the strings alone; 41 restores them
    &Tokenizer::protect_strings,
    // 12: "della" and its kin joined, ", " separates arguments, "," alone is a decimal point | 13 and 17
    &Tokenizer::genitive_and_commas,
    // 13: round brackets of arithmetic become square, those of arguments stay round | the evaluators and 34 to 39
    &Tokenizer::classify_brackets,
    // 14: " o " kept apart from the letter o in words | 23 and the conditions read "o" as a word
    &Tokenizer::mark_logical_or,
    // 15: a closing bracket before an operator becomes square | 36 and 39 finish the arithmetic brackets
    &Tokenizer::first_operators,
    // 16: phrases of names joined with "_" | 24 and the evaluators see one word per name
    &Tokenizer::join_phrases,
    // 17: "X del ..." becomes an attribute token | the genitive lookups of the variables
    &Tokenizer::object_attributes,
    // 18: blanks around "se" and runs of blanks folded | 19 and 30 cut at single blanks
    &Tokenizer::space_conditions,
    // 19: a full stop standing apart closes a block; blanks around braces | the walk counts "{" and "}" tokens
    &Tokenizer::blocks_and_spacing,
    // 20: window, colour and grid phrases joined | 24 and the reserved names
    &Tokenizer::fixed_phrases,
    // 21: key and mouse phrases joined | the evaluators' key and mouse names
    &Tokenizer::key_and_mouse_phrases,
    // 22: note, sound and font names become numbers or asset names | 41's note numbers and the families
    &Tokenizer::notes_sounds_fonts,
    // 23: comparison words become signs, punctuation spaced | 30's "==" rule and the conditions
    &Tokenizer::punctuation_and_comparisons,
    // 24: the keyword table: phrases become single words | 28, 38 and every family's names
    &Tokenizer::join_keywords,
    // 25: blanks at line starts and inside "( KEY" taken away | 26 reads lines from their first word
    &Tokenizer::line_starts,
    // 26: the rest of a line behind "argomenti" becomes one string | 28 reads a custom function's arguments
    &Tokenizer::custom_argument_lists,
    // 27: decimal points between digits hidden | 28 and 29 can't mistake them for a full stop
    &Tokenizer::guard_decimal_points,
    // 28: custom and external functions, object code | the walk finds external functions by name
    &Tokenizer::functions_and_objects,
    // 29: decimal points back; an empty key gets 0 | 30 cuts every key with a value
    &Tokenizer::last_text_passes,
    // 30: cut, clean, compact, substitute single tokens | 31 rebuilds the text from these tokens
    &Tokenizer::first_token_cut,
    // 31: the tokens joined again, the first one left out | 33 puts "INIZIA" back
    &Tokenizer::rebuild_text,
    // 32: "( A" becomes "(A" for every capital | 38 and the families read "(KEY:" whole
    &Tokenizer::argument_keys,
    // 33: puts "INIZIA" back in front | 41 takes the block's position
    &Tokenizer::blocks_again,
    // 34: blanks beside square brackets and inside comparisons | 35 to 37 see brackets next to their values
    &Tokenizer::square_brackets,
    // 35: blanks between a bracket and a digit or letter go | 40 cuts an expression as one token
    &Tokenizer::blanks_beside_brackets,
    // 36: blanks between operators and brackets go; round brackets of arithmetic become square | 40
    &Tokenizer::operators_and_brackets,
    // 37: condition words apart from brackets; "%" becomes a division by 100 | the conditions read "e", "o", "non"
    &Tokenizer::condition_words,
    // 38: "( KEY: " becomes "(KEY: " for every keyword | the families match "(KEY:" tokens
    &Tokenizer::keys_again,
    // 39: the last round brackets beside operators become square | the evaluators take only square ones
    &Tokenizer::last_operators,
    // 40: the final cut and compaction into tok | 41 works token by token
    &Tokenizer::final_token_cut,
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
