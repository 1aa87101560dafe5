#include "language/elements/esemplare.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <vector>

#include "language/evaluation/error_frame.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/plans.h"
#include "language/evaluation/program_instance.h"
#include "language/evaluation/run_end.h"
#include "language/tokenizer/tokenization.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Graphics/SpriteDrawing.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/FrameState.h"
#include "runtime/Room/Room.h"
#include "runtime/Room/Variables.h"
#include "runtime/Sprite/Sprite.h"

namespace {

constexpr double FRAMES_PER_SECOND = 30;
constexpr double NEAR_ANOTHER = 5;  // closer than this to another element, the collision sensor lights
constexpr uint32_t START_BLEND = 12632256;

int32_t g_object = -1;
int32_t no_picture() { return -1; }
int64_t g_starts = 0;  // elements started so far: a start since the nearness was worked out asks for it again

// A whole number that an int field can hold: a count of frames, a sprite's index.
int32_t whole_of(double x) {
  if (!(x > -2e9)) return x > 0 ? INT32_MAX : -1;
  return x < 2e9 ? static_cast<int32_t>(x) : INT32_MAX;
}
int32_t (*g_picture)() = no_picture;
int32_t g_picture_index = -1;  // the elements' picture, as the last element made found it

std::string number_text(double x) { return value_to_text(RValue::number(x)); }

// Whether `text` is a whole number as number_text writes one (digits, a
// minus sign, no zero in front, at most 15 digits), and which.
bool whole_number_text(std::string_view text, double& out) {
  const bool negative = !text.empty() && text[0] == '-';
  const std::string_view digits = negative ? text.substr(1) : text;
  if (digits.empty() || digits.size() > 15 || (digits[0] == '0' && (digits.size() > 1 || negative))) return false;
  int64_t n = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return false;
    n = n * 10 + (c - '0');
  }
  out = negative ? -static_cast<double>(n) : static_cast<double>(n);
  return true;
}

void set_global(const char* name, double value) {
  variable_set(global_object(), variable_id(name), NO_ARRAY_INDEX, RValue::number(value));
}

}  // namespace

Esemplare::Esemplare(float x, float y, int32_t id, int32_t object)
    : CInstance(x, y, id, object), program_(std::make_unique<ProgramInstance>(*this, true)) {}

Esemplare::~Esemplare() = default;

void Esemplare::create() {
  image_blend = START_BLEND;
  sprite_index = g_picture_index = g_picture();
  take_window();
  alarm[4] = 1;
}

// The element draws in the program's window, with the program's grid.
void Esemplare::take_window() {
  if (const ProgramInstance* main = main_program()) {
    program_->larghezza_finestra = main->larghezza_finestra;
    program_->altezza_finestra = main->altezza_finestra;
    program_->griglia_visibile = main->griglia_visibile;
  }
}

void Esemplare::start() {
  ProgramInstance& p = *program_;
  ProgramInstance* main = main_program();
  code_index = main ? object_code_index(main->program, nome, ogg) : NO_CODE;
  take_window();
  p.ripetizione = 1;
  set_global("collisione", 0);
  set_global("collision_sensor", 0);
  ++g_starts;
  if (classe == "*") classe = "not_set";
  if (nome == "*") nome = "not_set";
  write_element_head(p.program, head_values());
  if (code_index != NO_CODE && !append_object_code(p.program, main->program, code_index)) end_run(RunEnd::ToEditor);

  // Index 0 of the element's table stays empty; the variables its creator
  // gave stand behind it, and those its code assigns come after them.
  if (p.vari.empty()) p.append_variable("", RValue::text(""));
  p.entered_vari.clear();
  for (size_t k = 1; k < p.vari.size(); ++k) p.entered_vari += "|" + std::string(p.vari[k].string_view()) + "|";
  guarded_run([&] { p.var_inizialization(static_cast<int>(p.vari.size())); });
  if (code_index != NO_CODE) {
    // The elements of a class run the same tokens: they share the plans of its code.
    std::vector<std::shared_ptr<PositionPlans>>& class_plans = main->program.plans_ogg;
    if (class_plans.size() <= static_cast<size_t>(code_index)) class_plans.resize(static_cast<size_t>(code_index) + 1);
    std::shared_ptr<PositionPlans>& shared = class_plans[static_cast<size_t>(code_index)];
    p.mem_function(0, p.program.totale_tok, shared);
    shared = p.program.plans;
  }
  alarm[6] = 1;
  alarm[7] = 1;
  enter_name();
}

ElementHead Esemplare::head_values() const {
  return {nome,        classe,       x,           y,           depth,
          static_cast<double>(sprite_index), image_xscale, image_yscale, image_alpha, static_cast<double>(image_blend),
          image_angle, image_speed,  image_index, speed,       direction,
          {timer_1, timer_2, timer_3, timer_4}, durata};
}

int object_code_index(const TokenProgram& main, const std::string& nome, const std::string& ogg) {
  int found = Esemplare::NO_CODE;
  for (int f = 1; f < main.tot_ogg; ++f) {
    const std::string& object = main.ogg[static_cast<size_t>(f)];
    if (object == nome + " " || object == ogg + " ") found = f;
  }
  return found;
}

void write_element_head(TokenProgram& program, const ElementHead& h) {
  // A timer or a life time that was never given reads as its object's default.
  const auto timer_text = [](const std::string& t) { return t == "*" ? std::string("0") : t; };
  const std::pair<const char*, std::string> head[] = {
      {"NOME", h.nome},
      {"OGGETTO", h.classe},
      {"X", number_text(h.x)},
      {"Y", number_text(h.y)},
      {"Z", number_text(h.z)},
      {"IMMAGINE", number_text(h.sprite)},
      {"SCALA_ASSE_X", number_text(h.xscale)},
      {"SCALA_ASSE_Y", number_text(h.yscale)},
      {"TRASPARENZA", number_text(h.alpha)},
      {"COLORE", number_text(h.blend)},
      {"ROTAZIONE", number_text(h.angle)},
      {"VELOCITA_ANIMAZIONE", number_text(h.animation_speed)},
      {"FOTOGRAMMA", number_text(h.frame)},
      {"VELOCITA", number_text(h.speed)},
      {"DIREZIONE", number_text(h.direction)},
      {"TIMER_1", timer_text(h.timers[0])},
      {"TIMER_2", timer_text(h.timers[1])},
      {"TIMER_3", timer_text(h.timers[2])},
      {"TIMER_4", timer_text(h.timers[3])},
      {"DURATA", h.durata == "*" ? std::string("-1") : h.durata},
  };
  program.tok.assign(1, RValue::text("INIZIA"));
  for (const auto& [name, value] : head) {
    program.tok.push_back(RValue::text(name));
    program.tok.push_back(RValue::text("="));
    program.tok.push_back(RValue::text(value));
  }
  program.INIZIA = 0;
  program.DISEGNA = static_cast<int>(program.tok.size());
  program.tok.push_back(RValue::text("CICLO_CONTINUO"));
  program.tok.push_back(RValue::text("filler_string"));
  program.totale_tok = static_cast<int>(program.tok.size()) - 1;
}

bool append_object_code(TokenProgram& program, TokenProgram& main, int code_index) {
  std::vector<RValue>& cached = main.tok_ogg[static_cast<size_t>(code_index)];
  bool runnable = true;
  if (cached.empty()) {
    ObjectCodeTokens made = tokenization_obj(main.contenuto_ogg[static_cast<size_t>(code_index)]);
    runnable = !made.divided_by_zero;
    if (made.INIZIA >= 0) program.INIZIA = made.INIZIA;
    if (made.DISEGNA >= 0) program.DISEGNA = made.DISEGNA;
    cached = std::move(made.tok);
  }
  program.tok.pop_back();
  program.tok.insert(program.tok.end(), cached.begin(), cached.end());
  program.totale_tok = static_cast<int>(program.tok.size()) - 1;
  const size_t size = program.tok.size();
  program.mem_argn.assign(size, 0);
  program.pixel_art.assign(size, std::string());
  program.pixel_surf.assign(size, -4);
  return runnable;
}

// The program's table names the element by its id; a name given before
// keeps its entry, and only a new entry starts the life time.
void Esemplare::enter_name() {
  ProgramInstance* main = main_program();
  if (!main || main == program_.get()) return;
  const RValue own_id = RValue::text(std::to_string(id));
  if (const int k = main->find_variable(nome); k >= 0) {
    main->val[static_cast<size_t>(k)] = own_id;
    return;
  }
  main->append_variable(nome, own_id);
  if (durata != "*" && string_is_real(durata) > 0) alarm[5] = whole_of(string_is_real(durata) * FRAMES_PER_SECOND);
}

// The element's variables that mirror its attributes take their values: at
// the start all of them, then at each frame those the runtime changed
// (the colour apart, the timers always).
void Esemplare::copy_attributes_to_variables(bool at_start) {
  ProgramInstance& p = *program_;
  if (mirrored_size_ != p.vari_size) {
    mirrors_.clear();
    for (int k = 0; k < p.vari_size; ++k) {
      const std::string_view name = p.vari[static_cast<size_t>(k)].string_view();
      // Every attribute that a program reads back, the life time apart.
      if (const int attribute = ProgramInstance::attribute_of(name); attribute >= 0) mirrors_.emplace_back(k, attribute);
    }
    mirrored_size_ = p.vari_size;
  }
  static const int colour = ProgramInstance::attribute_of("COLORE");
  static const int first_timer = ProgramInstance::attribute_of("TIMER_1");
  for (const auto& [k, attribute] : mirrors_) {
    const double value = p.attribute(attribute);
    RValue& stored = p.val[static_cast<size_t>(k)];
    if (!at_start) {
      if (attribute == colour) continue;
      // The text this copy would write stands there already: a timer's too.
      if (double written = 0; stored.is(Kind::String) && whole_number_text(stored.string_view(), written) &&
                              written == value) {
        continue;
      }
      const bool timer = attribute >= first_timer;
      if (!timer && stored.is(Kind::String) && string_is_real(stored.string_view()) == value) continue;
    }
    // A whole number's text reads back as the number itself, and rewrites the old text in place when it can.
    if (is_digits_number(value)) {
      stored.set_number_text(number_text(value), value);
    } else {
      stored = RValue::text(number_text(value));
    }
  }
}

void Esemplare::run_block(int from, int to) {
  guarded_run([&] { program_->execute_function_ext(from, to); });
}

void Esemplare::run_inizia() {
  copy_attributes_to_variables(true);
  if (code_index != NO_CODE) run_block(0, program_->program.DISEGNA);
}

void Esemplare::end_intersect() { intersect = "0"; }

void Esemplare::life_time_over() { instance_destroy(*this); }

void Esemplare::end_leave() { enter = "0"; }

void Esemplare::step() {
  set_global("collision_sensor", 0);
  const Room* room = current_room();
  const bool inside = room && x >= 0 && x <= room->width && y >= 0 && y <= room->height;
  outside = inside ? "0" : "1";
}

namespace {

// Whether any element stands closer than NEAR_ANOTHER to another: worked
// out once a frame, in cells of that size, so that each element looks only
// at the elements of its own cell and the eight around it.
bool elements_near_each_other() {
  static int64_t worked_out_in = -1, starts_then = -1;
  static bool near = false;
  const int64_t frame = frame_state().frames_drawn;
  if (frame == worked_out_in && g_starts == starts_then) return near;
  worked_out_in = frame;
  starts_then = g_starts;
  near = false;
  std::unordered_map<uint64_t, std::vector<const CInstance*>> cells;
  // Coordinates far outside any window share the outermost cells.
  const auto cell_of = [](double coordinate) {
    return std::isfinite(coordinate) ? static_cast<int64_t>(std::floor(std::clamp(coordinate, -1e12, 1e12) / NEAR_ANOTHER))
                                     : 0;
  };
  const auto key = [](int64_t cx, int64_t cy) { return (static_cast<uint64_t>(cx) << 32) ^ static_cast<uint32_t>(cy); };
  for (const CInstance* e : object_get(g_object)->instances) {
    if (e->active()) cells[key(cell_of(e->x), cell_of(e->y))].push_back(e);
  }
  for (const CInstance* e : object_get(g_object)->instances) {
    if (!e->active()) continue;
    const int64_t cx = cell_of(e->x), cy = cell_of(e->y);
    for (int64_t dx = -1; dx <= 1 && !near; ++dx) {
      for (int64_t dy = -1; dy <= 1 && !near; ++dy) {
        const auto found = cells.find(key(cx + dx, cy + dy));
        if (found == cells.end()) continue;
        for (const CInstance* other : found->second) {
          if (other != e && std::hypot(other->x - e->x, other->y - e->y) < NEAR_ANOTHER) near = true;
        }
      }
    }
    if (near) break;
  }
  return near;
}

}  // namespace

void Esemplare::step_end() {
  if (collision_check == 1) ++cc_time;
  if (cc_time > 1) collision_check = cc_time = 0;
  if (elements_near_each_other()) set_global("collision_sensor", 1);
}

void Esemplare::draw() {
  ProgramInstance& p = *program_;
  draw_with_picture(*this, immagine);

  for (double& t : p.timer) {
    if (t > 0) --t;
  }
  xx = number_text(x);
  yy = number_text(y);
  alpha = number_text(image_alpha);
  angle = number_text(image_angle);
  dir = number_text(direction);
  sp = number_text(speed);
  xscale = number_text(image_xscale);
  yscale = number_text(image_yscale);
  vel_animazione = number_text(image_speed);
  fotogramma = number_text(image_index);

  if (++p.time > 1 && code_index != UNSTARTED) {
    copy_attributes_to_variables(false);
    if (code_index != NO_CODE) run_block(p.program.DISEGNA, p.program.totale_tok);
  }
}

void Esemplare::destroy() {
  if (ProgramInstance* main = main_program(); main && main != program_.get()) main->remove_variable(nome);
}

std::string& Esemplare::button_state(int button) { return button == 0 ? stato : button == 1 ? stato_d : stato_c; }
int& Esemplare::button_time(int button) { return button == 0 ? ctime : button == 1 ? ctime_d : ctime_c; }

void Esemplare::pressed(int button) {
  button_state(button) = "2";
  if (ProgramInstance* main = main_program()) main->ultimo_click[button] = std::to_string(id);
}

void Esemplare::held(int button) {
  if (++button_time(button) > 1) button_state(button) = "1";
}

void Esemplare::released(int button) { button_state(button) = "0"; }

void Esemplare::mouse_enter() { enter = "1"; }

void Esemplare::mouse_leave() {
  stato = "0";
  enter = "0.5";
  alarm[6] = 1;
}

void Esemplare::outside_room() {
  if (outside_room_destroy == 1) instance_destroy(*this);
}

void Esemplare::intersect_boundary() {
  intersect = "1";
  alarm[1] = 1;
}

void Esemplare::path_ended() { end_of_path = 1; }

bool element_token_program(TokenProgram& main, const std::string& object, TokenProgram& element) {
  ElementHead head;
  head.nome = head.classe = "not_set";
  write_element_head(element, head);
  const int code = object_code_index(main, object, object);
  return code == Esemplare::NO_CODE || append_object_code(element, main, code);
}

void set_element_picture(int32_t (*picture)()) { g_picture = picture; }

void draw_with_picture(CInstance& instance, const std::string& immagine) {
  // Picture 0 is no picture, unless it is the elements' own.
  const int32_t sprite = instance.sprite_index;
  if ((sprite != 0 || sprite == g_picture_index) && sprite_exists(sprite)) draw_self(instance);
  // The picture for the next frame: a number, or a variable that holds one.
  if (!immagine.empty()) {
    const ProgramInstance* main = main_program();
    if (immagine[0] >= '0' && immagine[0] <= '9') {
      instance.sprite_index = whole_of(string_is_real(immagine));
    } else if (main) {
      const RValue picture = const_cast<ProgramInstance*>(main)->calculate_var_image(immagine);
      instance.sprite_index =
          whole_of(picture.is(Kind::String) ? string_is_real(picture.string_view()) : value_to_real(picture));
    }
  }
  if (!sprite_exists(instance.sprite_index)) instance.sprite_index = g_picture_index = g_picture();
}

int32_t define_esemplare() {
  ObjectDefinition<Esemplare> definition("esemplare");
  definition.on(ev::CREATE, 0, &Esemplare::create)
      .on(ev::ALARM, 1, &Esemplare::end_intersect)
      .on(ev::ALARM, 4, &Esemplare::start)
      .on(ev::ALARM, 5, &Esemplare::life_time_over)
      .on(ev::ALARM, 6, &Esemplare::end_leave)
      .on(ev::ALARM, 7, &Esemplare::run_inizia)
      .on(ev::STEP, ev::STEP_NORMAL, &Esemplare::step)
      .on(ev::STEP, ev::STEP_END, &Esemplare::step_end)
      .on(ev::DRAW, ev::DRAW_NORMAL, &Esemplare::draw)
      .on(ev::DESTROY, 0, &Esemplare::destroy)
      .on(ev::MOUSE, 10, &Esemplare::mouse_enter)
      .on(ev::MOUSE, 11, &Esemplare::mouse_leave)
      .on(ev::OTHER, ev::OTHER_OUTSIDE, &Esemplare::outside_room)
      .on(ev::OTHER, ev::OTHER_BOUNDARY, &Esemplare::intersect_boundary)
      .on(ev::OTHER, ev::OTHER_END_OF_PATH, &Esemplare::path_ended)
      .flags(object_flag::VISIBLE);
  g_object = definition.index();
  // Per button: pressed on the element, held on it, released anywhere.
  constexpr int PRESSED = 4, HELD = 0, RELEASED_ANYWHERE = 56;
  for (int button = 0; button < 3; ++button) {
    const auto on_button = [button](void (Esemplare::*method)(int)) {
      return [button, method](CInstance& self, CInstance*) { (static_cast<Esemplare&>(self).*method)(button); };
    };
    object_set_event(g_object, ev::MOUSE, PRESSED + button, on_button(&Esemplare::pressed));
    object_set_event(g_object, ev::MOUSE, HELD + button, on_button(&Esemplare::held));
    object_set_event(g_object, ev::MOUSE, RELEASED_ANYWHERE + button, on_button(&Esemplare::released));
  }
  return g_object;
}
