#include "language/elements/element_templates.h"

#include "language/elements/esemplare.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

void Oggetto::pressed() { stato = "2"; }
void Oggetto::held() {
  if (++ctime > 1) stato = "1";
}
void Oggetto::released() { stato = "0"; }

void Puntatore::expire() { instance_destroy(*this); }

void define_element_objects(int32_t (*element_picture)()) {
  set_element_picture(element_picture);
  define_esemplare();
  constexpr int PRESSED_LEFT = 4, HELD_LEFT = 0, RELEASED_LEFT_ANYWHERE = 56;
  // A class is a template: it has a place in the room but shows nothing.
  ObjectDefinition<Oggetto>("oggetto")
      .on(ev::MOUSE, PRESSED_LEFT, &Oggetto::pressed)
      .on(ev::MOUSE, HELD_LEFT, &Oggetto::held)
      .on(ev::MOUSE, RELEASED_LEFT_ANYWHERE, &Oggetto::released);
  ObjectDefinition<ClasseTasto>("classe_tasto").flags(0);
  for (const char* marker : {"puntatore1", "puntatore2"}) {
    ObjectDefinition<Puntatore>(marker).on(ev::CREATE, 0, &Puntatore::create).on(ev::ALARM, 0, &Puntatore::expire);
  }
}
