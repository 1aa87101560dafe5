#include "environment/editor/terse_form.h"

#include "language/tokenizer/text_edit.h"

namespace {

// In this order: each rewriting works on what the ones before it left.
constexpr text_edit::Rewrite REWRITINGS[] = {
    {"-->", ""},
    {"a  (", "a ("}, {"a   (", "a ("}, {"e  (", "e ("}, {"e   (", "e ("}, {"i  (", "i ("}, {"i   (", "i ("},
    {"o  (", "o ("}, {"o   (", "o ("}, {"u  (", "u ("}, {"u   (", "u ("}, {"b  (", "b ("}, {"b   (", "b ("},
    {"v  (", "v ("}, {"v   (", "v ("},
    {") (", ", "}, {")  (", ", "}, {")   (", ", "}, {")    (", ", "}, {")     (", ", "}, {")(", ", "},
    {"vero", "1"}, {"falso", "0"},
    {"è maggiore di", ">"}, {"è minore di", "<"}, {"è maggiore o uguale a", ">="}, {"è minore o uguale a", "<="},
    {"è diverso da", "!="}, {"è uguale a", "="},
    {"allora", "{"}, {" .", " }"}, {").", ")}"},
};

}  // namespace

std::string terse_form(std::string program) {
  text_edit::replace_all(program, REWRITINGS);
  return program;
}
