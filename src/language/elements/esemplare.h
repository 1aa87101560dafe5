// The elements of a running program. Each element is an instance of
// `esemplare`, a small interpreter of its own: its token program starts
// with a head that sets its attributes as assignments, and goes on with the
// code of its object; it has a table of variables, timers, and its mouse,
// edge and path states as text.
//
// Its life, frame by frame: Create; one frame later the start (alarm 4)
// makes its program and enters its name in the program's table; one frame
// later its block "INIZIA" runs (alarm 7); from its second Draw on, each
// Draw shows in its variables how the runtime moved it and runs its block
// "CICLO_CONTINUO". Destroyed by a statement, by its life time (alarm 5) or
// by leaving the room when asked, it takes its name out of the table.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Object/Instance.h"

class ProgramInstance;
struct TokenProgram;

// The attributes an element's program starts by assigning to itself.
struct ElementHead {
  std::string nome, classe;
  double x = 0, y = 0, z = 0, sprite = -1, xscale = 1, yscale = 1, alpha = 1, blend = 12632256, angle = 0,
         animation_speed = 1, frame = 0, speed = 0, direction = 0;
  std::string timers[4] = {"*", "*", "*", "*"};
  std::string durata = "*";
};

class Esemplare : public CInstance {
 public:
  Esemplare(float x, float y, int32_t id, int32_t object);
  ~Esemplare() override;

  void create();
  void start();           // alarm 4
  void run_inizia();      // alarm 7
  void end_intersect();   // alarm 1
  void life_time_over();  // alarm 5
  void end_leave();       // alarm 6
  void step();
  void step_end();
  void draw();
  void destroy();
  void pressed(int button);
  void held(int button);
  void released(int button);
  void mouse_enter();
  void mouse_leave();
  void outside_room();
  void intersect_boundary();
  void path_ended();

  ProgramInstance& program() { return *program_; }

  // What the program asked of the element, as text; "*" is not set.
  std::string nome = "*", classe = "*", ogg;
  std::string timer_1 = "*", timer_2 = "*", timer_3 = "*", timer_4 = "*", durata = "*";
  std::string xx = "*", yy = "*", alpha = "*", angle = "*", dir = "*", sp = "*", xscale = "*", yscale = "*";
  // Left, right and middle button: "2" just pressed, "1" held, "0" free.
  std::string stato = "non è cliccato", stato_d = "non è cliccato", stato_c = "non è cliccato";
  int ctime = 0, ctime_d = 0, ctime_c = 0;
  std::string enter = "0";      // "1" entered, "0.5" for a frame after leaving, "0"
  std::string intersect = "0";  // "1" for a frame after touching the room's edge
  std::string outside = "0";    // "1" outside the room
  int end_of_path = 0, disegna_percorso = 0, collision_check = 0, cc_time = 0, outside_room_destroy = 0;
  std::string vel_animazione = "1", fotogramma = "0";
  std::string immagine;         // the picture: a number, or a variable's name
  // The index of the object's code in the program's tables; NO_CODE without, UNSTARTED before the start.
  static constexpr int UNSTARTED = -4, NO_CODE = 0;
  int code_index = UNSTARTED;

 private:
  ElementHead head_values() const;
  void take_window();
  void enter_name();
  void copy_attributes_to_variables(bool all_attributes);
  // Runs tokens `from` to `to` of the element's program; a program error stops the run.
  void run_block(int from, int to);
  std::string& button_state(int button);
  int& button_time(int button);

  std::unique_ptr<ProgramInstance> program_;
  // The entries of the element's table that mirror an attribute: the entry's
  // index and the attribute's, made again when the table changes size.
  std::vector<std::pair<int, int>> mirrors_;
  int mirrored_size_ = -1;
};

// The index of the code of the object that an element named `nome`, of
// class `ogg`, runs in the program `main` (the last match); NO_CODE for none.
int object_code_index(const TokenProgram& main, const std::string& nome, const std::string& ogg);
// The head of an element's program: "INIZIA", an assignment of each
// attribute, "CICLO_CONTINUO", and a last token that the object's code takes
// the place of.
void write_element_head(TokenProgram& program, const ElementHead& head);
// The tokens of object code `code_index` behind the head, made the first
// time into `main`'s cache; false when a literal division by zero stops them.
bool append_object_code(TokenProgram& program, TokenProgram& main, int code_index);

// The program an element of class `object` of the program `main` would run:
// its head with a new element's attributes, then its object's code. False
// when a literal division by zero stops the code.
bool element_token_program(TokenProgram& main, const std::string& object, TokenProgram& element);

// Where the elements' picture comes from, until a program gives them one of
// their own: the environment's art, asked for when an element needs it.
void set_element_picture(int32_t (*picture)());
// Draws `instance` with its sprite (none for sprite 0), then takes the
// picture `immagine` names for the next frame: a number, or a program
// variable that holds one; the elements' picture when there is no such sprite.
void draw_with_picture(CInstance& instance, const std::string& immagine);

int32_t define_esemplare();
