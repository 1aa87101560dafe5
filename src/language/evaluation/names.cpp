// The value of a name in an expression. The rules are tried in a fixed
// order and the first that applies gives the value:
//
//   1. on an element, its own attributes ("|x", ...) and "se_stesso";
//   2. operator signs, numbers and "|not_set|" give themselves;
//   3. the genitive "NOME_del_ELEMENTO" reaches into another element;
//   4. the table of main_code_ctrl, where the element's own entry wins;
//   5. the element's own table;
//   6. the names of the language: truth words, the window, chance, keys,
//      mouse, notes and numbers;
//   7. anything else is "0": a misspelt name is no error.
#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "language/tokenizer/constant_tables.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Function/Random.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Room.h"

namespace {

// A number as the runtime's `string` writes it: no decimals when whole, else two.
std::string number_text(double x) {
  char buffer[352];
  return std::string(buffer, format_number(x, buffer));
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_operator_sign(std::string_view s) {
  return s == "+" || s == "-" || s == "*" || s == "/" || s == "^";
}

// The mouse names hold "_del_" but are no genitive.
constexpr std::string_view NOT_GENITIVE[] = {
    "x_del_mouse",
    "y_del_mouse",
    "tasto_sinistro_del_mouse_e_premuto",
    "tasto_destro_del_mouse_e_premuto",
    "tasto_centrale_del_mouse_e_premuto",
    "tasto_sinistro_del_mouse_e_stato_premuto",
    "tasto_destro_del_mouse_e_stato_premuto",
    "tasto_centrale_del_mouse_e_stato_premuto",
    "tasto_sinistro_del_mouse_e_stato_rilasciato",
    "tasto_destro_del_mouse_e_stato_rilasciato",
    "tasto_centrale_del_mouse_e_stato_rilasciato",
};

bool is_genitive(std::string_view s) {
  if (s.find("_del_") == std::string_view::npos || !esemplare_exists()) return false;
  return std::find(std::begin(NOT_GENITIVE), std::end(NOT_GENITIVE), s) == std::end(NOT_GENITIVE);
}

// Takes every `c` out of `text` and gives how many went.
size_t cut_off(std::string& text, char c) { return std::erase(text, c); }

// The names that the language defines, other than notes and numbers.
enum class Name {
  True,
  False,
  RandomX,
  RandomY,
  MouseX,
  MouseY,
  WindowWidth,
  WindowHeight,
  BackgroundColour,
  Caption,
  Repetition,
  RandomColour,
  RandomAngle,
  KeyDown,
  KeyPressed,
  KeyReleased,
  ButtonDown,
  ButtonPressed,
  ButtonReleased,
  WheelUp,
  WheelDown,
};

struct LanguageName {
  Name name;
  int code = 0;  // the key or mouse button of a key or button state
};

struct Key {
  std::string_view name;
  int code;
};

// The keys that programs name, as the key phrases of the program text join them.
std::vector<Key> named_keys() {
  std::vector<Key> keys = {{"invio", KEY_ENTER},        {"barra_spaziatrice", KEY_SPACE},
                           {"ctrl", KEY_CONTROL},       {"alt", KEY_ALT},
                           {"freccia_su", KEY_UP},      {"freccia_giu", KEY_DOWN},
                           {"freccia_destra", KEY_RIGHT}, {"freccia_sinistra", KEY_LEFT}};
  static constexpr std::string_view DIGITS = "0123456789";
  static constexpr std::string_view LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (size_t k = 0; k < DIGITS.size(); ++k) keys.push_back({DIGITS.substr(k, 1), KEY_DIGIT_0 + static_cast<int>(k)});
  for (size_t k = 0; k < LETTERS.size(); ++k) {
    keys.push_back({LETTERS.substr(k, 1), KEY_LETTER_A + static_cast<int>(k)});
  }
  return keys;
}

using NameTable = std::unordered_map<std::string, LanguageName, VariableNameHash, std::equal_to<>>;

// Every name of the language with what it reads, made once: a name of an
// expression is looked up in one step, whatever its kind.
const NameTable& language_names() {
  static const NameTable table = [] {
    NameTable t = {
        {"vero", {Name::True}},
        {"intero", {Name::True}},
        {"intera", {Name::True}},
        {"falso", {Name::False}},
        {"nullo", {Name::False}},
        {"niente", {Name::False}},
        {"x_casuale", {Name::RandomX}},
        {"y_casuale", {Name::RandomY}},
        {"x_del_mouse", {Name::MouseX}},
        {"y_del_mouse", {Name::MouseY}},
        {"larghezza_finestra", {Name::WindowWidth}},
        {"altezza_finestra", {Name::WindowHeight}},
        {"colore_sfondo", {Name::BackgroundColour}},
        {"nome_finestra", {Name::Caption}},
        {"ripetizione", {Name::Repetition}},
        {"colore_casuale", {Name::RandomColour}},
        {"angolo_casuale", {Name::RandomAngle}},
        {"rotella_del_mouse_in_su", {Name::WheelUp}},
        {"rotella_del_mouse_in_giu", {Name::WheelDown}},
    };
    const auto add_states = [&](std::string_view key, int code, Name down, Name pressed, Name released) {
      const std::string stem = "tasto_" + std::string(key);
      t.emplace(stem + "_e_premuto", LanguageName{down, code});
      t.emplace(stem + "_e_stato_premuto", LanguageName{pressed, code});
      t.emplace(stem + "_e_stato_rilasciato", LanguageName{released, code});
    };
    for (const Key& key : named_keys()) add_states(key.name, key.code, Name::KeyDown, Name::KeyPressed, Name::KeyReleased);
    for (const Key& button : {Key{"sinistro_del_mouse", MOUSE_LEFT}, Key{"destro_del_mouse", MOUSE_RIGHT},
                              Key{"centrale_del_mouse", MOUSE_MIDDLE}}) {
      add_states(button.name, button.code, Name::ButtonDown, Name::ButtonPressed, Name::ButtonReleased);
    }
    return t;
  }();
  return table;
}

// The colours that "colore_casuale" chooses from.
const std::array<RValue, 9>& random_colours() {
  static const std::array<RValue, 9> colours = {
      RValue::number(255),      RValue::number(16776960), RValue::number(65535),
      RValue::number(4235519),  RValue::number(16711680), RValue::number(16777215),
      RValue::number(32768),    RValue::number(65280),    RValue::number(8388736),
  };
  return colours;
}

std::string truth_text(bool value) { return value ? "1" : "0"; }

}  // namespace

std::string ProgramInstance::cal_var_and_const(std::string_view s) {
  std::string out;
  // 1. An element's own attributes.
  if (esemplare) {
    if (attribute_text(s, instance, this, out)) return out;
    if (s == "se_stesso") return number_text(instance.id);
  }
  // 2. Values that are their own text.
  if (is_operator_sign(s) || s == "|not_set|") return std::string(s);
  if (!s.empty() && (s[0] == ' ' || is_digit(s[0]))) return std::string(s);
  if (s.size() > 1 && s[0] == '-' && is_digit(s[1])) return std::string(s);
  // 3. Another element's variable or attribute.
  if (is_genitive(s) && genitive_value(s, out)) return out;
  // 4 and 5. A variable: an element's own entry wins over the program-wide one.
  if (const int own = find_variable(s); own >= 0) return value_text(own);
  if (ProgramInstance& main = main_table(); &main != this) {
    if (const int k = main.find_variable(s); k >= 0) return main.value_text(k);
  }
  // 6. The language's own names.
  if (language_name_value(s, out)) return out;
  return "0";
}

std::string ProgramInstance::calculate_var(std::string_view name) {
  ProgramInstance& main = main_table();
  const int k = main.find_variable(name);
  return k < 0 ? "no var" : main.value_text(k);
}

RValue ProgramInstance::calculate_var_image(std::string_view name) {
  ProgramInstance& main = main_table();
  const int k = main.find_variable(name);
  return k < 0 ? RValue::text("no var") : main.val[static_cast<size_t>(k)];
}

bool ProgramInstance::attribute_text(std::string_view name, const CInstance& owner,
                                     const ProgramInstance* owner_program, std::string& out) {
  if (name.empty() || name[0] != '|') return false;
  const std::string_view field = name.substr(1);
  double value = 0;
  if (field == "x") value = owner.x;
  else if (field == "y") value = owner.y;
  else if (field == "z") value = owner.depth;
  else if (field == "scala_asse_x") value = owner.image_xscale;
  else if (field == "scala_asse_y") value = owner.image_yscale;
  else if (field == "trasparenza") value = owner.image_alpha;
  else if (field == "velocita") value = owner.speed;
  else if (field == "direzione") value = owner.direction;
  else if (field == "rotazione") value = owner.image_angle;
  else if (field == "immagine") value = owner.sprite_index;
  else if (field == "durata") value = owner.alarm[5] / 30.0;
  else if (field.size() == 6 && field.starts_with("timer") && field[5] >= '1' && field[5] <= '4' && owner_program) {
    value = owner_program->timer[field[5] - '1'] / 30.0;
  } else {
    return false;
  }
  out = number_text(value);
  return true;
}

bool ProgramInstance::genitive_value(std::string_view s, std::string& out) {
  // The local name before the first "_del_", the owner behind it. Brackets
  // of the expression around the name are taken off and put back round the value.
  const size_t at = s.find("_del_");
  std::string local(s.substr(0, at));
  std::string owner(s.substr(at + 5));
  const size_t opens = cut_off(local, '[');
  const size_t closes = cut_off(owner, ']');
  cut_off(owner, '[');

  // An element's name is a program-wide variable that holds its id.
  const double id = string_is_real(calculate_string(*this, owner));
  if (!(id >= std::numeric_limits<int32_t>::min() && id <= std::numeric_limits<int32_t>::max())) return false;
  const CInstance* target = instance_find(static_cast<int32_t>(id));
  if (!target) return false;
  const ProgramInstance* target_program = program_of_instance(target->id);

  std::string value;
  if (!local.empty() && local[0] == '|') {
    if (!attribute_text(local, *target, target_program, value)) return false;
  } else {
    // Entry 0 of an element's table is no variable.
    if (!target_program) return false;
    const int k = target_program->next_variable(local, 0);
    if (k < 0) return false;
    value = target_program->value_text(k);
  }
  out.assign(opens, '[').append(value).append(closes, ']');
  return true;
}

bool ProgramInstance::language_name_value(std::string_view s, std::string& out) {
  const NameTable& names = language_names();
  if (auto it = names.find(s); it != names.end()) {
    const Room* room = current_room();
    const double room_width = room ? room->width : 0;
    const double room_height = room ? room->height : 0;
    const int code = it->second.code;
    switch (it->second.name) {
      case Name::True: out = "1"; break;
      case Name::False: out = "0"; break;
      case Name::RandomX: out = number_text(rt::random(room_width)); break;
      case Name::RandomY: out = number_text(rt::random(room_height)); break;
      case Name::MouseX: out = number_text(mouse_x()); break;
      case Name::MouseY: out = number_text(mouse_y()); break;
      case Name::WindowWidth: out = number_text(room_width); break;
      case Name::WindowHeight: out = number_text(room_height); break;
      case Name::BackgroundColour: out = number_text(main_table().colore_sfondo); break;
      case Name::Caption: out = main_table().room_caption; break;
      case Name::Repetition: out = number_text(ripetizione); break;
      case Name::RandomColour: out = value_to_text(rt::choose(random_colours())); break;
      case Name::RandomAngle: out = number_text(rt::random(360)); break;
      case Name::KeyDown: out = truth_text(keyboard_check(code)); break;
      case Name::KeyPressed: out = truth_text(keyboard_check_pressed(code)); break;
      case Name::KeyReleased: out = truth_text(keyboard_check_released(code)); break;
      case Name::ButtonDown: out = truth_text(mouse_check_button(code)); break;
      case Name::ButtonPressed: out = truth_text(mouse_check_button_pressed(code)); break;
      case Name::ButtonReleased: out = truth_text(mouse_check_button_released(code)); break;
      case Name::WheelUp: out = truth_text(wheel_up()); break;
      case Name::WheelDown: out = truth_text(wheel_down()); break;
    }
    return true;
  }
  // "mezza" and "mezzo" are a half only as whole tokens, which the tokeniser
  // has replaced; inside an expression they are unknown names.
  if (s == "mezza" || s == "mezzo") return false;
  const char* constant = note_constant(s);
  if (!constant) constant = numeric_constant(s);
  if (!constant) return false;
  out = constant;
  return true;
}
