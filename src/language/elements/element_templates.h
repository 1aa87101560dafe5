// The templates that the object functions make: `oggetto`, a class of
// elements whose fields are the defaults of its elements; `classe_tasto`, a
// class of virtual keys; and `puntatore1`, `puntatore2`, markers that live
// for one frame where a collision test put them.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Object/Instance.h"

class Oggetto : public CInstance {
 public:
  using CInstance::CInstance;

  void pressed();
  void held();
  void released();

  // Defaults for the elements of the class, as text; "*" is not set.
  std::string xx = "*", yy = "*", nome = "*", classe = "*", blend = "*", alpha = "*", angle = "*", dir = "*",
              sp = "*", xscale = "*", yscale = "*", z = "*", spr_index = "*", img_speed = "*", img_index = "*";
  std::string timer_1 = "*", timer_2 = "*", timer_3 = "*", timer_4 = "*", durata = "*";
  // The class's variables, which every element of it starts with: names and values as written.
  std::vector<std::pair<std::string, std::string>> variables;
  std::string stato = "0";  // "2" just pressed, "1" held, "0" free
  int ctime = 0;            // frames held
};

class ClasseTasto : public CInstance {
 public:
  using CInstance::CInstance;
  std::string nome = "*", etichetta = "*", xscale = "*", yscale = "*", alpha = "*", xx = "*", yy = "*";
};

// A marker of one frame.
class Puntatore : public CInstance {
 public:
  using CInstance::CInstance;
  void create() { alarm[0] = 1; }
  void expire();
};

// Adds esemplare, oggetto, classe_tasto, puntatore1 and puntatore2.
void define_element_objects(int32_t (*element_picture)());
