// The meetings of funzioni_sugli_oggetti: collisions between elements,
// their distance, the tests of an element's variable, the speech and
// thought balloons, and the stamps.
//
// The statements that act when two elements collide look every second
// frame: the elements that meet another get a marker (puntatore1 for the
// first reference, puntatore2 for the second) in their shape, and the
// markers that meet tell which elements collide.
#include <algorithm>
#include <cmath>

#include "families/funzioni_di_disegno.h"
#include "families/funzioni_di_disegno_condivise.h"
#include "families/funzioni_sugli_oggetti.h"
#include "families/value_function.h"
#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Graphics/Surfaces.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Room.h"
#include "runtime/Sprite/Sprite.h"

namespace {

constexpr int FIRST = 1, SECOND = 2;

// [SECTION] Collisions

// A marker in the shape of `e`, seen by nobody.
CInstance* marker_on(const Esemplare& e, const char* object) {
  CInstance* m = instance_create(e.x, e.y, object_find(object), 0);
  if (!m) return nullptr;
  m->sprite_index = e.sprite_index;
  m->image_alpha = 0;
  m->image_xscale = e.image_xscale;
  m->image_yscale = e.image_yscale;
  m->image_angle = e.image_angle;
  m->set(instance_flag::BBOX_DIRTY, true);
  return m;
}

struct Markers {
  std::vector<CInstance*> first, second;
};

// Markers on the elements that meet another element: puntatore1 where the
// first reference names it, puntatore2 where the second does.
Markers markers(const ElementReference& first, const ElementReference& second) {
  Markers made;
  const int32_t elements = object_find("esemplare");
  for (Esemplare* e : running_elements()) {
    if (!place_meeting(*e, e->x, e->y, elements)) continue;
    if (names_element(*e, first)) {
      if (CInstance* m = marker_on(*e, "puntatore1")) made.first.push_back(m);
    }
    if (names_element(*e, second)) {
      if (CInstance* m = marker_on(*e, "puntatore2")) made.second.push_back(m);
    }
  }
  return made;
}

// The elements nearest to each marker of `from` that meets a marker of `to`.
std::vector<Esemplare*> met(const std::vector<CInstance*>& from, const char* to) {
  std::vector<Esemplare*> found;
  const int32_t elements = object_find("esemplare"), other = object_find(to);
  for (CInstance* m : from) {
    if (!place_meeting(*m, m->x, m->y, other)) continue;
    if (CInstance* nearest = instance_nearest(m->x, m->y, elements)) found.push_back(static_cast<Esemplare*>(nearest));
  }
  return found;
}

void remove_markers(const Markers& made) {
  for (CInstance* m : made.first) instance_destroy(*m);
  for (CInstance* m : made.second) instance_destroy(*m);
}

// A key not given names nothing, and matches no value.
constexpr std::string_view NOTHING = "***";
constexpr ArgumentKey PAIR[] = {{"(ELEMENTO_1:", FIRST, NOTHING}, {"(ELEMENTO_2:", SECOND, NOTHING}};
constexpr ArgumentKey WITH[] = {{"(ELEMENTO:", FIRST, NOTHING}, {"(ELEMENTO_COINVOLTO:", SECOND, NOTHING}};

// Destroys the elements that collide: those of the first reference, and of the second too when `both`.
void destroy_colliding(ProgramInstance& p, int i, std::span<const ArgumentKey> keys, bool both) {
  read_arguments(p, i, CallShape::Statement, keys);
  if (p.time % 2 == 0) return;
  const Markers made = markers(element_reference(p, slot_source(p, FIRST)), element_reference(p, slot_source(p, SECOND)));
  std::vector<Esemplare*> gone = met(made.first, "puntatore2");
  if (both) {
    const std::vector<Esemplare*> also = met(made.second, "puntatore1");
    gone.insert(gone.end(), also.begin(), also.end());
  }
  remove_markers(made);
  for (Esemplare* e : gone) {
    if (e->active()) instance_destroy(*e);
  }
}





// [SECTION] An element's variable

constexpr int VARIABLE = 2, VALUE = 3, CLASS = 4;
constexpr ArgumentKey VARIABLE_KEYS[] = {{"(ELEMENTO:", FIRST, NOTHING},
                                         {"(VARIABILE:", VARIABLE, NOTHING},
                                         {"(VALORE:", VALUE, NOTHING},
                                         {"(OGGETTO:", CLASS, NOTHING}};

// The element's text for VARIABILE: a field for the attributes, seconds for the timers, else its variable.
std::string variable_of(Esemplare& e, const std::string& name) {
  const std::pair<const char*, const std::string*> fields[] = {
      {"X", &e.xx},  {"Y", &e.yy},       {"SCALA_ASSE_X", &e.xscale}, {"SCALA_ASSE_Y", &e.yscale},
      {"IMMAGINE", &e.immagine}, {"TRASPARENZA", &e.alpha}, {"VELOCITA", &e.sp}, {"DIREZIONE", &e.dir},
      {"ROTAZIONE", &e.angle}};
  for (const auto& [field, text] : fields) {
    if (name == field) return *text;
  }
  if (name == "Z") return value_to_text(RValue::number(e.depth));
  if (name == "COLORE") return value_to_text(RValue::number(e.image_blend));
  if (name.starts_with("TIMER_") && name.size() == 7 && name[6] >= '1' && name[6] <= '4') {
    return value_to_text(RValue::number(std::round(e.program().timer[name[6] - '1'] / 30)));
  }
  const ProgramInstance& table = e.program();
  for (int k = 0; k < 20 && k < table.vari_size; ++k) {
    if (table.vari[static_cast<size_t>(k)].string_view() == name) return value_to_text(table.val[static_cast<size_t>(k)]);
  }
  return "";
}

std::vector<Esemplare*> with_value(ProgramInstance& p) {
  std::vector<Esemplare*> found;
  const std::string name = slot_source(p, VARIABLE), value = slot_source(p, VALUE);
  for (Esemplare* e : named_elements(element_reference(p, slot_source(p, FIRST)))) {
    if (variable_of(*e, name) == value) found.push_back(e);
  }
  return found;
}


// The element gives way to one of class OGGETTO at its place, with that class's fields but for the position.

// [SECTION] Balloons

constexpr double SPEECH_GREY = 15658734, INK = 4210752;

// The element's text with its variables: " < nome > " takes the value; "/carriage_return/" breaks the line.
std::string balloon_text(Esemplare& e, std::string text) {
  std::erase(text, '"');
  const ProgramInstance& table = e.program();
  for (int k = 0; k < table.vari_size; ++k) {
    const std::string name(table.vari[static_cast<size_t>(k)].string_view());
    if (!name.empty()) text_edit::replace_all(text, " < " + name + " > ", value_to_text(table.val[static_cast<size_t>(k)]));
  }
  text_edit::replace_all(text, " < ", "");
  text_edit::replace_all(text, " > ", "");
  text_edit::replace_all(text, "/carriage_return/", "\n");
  return text;
}

void balloon(ProgramInstance& p, int i, const char* key, bool thought) {
  const ArgumentKey keys[] = {{"(ELEMENTO:", FIRST}, {key, SECOND, "\"...\""}};
  read_arguments(p, i, CallShape::Statement, keys);
  const double window_width = p.larghezza_finestra;
  constexpr double SEPARATION = 16;
  for (Esemplare* e : named_elements(element_reference(p, slot_source(p, FIRST)))) {
    const std::string text = balloon_text(*e, slot_source(p, SECOND));
    const CSprite* sprite = sprite_get(e->sprite_index);
    double tx = e->x + (sprite ? sprite->width * e->image_xscale - sprite->xorigin : 0) + 10;
    const double txx = std::min(tx, window_width - 80);
    const double pw = std::min(200.0, static_cast<double>(string_width(text)));
    const double w = std::max(100.0, static_cast<double>(string_width_ext(text, SEPARATION, pw)));
    const double h = string_height_ext(text, SEPARATION, pw);
    const double ty = std::max(10.0, e->y - h - 50);
    if (tx + w > window_width - 30) tx = window_width - w - 30;
    if (thought) {
      draw_circle_colour(txx + 70, ty + h + 20, 16, INK, INK, false);
      draw_circle_colour(txx + 70, ty + h + 20, 15, SPEECH_GREY, SPEECH_GREY, false);
      draw_state().colour = static_cast<uint32_t>(INK);
      draw_roundrect(tx - 1, ty - 1, tx + w + 21, ty + h + 21, true);
      for (const auto& [cx, cy, r] : {std::array<double, 3>{txx + 50, ty + h + 50, 10}, {txx + 25, ty + h + 70, 6}}) {
        draw_circle_colour(cx, cy, r, SPEECH_GREY, SPEECH_GREY, false);
        draw_circle_colour(cx, cy, r + 1, INK, INK, true);
      }
    } else {
      draw_triangle_colour(txx + 30, ty + h + 20, txx + 65, ty + h + 20, txx - 10, e->y, SPEECH_GREY, SPEECH_GREY,
                           SPEECH_GREY, false);
    }
    draw_roundrect_colour(tx, ty, tx + w + 20, ty + h + 20, 16777215, SPEECH_GREY, false);
    draw_state().colour = 0;
    draw_text_ext(tx + 10, ty + 10, text, SEPARATION, pw);
  }
}


// [SECTION] Stamps

}  // namespace

// The element of the first reference that collides takes the values of the
// keys written, worked out with its own variables and the parameters' names
// standing for what the call says of them.
void modifica_elemento_quando_collide_con(ProgramInstance& p, int i) {
  static constexpr std::string_view PARAMETERS[] = {"X",         "Y",        "SCALA_ASSE_X", "SCALA_ASSE_Y", "IMMAGINE",
                                                    "TRASPARENZA", "COLORE", "VELOCITA",     "DIREZIONE",    "ROTAZIONE",
                                                    "Z"};
  static constexpr std::string_view REFERENCES[] = {"ELEMENTO", "ELEMENTO_COINVOLTO"};
  read_arguments(p, i, CallShape::Statement, WITH);
  if (p.time % 2 == 0) return;
  const LabelledKeys given = labelled_keys(p, i, PARAMETERS, REFERENCES);
  const Markers made = markers(element_reference(p, slot_source(p, FIRST)), element_reference(p, slot_source(p, SECOND)));
  const std::vector<Esemplare*> changed = met(made.first, "puntatore2");
  remove_markers(made);
  for (Esemplare* e : changed) {
    ProgramInstance& table = e->program();
    for (const auto& [label, written] : given) {
      std::string text = written;
      for (int k = 0; k < table.vari_size; ++k) {
        const std::string_view name = table.vari[static_cast<size_t>(k)].string_view();
        if (!name.empty()) text_edit::replace_all(text, name, value_to_text(table.val[static_cast<size_t>(k)]));
      }
      for (const auto& [other, other_text] : given) text_edit::replace_all(text, other, other_text);
      const std::string worked = calculate_string(p, text);
      if (label == "Z") e->depth = static_cast<float>(string_is_real(worked));
      else if (label == "IMMAGINE") e->immagine = worked;
      else table.write_attribute(label, worked);
      for (int k = 1; k < table.vari_size; ++k) {
        if (table.vari[static_cast<size_t>(k)].string_view() == label) table.val[static_cast<size_t>(k)] = RValue::text(worked);
      }
    }
  }
}

void ottieni_risultato_controllo_collisione_tra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, PAIR);
  const ElementReference second = element_reference(p, slot_source(p, SECOND));
  const int32_t elements = object_find("esemplare");
  bool collides = false;
  for (Esemplare* e : named_elements(element_reference(p, slot_source(p, FIRST)))) {
    if (CInstance* other = instance_place(*e, e->x, e->y, elements)) {
      collides = collides || names_element(*static_cast<Esemplare*>(other), second);
    }
  }
  set_global_number("collisione", collides ? 1 : 0);
  give_number(p, i, collides ? 1 : 0, NumberForm::Short);
}

void distruggi_questi_elementi_quando_collidono_tra_loro(ProgramInstance& p, int i) {
  destroy_colliding(p, i, PAIR, true);
}

void distruggi_elemento_quando_collide_con(ProgramInstance& p, int i) { destroy_colliding(p, i, WITH, false); }

void distruggi_elemento_quando_questa_sua_variabile_locale_equivale_a(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, VARIABLE_KEYS);
  for (Esemplare* e : with_value(p)) instance_destroy(*e);
}

void scambia_elemento_quando_questa_sua_variabile_locale_equivale_a(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, VARIABLE_KEYS);
  const std::string class_name = element_reference(p, slot_source(p, CLASS)).written;
  const Oggetto* model = class_named(class_name);
  for (Esemplare* old : with_value(p)) {
    auto* made = static_cast<Esemplare*>(instance_create(old->x, old->y, object_find("esemplare"), 0));
    instance_destroy(*old);
    if (!made) continue;
    made->ogg = made->classe = class_name;
    if (!model) continue;
    const auto set = [](const std::string& from, auto apply) {
      if (from != "*") apply(string_is_real(from));
    };
    set(model->xscale, [&](double v) { made->image_xscale = static_cast<float>(v); });
    set(model->yscale, [&](double v) { made->image_yscale = static_cast<float>(v); });
    set(model->alpha, [&](double v) { made->image_alpha = static_cast<float>(v); });
    set(model->sp, [&](double v) { made->set_speed(static_cast<float>(v)); });
    set(model->dir, [&](double v) { made->set_direction(static_cast<float>(v)); });
    set(model->angle, [&](double v) { made->image_angle = static_cast<float>(v); });
    set(model->z, [&](double v) { made->depth = static_cast<float>(v); });
    set(model->blend, [&](double v) { made->image_blend = static_cast<int32_t>(std::clamp(v, 0.0, 16777215.0)); });
    set(model->img_speed, [&](double v) { made->image_speed = static_cast<float>(v); });
    set(model->img_index, [&](double v) { made->image_index = static_cast<float>(v); });
    for (auto [from, to] : {std::pair{&model->timer_1, &made->timer_1}, {&model->timer_2, &made->timer_2},
                            {&model->timer_3, &made->timer_3}, {&model->timer_4, &made->timer_4},
                            {&model->durata, &made->durata}, {&model->nome, &made->nome}}) {
      if (*from != "*") *to = *from;
    }
    if (model->spr_index != "*") made->immagine = model->spr_index;
    ProgramInstance& table = made->program();
    table.append_variable("", RValue::text(""));
    for (const auto& [name, value] : model->variables) table.append_variable(name, RValue::text(value));
  }
}

void ottieni_distanza_tra_due_elementi(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, PAIR);
  const std::vector<Esemplare*> a = named_elements(element_reference(p, slot_source(p, FIRST)));
  const std::vector<Esemplare*> b = named_elements(element_reference(p, slot_source(p, SECOND)));
  if (a.empty() || b.empty()) {
    give_previous(p, i);
    return;
  }
  // The gap between the two shapes' boxes; 0 when they overlap.
  BBox one{}, two{};
  instance_bbox(*a.back(), one);
  instance_bbox(*b.back(), two);
  const double dx = std::max({0.0F, one.left - two.right, two.left - one.right});
  const double dy = std::max({0.0F, one.top - two.bottom, two.top - one.bottom});
  give_number(p, i, std::hypot(dx, dy), NumberForm::Short);
}

void fai_parlare_un_elemento(ProgramInstance& p, int i) { balloon(p, i, "(DICE:", false); }

void fai_pensare_un_elemento(ProgramInstance& p, int i) { balloon(p, i, "(PENSA:", true); }

void timbra_con_questo_elemento(ProgramInstance& p, int i) {
  constexpr ArgumentKey keys[] = {{"(ELEMENTO:", FIRST}};
  read_arguments(p, i, CallShape::Statement, keys);
  ProgramInstance* main = main_program();
  if (!main) return;
  const int32_t stamps = drawing_memory(*main).timbri;
  if (!surface_exists(stamps)) return;
  surface_set_target(stamps);
  for (Esemplare* e : named_elements(element_reference(p, slot_source(p, FIRST)))) draw_self(*e);
  surface_reset_target();
}

void cancella_timbri(ProgramInstance&, int) {
  ProgramInstance* main = main_program();
  if (!main) return;
  int32_t& stamps = drawing_memory(*main).timbri;
  if (surface_exists(stamps)) surface_free(stamps);
  stamps = -1;
}
