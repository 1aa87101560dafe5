// The classes and elements of funzioni_sugli_oggetti: crea_un_oggetto,
// crea_un_esemplare and modifica_un_elemento.
//
// A class is an `oggetto` whose fields are the defaults of its elements. An
// element takes its class's fields, then the keys of its own call; every key
// written (and every key of the user's own) becomes a variable of the
// element, and only those can be changed later. The parameters that have a
// name in expressions are worked out together, so that X may be written as
// an expression of Y.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "families/funzioni_di_disegno_condivise.h"
#include "families/funzioni_sugli_oggetti.h"
#include "families/value_function.h"
#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "language/tokenizer/text_edit.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/Random.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Room.h"

namespace {

// The keys of a class or an element, with their defaults, the field of the
// class that keeps each, and the name a key has inside expressions.
struct SlotSpec {
  std::string_view key;
  std::string_view default_text;
  std::string Oggetto::*class_field;
  std::string_view expression_name;  // "" for a key without one
};

enum Slot : size_t {
  NOME, X, Y, SCALA_ASSE_X, SCALA_ASSE_Y, IMMAGINE, TRASPARENZA, COLORE, VELOCITA, DIREZIONE, ROTAZIONE, Z,
  TIMER_1, TIMER_2, TIMER_3, TIMER_4, DURATA, VELOCITA_ANIMAZIONE, FOTOGRAMMA, SLOTS
};

constexpr std::string_view NOT_FOUND = "Not found";

const std::array<SlotSpec, SLOTS> SPECS = {{
    {"(NOME:", "", &Oggetto::nome, ""},
    {"(X:", "150", &Oggetto::xx, "X"},
    {"(Y:", "100", &Oggetto::yy, "Y"},
    {"(SCALA_ASSE_X:", "1", &Oggetto::xscale, "SCALA_ASSE_X"},
    {"(SCALA_ASSE_Y:", "1", &Oggetto::yscale, "SCALA_ASSE_Y"},
    {"(IMMAGINE:", NOT_FOUND, &Oggetto::spr_index, ""},
    {"(TRASPARENZA:", "1", &Oggetto::alpha, "TRASPARENZA"},
    {"(COLORE:", "16777215", &Oggetto::blend, ""},
    {"(VELOCITA:", "0", &Oggetto::sp, "VELOCITA"},
    {"(DIREZIONE:", "0", &Oggetto::dir, "DIREZIONE"},
    {"(ROTAZIONE:", "0", &Oggetto::angle, "ROTAZIONE"},
    {"(Z:", "-1", &Oggetto::z, "Z"},
    {"(TIMER_1:", "0", &Oggetto::timer_1, "TIMER_1:"},
    {"(TIMER_2:", "0", &Oggetto::timer_2, "TIMER_2:"},
    {"(TIMER_3:", "0", &Oggetto::timer_3, "TIMER_3:"},
    {"(TIMER_4:", "0", &Oggetto::timer_4, "TIMER_4:"},
    {"(DURATA:", "-1", &Oggetto::durata, "DURATA:"},
    {"(VELOCITA_ANIMAZIONE:", "1", &Oggetto::img_speed, "VELOCITA_ANIMAZIONE:"},
    {"(FOTOGRAMMA:", "0", &Oggetto::img_index, "FOTOGRAMMA:"},
}};

using Variables = std::vector<std::pair<std::string, std::string>>;

struct Call {
  std::array<std::string, SLOTS> slots;
  Variables user;             // the keys written, as variables: names and values as written
  std::string class_name;     // OGGETTO, without its quotes
};

std::string random_name(std::string_view prefix) {
  return std::string(prefix) + value_to_text(RValue::number(rt::random(1000)));
}

Call defaults(std::string_view prefix) {
  Call call;
  for (size_t s = 0; s < SLOTS; ++s) call.slots[s] = SPECS[s].default_text;
  call.slots[NOME] = random_name(prefix);
  return call;
}

// The triples of the statement at `i`: keys of the table fill their slots;
// every key but FOTOGRAMMA, and every key of the user's own, is a variable too.
void read_keys(ProgramInstance& p, int i, Call& call) {
  for (int k = i + 2; k + 1 < p.program.totale_tok && p.token_text(k).starts_with('('); k += 3) {
    const std::string_view key = p.token_text(k);
    const std::string value(p.token_text(k + 1));
    for (size_t s = 0; s < SLOTS; ++s) {
      if (SPECS[s].key == key) call.slots[s] = value;
    }
    if (key == "(OGGETTO:") call.class_name = without_quotes(value);
    if (key == "(FOTOGRAMMA:" || key.find(':') == std::string_view::npos) continue;
    std::string name(key);
    std::erase(name, '(');
    std::erase(name, ':');
    call.user.emplace_back(name, value);
  }
}

// The class that OGGETTO of the statement at `i` names, without its quotes.
std::string class_of_call(ProgramInstance& p, int i) {
  for (int k = i + 2; k + 1 < p.program.totale_tok && p.token_text(k).starts_with('('); k += 3) {
    if (p.token_text(k) == "(OGGETTO:") return without_quotes(std::string(p.token_text(k + 1)));
  }
  return "";
}

// The picture of IMMAGINE as a sprite's number in text: a number stays as
// it is, a path is loaded; "" for none given, and the element keeps the
// elements' picture.
std::string picture_text(ProgramInstance& p, const std::string& written) {
  if (written.empty() || written == NOT_FOUND) return "";
  if (std::all_of(written.begin(), written.end(), [](char c) { return c >= '0' && c <= '9'; })) return written;
  return value_to_text(RValue::number(picture_of(p, written)));
}

// The sixteen parameters that have a name inside expressions, worked out
// together: the running program's variables stand for their values, and
// each parameter's name for what that parameter says.
// The parameters' names, the longest first, so that "X" never eats into "SCALA_ASSE_X".
std::vector<size_t> names_longest_first() {
  std::vector<size_t> order;
  for (size_t s = 0; s < SLOTS; ++s) {
    if (!SPECS[s].expression_name.empty()) order.push_back(s);
  }
  std::stable_sort(order.begin(), order.end(), [](size_t a, size_t b) {
    return SPECS[a].expression_name.size() > SPECS[b].expression_name.size();
  });
  return order;
}

std::array<double, SLOTS> worked_out(ProgramInstance& p, const Call& call) {
  static const std::vector<size_t> order = names_longest_first();
  std::array<double, SLOTS> result{};
  for (size_t s = 0; s < SLOTS; ++s) {
    if (SPECS[s].expression_name.empty()) continue;
    std::string text = call.slots[s];
    for (int k = 0; k < p.vari_size; ++k) {
      const std::string_view name = p.vari[static_cast<size_t>(k)].string_view();
      if (!name.empty() && name != "*/") text_edit::replace_all(text, name, value_to_text(p.val[static_cast<size_t>(k)]));
    }
    for (size_t other : order) text_edit::replace_all(text, SPECS[other].expression_name, call.slots[other]);
    result[s] = string_is_real(calculate_string(p, text));
  }
  return result;
}

// A colour or a sprite's number that an int can hold.
int32_t whole_number(double x) { return std::isfinite(x) ? static_cast<int32_t>(std::clamp(x, -2e9, 2e9)) : 0; }

}  // namespace

const Oggetto* class_named(const std::string& name) {
  const CObject* classes = object_get(object_find("oggetto"));
  if (!classes) return nullptr;
  const Oggetto* found = nullptr;
  for (CInstance* c : classes->instances) {
    auto* o = static_cast<Oggetto*>(c);
    if (o->active() && o->nome == name) found = o;
  }
  return found;
}

void crea_un_oggetto(ProgramInstance& p, int i) {
  Call call = defaults("oggetto senza nome ");
  read_keys(p, i, call);
  auto* made = static_cast<Oggetto*>(instance_create(0, 0, object_find("oggetto"), 0));
  if (!made) return;
  for (size_t s = 0; s < SLOTS; ++s) made->*SPECS[s].class_field = call.slots[s];
  made->nome = without_quotes(call.slots[NOME]);
  made->spr_index = picture_text(p, call.slots[IMMAGINE]);
  for (size_t s = TIMER_1; s <= TIMER_4; ++s) {
    made->*SPECS[s].class_field = value_to_text(RValue::number(string_is_real(calculate_string(p, call.slots[s]))));
  }
  made->variables = std::move(call.user);
}

void crea_un_esemplare(ProgramInstance& p, int i) {
  Call call = defaults("es");
  Variables from_class;
  // The class's fields stand in for the defaults; the call's own keys win over them.
  if (const Oggetto* model = class_named(class_of_call(p, i))) {
    for (size_t s = 0; s < SLOTS; ++s) {
      if (model->*SPECS[s].class_field != "*") call.slots[s] = model->*SPECS[s].class_field;
    }
    from_class = model->variables;
  }
  read_keys(p, i, call);
  const std::string picture = picture_text(p, call.slots[IMMAGINE]);

  auto* e = static_cast<Esemplare*>(instance_create(0, 0, object_find("esemplare"), 0));
  if (!e) return;
  e->ogg = e->classe = call.class_name;
  e->nome = without_quotes(call.slots[NOME]);
  e->immagine = picture;
  if (!picture.empty()) e->sprite_index = whole_number(string_is_real(picture));
  // The program makes its elements as their own selves; an element makes them from its own table.
  ProgramInstance& self = p.esemplare ? p : e->program();

  // The table: the class's variables, then the call's own, which blank a class entry of the same name.
  ProgramInstance& table = e->program();
  table.append_variable("", RValue::text(""));
  for (auto& [name, value] : from_class) {
    const bool overridden = std::any_of(call.user.begin(), call.user.end(), [&](const auto& u) { return u.first == name; });
    table.append_variable(overridden ? "*/" : name, RValue::text(overridden ? "*/" : value));
  }
  for (const auto& [name, value] : call.user) table.append_variable(name, RValue::text(calculate_string(self, value)));

  const std::array<double, SLOTS> n = worked_out(self, call);
  e->x = static_cast<float>(n[X]);
  e->y = static_cast<float>(n[Y]);
  e->image_xscale = static_cast<float>(n[SCALA_ASSE_X]);
  e->image_yscale = static_cast<float>(n[SCALA_ASSE_Y]);
  e->image_alpha = static_cast<float>(n[TRASPARENZA]);
  e->set_direction(static_cast<float>(n[DIREZIONE]));
  e->set_speed(static_cast<float>(n[VELOCITA]));
  e->image_angle = static_cast<float>(n[ROTAZIONE]);
  e->depth = static_cast<float>(n[Z]);
  e->image_speed = static_cast<float>(n[VELOCITA_ANIMAZIONE]);
  e->image_index = static_cast<float>(n[FOTOGRAMMA]);
  e->image_blend = whole_number(string_is_real(calculate_string(self, call.slots[COLORE])));
  const auto text_of = [&](size_t s) { return value_to_text(RValue::number(n[s])); };
  e->xx = text_of(X);
  e->yy = text_of(Y);
  e->xscale = text_of(SCALA_ASSE_X);
  e->yscale = text_of(SCALA_ASSE_Y);
  e->alpha = text_of(TRASPARENZA);
  e->sp = text_of(VELOCITA);
  e->dir = text_of(DIREZIONE);
  e->angle = text_of(ROTAZIONE);
  e->timer_1 = text_of(TIMER_1);
  e->timer_2 = text_of(TIMER_2);
  e->timer_3 = text_of(TIMER_3);
  e->timer_4 = text_of(TIMER_4);
  e->durata = text_of(DURATA);
  e->vel_animazione = text_of(VELOCITA_ANIMAZIONE);
  e->fotogramma = text_of(FOTOGRAMMA);
  e->set(instance_flag::BBOX_DIRTY, true);
}

// The keys of the table's own, as labels.
constexpr std::string_view TABLE_LABELS[] = {"X",          "Y",           "SCALA_ASSE_X", "SCALA_ASSE_Y",
                                             "IMMAGINE",   "TRASPARENZA", "COLORE",       "VELOCITA",
                                             "DIREZIONE",  "ROTAZIONE",   "Z",            "TIMER_1",
                                             "TIMER_2",    "TIMER_3",     "TIMER_4",      "DURATA",
                                             "VELOCITA_ANIMAZIONE", "FOTOGRAMMA"};

void modifica_un_elemento(ProgramInstance& p, int i) {
  static constexpr std::string_view TARGET[] = {"NOME"};
  LabelledKeys labelled = labelled_keys(p, i, TABLE_LABELS, TARGET);
  for (auto& [label, value] : labelled) {
    if (label == "IMMAGINE" && value.starts_with('"')) value = picture_text(p, value);
  }
  std::string target;
  for (int k = i + 2; k + 1 < p.program.totale_tok && p.token_text(k).starts_with('('); k += 3) {
    if (p.token_text(k) == "(NOME:") target = p.token_text(k + 1);
  }

  // An element's id names it; anything else names a class.
  std::vector<Esemplare*> targets;
  const double id = string_is_real(calculate_string(p, target));
  for (Esemplare* e : running_elements()) {
    if (e->id == id) targets = {e};
  }
  if (targets.empty()) targets = elements_of_class({without_quotes(target), 0});

  for (Esemplare* e : targets) {
    ProgramInstance& table = e->program();
    // Every entry of the table, its last ones too.
    for (int v = 1; v < table.vari_size; ++v) {
      const std::string_view name = table.vari[static_cast<size_t>(v)].string_view();
      for (const auto& [label, value] : labelled) {
        if (label != name) continue;
        const std::string worked = calculate_string(p, value);
        table.val[static_cast<size_t>(v)] = RValue::text(worked);
        // The element follows the variable that stands for one of its attributes.
        if (label == "Z") e->depth = static_cast<float>(string_is_real(worked));
        else if (label == "IMMAGINE") e->immagine = worked;
        else table.write_attribute(label, worked);
      }
    }
  }
}
