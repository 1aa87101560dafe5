// pop_up: the one modal box of the environment. A question (new project,
// open, close, a ready kit) offers "Salva", "Annulla" and "Elimina"; a notice (the
// recovery after a crash) offers "Ok"; the open screen asks with it before
// it deletes a saved project ("Elimina", "Annulla") or renames one
// ("Rinomina", "Annulla", round the screen's name field). While it stands every button, the
// backup and the close request wait, the code box takes no keys, and
// setting.ini says there is nothing to recover.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "runtime/Object/Instance.h"

struct PopUpButton;

enum class PopUpKind { Nuovo, Chiudi, Apri, Kit, Recupero, EliminaFile, RinominaFile };

class PopUp : public CInstance {
 public:
  using CInstance::CInstance;

  void create();
  void destroy();
  void step();
  void draw_end();

  std::string text, text2;
  int nuovo = 0, chiudi = 0, apri = 0, kit = 0, recupero = 0, elimina_file = 0, rinomina_file = 0;
  std::string kit_file;  // the ready kit that "Elimina" opens
  int file_index = -1;  // the open screen's card that the question is about

  // The buttons of this kind of box.
  std::span<const PopUpButton> buttons() const;

 private:
  bool notice() const { return recupero != 0; }
  void answer(const std::string& label);
  void answer_about_file(const std::string& label);
};

// Opens the box of `kind` in the middle of the room.
PopUp& open_pop_up(PopUpKind kind);
bool pop_up_exists();
// The pointer's shape while a box is up: the hand over one of its buttons.
int pop_up_cursor();

int32_t define_pop_up();
