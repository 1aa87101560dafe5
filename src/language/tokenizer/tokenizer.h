// The state of one run of the tokeniser and its stages; the stages are
// split over text_stages.cpp (rewrites of the whole text), keyword_stage.cpp
// and token_stages.cpp (cuts and loops over tokens).
#pragma once

#include <string>
#include <vector>

#include "language/tokenizer/custom_functions.h"
#include "language/tokenizer/tokenization.h"

class Tokenizer {
 public:
  // Reads `program_file`; included files come from `working_directory`.
  Tokenizer(TokenProgram& program, const std::string& working_directory, const std::string& program_file)
      : p_(program), working_directory_(working_directory), program_file_(program_file) {}

  TokenizationResult run();
  // The tokens of an object's code, made for the first element of that
  // object: the program's pipeline from the keyword stage on, in its object
  // form (see tokenization_obj).
  ObjectCodeTokens run_object_code(const std::string& code);
  // Runs stages 1 to `last` (at most 40); tests look at the text in between.
  void run_stages(int last);

  // Stages on the whole text, in the order they run.
  void read_program();                // 1
  void serve_include();               // 2
  void guard_braces_and_join_words(); // 3
  void add_mandatory_blocks();        // 4
  void clear_token_arrays();          // 5
  void tighten_brackets();            // 6
  void join_continued_lines();        // 7
  void remove_line_comments();        // 8
  void remove_block_comments();       // 9
  void mark_line_break_words();       // 10
  void protect_strings();             // 11
  void genitive_and_commas();         // 12
  void classify_brackets();           // 13
  void mark_logical_or();             // 14
  void first_operators();             // 15
  void join_phrases();                // 16
  void object_attributes();           // 17
  void space_conditions();            // 18
  void blocks_and_spacing();          // 19
  void fixed_phrases();               // 20
  void key_and_mouse_phrases();       // 21
  void notes_sounds_fonts();          // 22
  void punctuation_and_comparisons(); // 23
  void join_keywords() { apply_keywords(true); }  // 24
  void line_starts();                 // 25
  void custom_argument_lists();       // 26
  void guard_decimal_points();        // 27
  void functions_and_objects();       // 28
  void last_text_passes();            // 29
  void first_token_cut();             // 30
  void rebuild_text();                // 31
  void argument_keys();               // 32
  void blocks_again();                // 33
  void square_brackets();             // 34
  void blanks_beside_brackets();      // 35
  void operators_and_brackets() { operators_rewrite(true); }  // 36
  void condition_words() { condition_rewrite(false); }        // 37
  void keys_again();                  // 38
  void last_operators();              // 39
  void final_token_cut();             // 40
  bool final_token_loop();            // 41: false if any token divides by a literal zero

  // Stage 28's scanners, on the raw tokens up to index `ap`: custom
  // functions pasted in at their calls, and the code of objects taken out
  // of the text into the program's object tables.
  void parsing_funzioni_personalizzate(size_t ap);
  void parsing_codice_oggetto(size_t ap);

  const std::string& message() const { return message_; }

 private:
  // Reads a text file line by line, each line followed by "#"; with
  // `guard_hash`, a "#" inside a line is held as "§hash§".
  bool read_lines(const std::string& path, bool guard_hash, std::string& out) const;
  // The token substitutions of stage 30 on one token.
  void substitute_token(size_t i);
  // The "==" rules shared by stages 30 and 41.
  void mark_comparison(size_t i);
  // Stage 41's rewrite of a string token.
  void restore_string_token(size_t i);
  // Stage 40's cut with each token but the last cleaned; the last index.
  size_t final_cut();
  // Stage 41's steps on token `i`, but for the outer brackets; false when it divides by a literal zero.
  bool final_token_steps(size_t i);
  // Stages 24, 36 and 37 in their two forms: the program's, and that of an object's code.
  void apply_keywords(bool fill_table);
  void operators_rewrite(bool all_rows);
  void condition_rewrite(bool digits_before_o);
  // Stage 28, steps 1 and 2: the names of custom functions joined into one word everywhere.
  void join_function_names();
  // The parts of the custom-function scanner (custom_functions.cpp).
  void scan_function(CustomFunctions& fn, size_t ab, size_t ap);
  void find_argument_names(CustomFunctions& fn, int f);
  void expand_call(CustomFunctions& fn, int f, size_t ab);

  TokenProgram& p_;
  const std::string working_directory_;
  const std::string program_file_;
  std::string message_;                 // the program text being rewritten; "#" ends a line
  std::vector<std::string> tok_p_;      // the raw cuts of stage 28
  size_t a_ = 0;                        // the number of tokens while the pipeline runs
};
