// tokenization: from the program text in code.txt to the token array.
//
// Velant has no grammar in the usual sense. The whole program text is
// rewritten, again and again, with literal search and replace, until every
// construct has the one form that the token cutter and the interpreter
// compare against; then it is cut into a flat array of token texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "language/tokenizer/token_program.h"

// Globals of the language that the tokeniser sets.
struct LanguageGlobals {
  std::vector<std::string> ctrl_keyword;  // the keyword table in its spaced form, for object programs
  bool particelle = false;                // the program uses particle functions
};
LanguageGlobals& language_globals();

// The tokens that an object's code becomes, and the block positions found
// among them (-1 for a block the code doesn't hold).
struct ObjectCodeTokens {
  std::vector<RValue> tok;
  int INIZIA = -1, DISEGNA = -1;
  bool divided_by_zero = false;  // the message was shown
};

enum class TokenizationResult {
  Ready,           // the token program is ready to run
  DivisionByZero,  // a literal division by zero: the message was shown; the caller goes back to the editor
};

// Reads `working_directory` + "code.txt" (a missing file reads as empty),
// serves "includi" from the same folder, rewrites the text and cuts it into
// `program`'s tokens.
TokenizationResult tokenization(TokenProgram& program, const std::string& working_directory = "");
// The same for the program in `path`, with included files from its folder.
TokenizationResult tokenization_of_file(TokenProgram& program, const std::string& path);

// tokenization_obj: the tokens of the code of an object, as the program's
// text held it at stage 28, made when the first element of the object starts.
ObjectCodeTokens tokenization_obj(const std::string& code);

// The token array as a person reads it: "INIZIA n", "DISEGNA n" and
// "totale_tok n", then "index<TAB>token" for each position from 0 to
// totale_tok (an entry that holds no text reads "<undefined>").
std::string token_listing(const TokenProgram& program);
