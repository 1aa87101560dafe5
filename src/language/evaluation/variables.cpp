// The variable table: how it is made at the start of a run and how an
// assignment writes to it, to the element's attributes and to the window.
#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Room/Variables.h"

namespace {

// An element attribute that an assignment writes through to the instance:
// a built-in field, by the field's own setter (a move marks the box stale,
// direction and speed derive the motion's other side), or a timer of the
// element, kept in frames.
// Reading one back needs no getter: each field's getter gives the field itself.
struct Attribute {
  std::string_view name;
  const char* field;              // null for the timers and the life time
  int timer;                      // 0 to 3 for TIMER_1 to TIMER_4, 4 for DURATA
  float CInstance::*read = nullptr;  // the field a reading takes; null for the colour, an integer
};
constexpr int LIFE_TIME = 4;
constexpr Attribute ATTRIBUTES[] = {
    {"X", "x", -1, &CInstance::x},
    {"Y", "y", -1, &CInstance::y},
    {"TRASPARENZA", "image_alpha", -1, &CInstance::image_alpha},
    {"ROTAZIONE", "image_angle", -1, &CInstance::image_angle},
    {"DIREZIONE", "direction", -1, &CInstance::direction},
    {"VELOCITA", "speed", -1, &CInstance::speed},
    {"SCALA_ASSE_X", "image_xscale", -1, &CInstance::image_xscale},
    {"SCALA_ASSE_Y", "image_yscale", -1, &CInstance::image_yscale},
    {"VELOCITA_ANIMAZIONE", "image_speed", -1, &CInstance::image_speed},
    {"FOTOGRAMMA", "image_index", -1, &CInstance::image_index},
    {"COLORE", "image_blend", -1},
    {"TIMER_1", nullptr, 0},
    {"TIMER_2", nullptr, 1},
    {"TIMER_3", nullptr, 2},
    {"TIMER_4", nullptr, 3},
    {"DURATA", nullptr, LIFE_TIME},
};

// The variable ids of the fields, in the order of ATTRIBUTES, found once.
int32_t field_id(size_t attribute) {
  static const auto ids = [] {
    std::array<int32_t, std::size(ATTRIBUTES)> found{};
    for (size_t k = 0; k < found.size(); ++k) found[k] = ATTRIBUTES[k].field ? variable_id(ATTRIBUTES[k].field) : -1;
    return found;
  }();
  return ids[attribute];
}

// Times are written in seconds and kept in frames.
constexpr double FRAMES_PER_SECOND = 30;

}  // namespace

void ProgramInstance::var_inizialization(int first) {
  first = std::max(first, 0);
  // 1. Every name in front of "=" or "f=", once, with the token that gives
  // its first value, or the mark of a value not yet set. A name that this
  // table or that of main_code_ctrl has seen already is left out.
  struct FirstAssignment {
    std::string_view name;
    std::string_view value;
  };
  std::vector<FirstAssignment> found;
  const std::string& main_entered = main_table().entered_vari;
  std::string marker;
  for (int i = 1; i < program.totale_tok; ++i) {
    const std::string_view sign = token_text(i);
    if (sign != "=" && sign != "f=") continue;
    const std::string_view name = token_text(i - 1);
    marker.assign("|").append(name).append("|");
    if (entered_vari.find(marker) != std::string::npos || main_entered.find(marker) != std::string::npos) continue;
    found.push_back({name, sign == "=" ? token_text(i + 1) : std::string_view("|not_set|")});
    entered_vari += marker;
  }

  // 2. The table stands in reverse order of first assignment.
  const int size = static_cast<int>(found.size());
  vari_size = size;
  if (vari.size() < static_cast<size_t>(first + size)) vari.resize(static_cast<size_t>(first + size));
  if (val.size() < vari.size()) val.resize(vari.size());
  std::unordered_map<std::string_view, int> position_of_new;
  for (int k = 0; k < size; ++k) {
    const FirstAssignment& entry = found[static_cast<size_t>(size - 1 - k)];
    vari[static_cast<size_t>(first + k)] = RValue::text(entry.name);
    val[static_cast<size_t>(first + k)] = RValue::text(entry.value);
    position_of_new.emplace(entry.name, first + k);
  }
  rebuild_index();

  // 3. Each first value is tried once, before any statement runs, so that
  // a malformed expression shows its message at the start even where its
  // statement would never run. The value itself is not kept.
  for (int k = first; k < first + size; ++k) {
    const std::string value = value_text(k);
    if (!value.starts_with('"')) val[static_cast<size_t>(k)] = RValue::text(calculate_string(*this, value));
  }

  // 4. A name with any plain assignment starts at "0"; one assigned only
  // from value functions keeps "|not_set|" until its function runs.
  for (int i = 1; i < program.totale_tok; ++i) {
    if (token_text(i) != "=") continue;
    if (auto it = position_of_new.find(token_text(i - 1)); it != position_of_new.end()) {
      val[static_cast<size_t>(it->second)] = RValue::text("0");
    }
  }

  // 5. The entries below `first` were there already.
  vari_size += first;
  ++names_version_;
}

void ProgramInstance::var_update_direct(std::string_view name, int j) {
  if (planned_assignment(name, j)) return;
  assign_in_table(*this, name, j);
  assign_reserved(*this, name, j);
  // An object's code can change a program-wide variable and the program's window.
  if (ProgramInstance* main = main_program(); esemplare && main && main != this) {
    assign_in_table(*main, name, j);
    assign_reserved(*main, name, j);
  }
}

void ProgramInstance::assign_in_table(ProgramInstance& table, std::string_view name, int j) {
  for (int k = table.find_variable(name); k >= 0; k = table.next_variable(name, k)) {
    const bool negated = token_text(j + 2) == "non";
    const std::string value = negated ? negation_of(token_text(j + 3)) : calculate_string(*this, token_text(j + 2));
    table.val[static_cast<size_t>(k)] = RValue::text(value);
    write_attribute(name, value);
  }
}

void ProgramInstance::assign_reserved(ProgramInstance& target, std::string_view name, int j) {
  const std::string_view value_token = token_text(j + 2);
  const auto number = [&] { return string_is_real(calculate_string(*this, value_token)); };
  if (name == "larghezza_finestra") {
    target.larghezza_finestra = number();
  } else if (name == "altezza_finestra") {
    target.altezza_finestra = number();
  } else if (name == "colore_sfondo") {
    // "-1" stands for no colour of the program's own: the grid stays.
    if (value_token == "-1") return;
    target.colore_sfondo = number();
    target.griglia_visibile = 0;
  } else if (name == "nome_finestra") {
    target.room_caption.assign(value_token);
    target.nome_finestra.assign(value_token);
    std::erase(target.nome_finestra, '"');
  }
}

std::string ProgramInstance::negation_of(std::string_view expression) {
  // The runtime's truth of the number: true above one half.
  const double number = value_to_real(RValue::text(calculate_string(*this, expression)));
  return value_to_bool(RValue::number(number)) ? "0" : "1";
}

void ProgramInstance::write_attribute(std::string_view name, const std::string& value) {
  // The field takes the number of the value, which the runtime's `real` reads.
  if (const int k = written_attribute(name); k >= 0) write_attribute_number(k, text_to_real(value.c_str()));
}

int ProgramInstance::written_attribute(std::string_view name) {
  for (size_t k = 0; k < std::size(ATTRIBUTES); ++k) {
    if (ATTRIBUTES[k].name == name) return static_cast<int>(k);
  }
  return -1;
}

void ProgramInstance::write_attribute_number(int index, double number) {
  const Attribute& a = ATTRIBUTES[static_cast<size_t>(index)];
  // A move, as the position's setter makes it: nothing for the same place, else the box is stale.
  if (a.read == &CInstance::x || a.read == &CInstance::y) {
    const auto place = static_cast<float>(number);
    if (place == instance.*a.read) return;
    instance.*a.read = place;
    instance.set(instance_flag::BBOX_DIRTY, true);
    return;
  }
  if (a.field) variable_set(instance, field_id(static_cast<size_t>(index)), NO_ARRAY_INDEX, RValue::number(number));
  else if (a.timer == LIFE_TIME) durata = number * FRAMES_PER_SECOND;
  else timer[a.timer] = number * FRAMES_PER_SECOND;
}

int ProgramInstance::attribute_of(std::string_view name) {
  for (size_t k = 0; k < std::size(ATTRIBUTES); ++k) {
    if (ATTRIBUTES[k].name == name && ATTRIBUTES[k].timer != LIFE_TIME) return static_cast<int>(k);
  }
  return -1;
}

double ProgramInstance::attribute(int index) const {
  const Attribute& a = ATTRIBUTES[static_cast<size_t>(index)];
  if (!a.field) return timer[a.timer];
  if (a.read) return instance.*a.read;
  return instance.image_blend;
}
