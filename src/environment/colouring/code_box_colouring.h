// The colours of the editor's code box: each line tagged by code_editor and
// painted over the plain text, a line coloured again only when it changed
// (or when it lies in a string or a comment opened above, whose colours
// depend on the lines before it), and the program scanned for the
// functions it defines or imports, so that they show red wherever they are
// called.
#pragma once

#include <string>
#include <vector>

#include "environment/colouring/code_box_marks.h"
#include "environment/colouring/code_editor.h"
#include "environment/text_control/input_text.h"

class CodeBoxColouring : public LinePainter {
 public:
  void prepare(const ObjInputText& box, std::vector<std::string>& keys) override;
  void paint(const ObjInputText& box, size_t line, double x, double y) override;
  void paint_over(const ObjInputText& box) override;

  // Finds the functions of `program`: "definisci funzione" and "importa
  // funzione esterna", in it and in the files it includes.
  void scan(const std::string& program);

  const CodeColouring& state() const { return state_; }
  // Whether the page on show is the program's last: only there an opening
  // bracket without a partner is marked.
  bool last_page = true;
  // How many lines were coloured anew since the box was made: the cache at work.
  size_t lines_coloured() const { return lines_coloured_; }

 private:
  void add_marks(const ObjInputText& box, const std::vector<std::string>& lines);

  CodeColouring state_;
  std::string scanned_;                      // the program as last scanned
  std::vector<std::string> previous_version_;  // by line from 1: its text when last coloured
  std::vector<std::string> previous_color_code_;  // and its tagged form
  // What a line leaves in the string and comment state, kept with its colours.
  struct LineStates {
    int string_here = 0, comment_here = 0, comment_next = 0;
  };
  std::vector<LineStates> previous_states_;
  std::vector<std::string> tagged_;          // the tagged lines of the page being drawn, from 0
  std::vector<std::string> plain_;           // and the same lines as they stand
  std::vector<LineMark> marks_;              // the brackets' and the selection's marks on them
  size_t lines_coloured_ = 0;
};
